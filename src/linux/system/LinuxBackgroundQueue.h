#pragma once

#include "platform/MainQueue.h"

#include <memory>

namespace corvane {

/// A thread for each piece of work.
class LinuxBackgroundQueue final : public BackgroundQueue {
public:
    LinuxBackgroundQueue();
    /// Waits until no work runs, however long, as what the work uses goes next.
    ~LinuxBackgroundQueue() override;

    /// Where the system has no thread left, the work runs at once on the calling one.
    void async(std::function<void()> work) override;

private:
    struct Running;
    std::shared_ptr<Running> running_;
};

} // namespace corvane
