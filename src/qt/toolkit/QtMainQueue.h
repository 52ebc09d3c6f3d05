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

    /// Calls `done` once all work is done and for a second no more has come, as another thread may
    /// be at some; after that many seconds also before. Never while work runs. Only the last `done`
    /// is called. Main thread.
    void whenDone(double secondsAtMost, std::function<void()> done);

private:
    using Clock = std::chrono::steady_clock;

    void lookWhetherDone(Clock::time_point quietSince);
    void wake();
    void runNext();

    std::mutex mutex_;
    std::uint64_t scheduled_ = 0;
    std::map<std::pair<Clock::time_point, std::uint64_t>, std::function<void()>> work_;
    // Main thread only.
    QTimer* timer_;
    bool isRunning_ = false;
    std::function<void()> done_;
    Clock::time_point doneBy_;
};

} // namespace corvane
