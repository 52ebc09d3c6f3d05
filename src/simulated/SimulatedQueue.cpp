#include "simulated/SimulatedQueue.h"

#include <algorithm>
#include <utility>

namespace corvane {

void SimulatedQueue::after(double seconds, std::function<void()> work) {
    work_.emplace(std::pair(elapsed_ + std::max(seconds, 0.0), scheduled_++), std::move(work));
}

void SimulatedQueue::Background::async(std::function<void()> work) {
    queue_.after(0, [&queue = queue_, work = std::move(work)] {
        queue.isInBackground_ = true;
        work();
        queue.isInBackground_ = false;
    });
}

bool SimulatedQueue::run(std::function<void()> work) {
    const bool isSlow = diskDelay > 0 || diskIsFreeAt_ > elapsed_;
    if (isSlow) {
        diskIsFreeAt_ = std::max(diskIsFreeAt_, elapsed_) + diskDelay;
        after(diskIsFreeAt_ - elapsed_, std::move(work));
    } else {
        work();
    }
    return !isSlow;
}

void SimulatedQueue::runFor(double seconds) {
    const double end = elapsed_ + seconds;
    while (!work_.empty() && work_.begin()->first.first <= end) {
        auto next = work_.extract(work_.begin());
        // Later than that where the work before it slept.
        elapsed_ = std::max(elapsed_, next.key().first);
        next.mapped()();
    }
    elapsed_ = std::max(elapsed_, end);
}

} // namespace corvane
