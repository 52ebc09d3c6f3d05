#pragma once

#include <compare>

namespace corvane {

/// A moment, in seconds since 2001-01-01 00:00:00 UTC.
struct Timestamp {
    double seconds = 0;

    /// Seconds from the Unix epoch to the zero of a Timestamp.
    static constexpr double unixOffset = 978307200.0;
    static constexpr Timestamp fromUnix(double unixSeconds) { return {unixSeconds - unixOffset}; }
    constexpr double toUnix() const { return seconds + unixOffset; }

    auto operator<=>(const Timestamp&) const = default;
};

} // namespace corvane
