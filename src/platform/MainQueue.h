#pragma once

#include "foundation/Timestamp.h"

#include <functional>

namespace corvane {

/// The main dispatch queue. Work runs on the main thread, one piece after the other: while one
/// runs, a modal alert inside it included, no other starts. Equal due times run in the order of
/// scheduling. Both operations may be called from any thread and return at once.
class MainQueue {
public:
    virtual ~MainQueue() = default;
    /// Runs `work` after what is already due.
    virtual void async(std::function<void()> work) = 0;
    /// Runs `work` once, no sooner than `seconds` from now.
    virtual void after(double seconds, std::function<void()> work) = 0;
};

/// The global queue of quality of service user-initiated: pieces of work run at the same time, on
/// threads of their own, so one that waits for a process holds up no other. Any thread.
class BackgroundQueue {
public:
    virtual ~BackgroundQueue() = default;
    virtual void async(std::function<void()> work) = 0;
};

/// Work with the disk: one piece after the other, in the order in which they were given, so that a
/// slow disk doesn't hold up the main thread, which alone gives them.
class DiskQueue {
public:
    virtual ~DiskQueue() = default;
    /// Runs `work` on another thread and waits for its end, ten milliseconds at most. Whether it
    /// has ended; else it goes on, and ends before the queue goes.
    virtual bool run(std::function<void()> work) = 0;
};

/// The wall clock. Any thread.
class Clock {
public:
    virtual ~Clock() = default;
    virtual Timestamp now() const = 0;
    /// NSThread sleepForTimeInterval: nothing runs on the calling thread meanwhile.
    virtual void sleep(double seconds) = 0;
};

} // namespace corvane
