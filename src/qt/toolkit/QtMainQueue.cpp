#include "qt/toolkit/QtMainQueue.h"

#include <QTimer>
#include <algorithm>
#include <optional>

namespace corvane {

namespace {

std::chrono::steady_clock::duration lengthOf(double seconds) {
    return std::chrono::duration_cast<std::chrono::steady_clock::duration>(
        std::chrono::duration<double>(std::max(0.0, seconds)));
}

} // namespace

QtMainQueue::QtMainQueue() : timer_(new QTimer(this)) {
    timer_->setSingleShot(true);
    timer_->setTimerType(Qt::PreciseTimer);
    connect(timer_, &QTimer::timeout, this, &QtMainQueue::runNext);
}

QtMainQueue::~QtMainQueue() = default;

void QtMainQueue::async(std::function<void()> work) {
    after(0, std::move(work));
}

void QtMainQueue::after(double seconds, std::function<void()> work) {
    const auto delay = lengthOf(seconds);
    bool isNext = false;
    {
        const std::lock_guard lock(mutex_);
        const auto entry =
            work_.emplace(std::pair(Clock::now() + delay, scheduled_++), std::move(work)).first;
        isNext = entry == work_.begin();
    }
    // Timers belong to the main thread; this may be another one.
    if (isNext) QMetaObject::invokeMethod(this, &QtMainQueue::wake, Qt::QueuedConnection);
}

void QtMainQueue::wake() {
    if (isRunning_) return;
    const std::lock_guard lock(mutex_);
    if (work_.empty()) return;
    const auto wait =
        std::chrono::ceil<std::chrono::milliseconds>(work_.begin()->first.first - Clock::now());
    timer_->start(std::max(std::chrono::milliseconds(0), wait));
}

void QtMainQueue::runNext() {
    if (isRunning_) return;
    std::optional<std::function<void()>> work;
    {
        const std::lock_guard lock(mutex_);
        if (!work_.empty() && work_.begin()->first.first <= Clock::now()) {
            work = std::move(work_.begin()->second);
            work_.erase(work_.begin());
        }
    }
    if (work) {
        isRunning_ = true;
        (*work)();
        isRunning_ = false;
    }
    wake();
}

void QtMainQueue::whenDone(double secondsAtMost, std::function<void()> done) {
    const bool isLookedAfter = done_ != nullptr;
    done_ = std::move(done);
    const auto now = Clock::now();
    doneBy_ = now + lengthOf(secondsAtMost);
    if (!isLookedAfter) lookWhetherDone(now);
}

void QtMainQueue::lookWhetherDone(Clock::time_point quietSince) {
    constexpr auto quiet = std::chrono::seconds(1);
    constexpr auto pause = std::chrono::milliseconds(50);
    const auto now = Clock::now();
    {
        const std::lock_guard lock(mutex_);
        if (isRunning_ || !work_.empty()) quietSince = now;
    }
    if (!isRunning_ && (now - quietSince >= quiet || now >= doneBy_)) {
        std::exchange(done_, nullptr)();
    } else {
        QTimer::singleShot(pause, this, [=, this] { lookWhetherDone(quietSince); });
    }
}

} // namespace corvane
