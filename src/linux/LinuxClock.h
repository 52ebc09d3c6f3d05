#pragma once

#include "platform/MainQueue.h"

#include <chrono>

namespace corvane {

/// The system's wall clock.
class LinuxClock final : public Clock {
public:
    Timestamp now() const override {
        const auto sinceEpoch = std::chrono::system_clock::now().time_since_epoch();
        return Timestamp::fromUnix(std::chrono::duration<double>(sinceEpoch).count());
    }
};

} // namespace corvane
