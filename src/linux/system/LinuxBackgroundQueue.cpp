#include "linux/system/LinuxBackgroundQueue.h"

#include <condition_variable>
#include <mutex>
#include <system_error>
#include <thread>

namespace corvane {

struct LinuxBackgroundQueue::Running {
    std::mutex mutex;
    std::condition_variable ended;
    int count = 0;

    void change(int by) {
        {
            const std::lock_guard lock(mutex);
            count += by;
        }
        ended.notify_all();
    }
};

LinuxBackgroundQueue::LinuxBackgroundQueue() : running_(std::make_shared<Running>()) {}

LinuxBackgroundQueue::~LinuxBackgroundQueue() {
    std::unique_lock lock(running_->mutex);
    running_->ended.wait(lock, [this] { return running_->count == 0; });
}

void LinuxBackgroundQueue::async(std::function<void()> work) {
    running_->change(1);
    const auto run = [running = running_, work = std::move(work)]() mutable {
        work();
        // What the work holds goes before anyone may think that it is over.
        work = nullptr;
        running->change(-1);
    };
    try {
        std::thread(run).detach();
    } catch (const std::system_error&) {
        auto here = run;
        here();
    }
}

} // namespace corvane
