#pragma once

#include "platform/MainQueue.h"

#include <chrono>
#include <thread>

namespace corvane {

/// The system's wall clock.
class LinuxClock final : public Clock {
public:
    Timestamp now() const override {
        const auto sinceEpoch = std::chrono::system_clock::now().time_since_epoch();
        return Timestamp::fromUnix(std::chrono::duration<double>(sinceEpoch).count());
    }
    void sleep(double seconds) override {
        std::this_thread::sleep_for(std::chrono::duration<double>(seconds));
    }
};

} // namespace corvane
