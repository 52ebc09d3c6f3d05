#pragma once

#include "platform/MainQueue.h"

#include <condition_variable>
#include <deque>
#include <mutex>
#include <thread>

namespace corvane {

/// One thread, from the first piece of work on.
class LinuxDiskQueue final : public DiskQueue {
public:
    LinuxDiskQueue() = default;
    /// Waits until all work is done, however long.
    ~LinuxDiskQueue() override;

    /// Where the system has no thread left, the work runs at once on the calling one.
    bool run(std::function<void()> work) override;

private:
    void workUntilTheEnd();
    bool startThread();

    std::mutex mutex_;
    std::condition_variable changed_;
    std::deque<std::function<void()>> waiting_;
    std::uint64_t given_ = 0;
    std::uint64_t done_ = 0;
    bool isEnding_ = false;
    std::thread thread_;
};

} // namespace corvane
