#include "linux/system/LinuxDiskQueue.h"

#include <system_error>
#include <utility>

namespace corvane {

LinuxDiskQueue::~LinuxDiskQueue() {
    {
        const std::lock_guard lock(mutex_);
        isEnding_ = true;
    }
    changed_.notify_all();
    if (thread_.joinable()) thread_.join();
}

bool LinuxDiskQueue::run(std::function<void()> work) {
    // What a person doesn't notice.
    constexpr std::chrono::milliseconds longest(10);
    if (!startThread()) {
        work();
        return true;
    }
    std::unique_lock lock(mutex_);
    waiting_.push_back(std::move(work));
    const auto number = ++given_;
    changed_.notify_all();
    return changed_.wait_for(lock, longest, [&] { return done_ >= number; });
}

bool LinuxDiskQueue::startThread() {
    if (thread_.joinable()) return true;
    try {
        thread_ = std::thread([this] { workUntilTheEnd(); });
        return true;
    } catch (const std::system_error&) {
        return false;
    }
}

void LinuxDiskQueue::workUntilTheEnd() {
    std::unique_lock lock(mutex_);
    for (;;) {
        changed_.wait(lock, [this] { return isEnding_ || !waiting_.empty(); });
        if (waiting_.empty()) return;
        auto work = std::move(waiting_.front());
        waiting_.pop_front();
        lock.unlock();
        work();
        // What the work holds goes before anyone may think that it is over.
        work = nullptr;
        lock.lock();
        ++done_;
        changed_.notify_all();
    }
}

} // namespace corvane
