#pragma once

#include "platform/MainQueue.h"

#include <cstdint>
#include <functional>
#include <map>
#include <utility>

namespace corvane {

/// The queues and the clock of the simulated desktop. Time jumps from one piece of work to the
/// next; pieces that are due at the same moment run in the order in which they were scheduled.
class SimulatedQueue : public MainQueue, public DiskQueue, public Clock {
public:
    /// What runs beside the main thread.
    class Background : public BackgroundQueue {
    public:
        explicit Background(SimulatedQueue& queue) : queue_(queue) {}
        void async(std::function<void()> work) override;

    private:
        SimulatedQueue& queue_;
    };
    Background background{*this};
    /// Whether what runs now is work of the background.
    bool isInBackground() const { return isInBackground_; }

    /// The moment of `now()` when nothing has run: 2026-01-01 12:00:00 UTC.
    static constexpr Timestamp start{788961600.0};

    void async(std::function<void()> work) override { after(0, std::move(work)); }
    void after(double seconds, std::function<void()> work) override;
    Timestamp now() const override { return {start.seconds + elapsed_}; }
    /// At once where the disk is fast.
    bool run(std::function<void()> work) override;
    /// What work with the disk takes, in seconds.
    double diskDelay = 0;
    /// Moves the time; what is due meanwhile runs after the sleeper.
    void sleep(double seconds) override { elapsed_ += seconds; }

    /// Runs everything that is due within the next `seconds`, what it schedules there included, and
    /// moves the time so far.
    void runFor(double seconds);
    std::size_t pending() const { return work_.size(); }

private:
    double elapsed_ = 0;
    bool isInBackground_ = false;
    /// When the last work with the disk ends.
    double diskIsFreeAt_ = 0;
    std::uint64_t scheduled_ = 0;
    std::map<std::pair<double, std::uint64_t>, std::function<void()>> work_;
};

} // namespace corvane
