#pragma once

#include "platform/MainQueue.h"

#include <QObject>
#include <chrono>
#include <cstdint>
#include <map>
#include <mutex>
#include <utility>

class QTimer;

namespace corvane {

/// The main queue on Qt's event loop. One piece of work a turn of the loop, so that the windows
/// stay alive between two; none while one still runs in a nested loop of its own.
class QtMainQueue final : public QObject, public MainQueue {
public:
    /// On the main thread, with an application object.
    QtMainQueue();
    ~QtMainQueue() override;

    void async(std::function<void()> work) override;
    void after(double seconds, std::function<void()> work) override;

private:
    using Clock = std::chrono::steady_clock;

    void wake();
    void runNext();

    std::mutex mutex_;
    std::uint64_t scheduled_ = 0;
    std::map<std::pair<Clock::time_point, std::uint64_t>, std::function<void()>> work_;
    // Main thread only.
    QTimer* timer_;
    bool isRunning_ = false;
};

} // namespace corvane
