#pragma once

#include "linux/windows/WindowSystem.h"

#include <functional>

struct wl_display;

namespace corvane {

/// A connection to the compositor of this session, for its own lists of things. Of one thread at a
/// time, which is who hears what the compositor says.
class WaylandConnection {
public:
    /// Broken from the start where nobody listens there.
    WaylandConnection();
    ~WaylandConnection();
    WaylandConnection(const WaylandConnection&) = delete;
    WaylandConnection& operator=(const WaylandConnection&) = delete;

    /// Null while there never was one.
    wl_display* display() const { return display_; }
    /// 0 where it isn't of this machine and process space.
    pid_t compositor() const { return compositor_; }

    /// Sends what was requested, and takes in all that the compositor has to say till now. False
    /// where it doesn't answer by then.
    bool renew(Deadline by);
    /// The same until that holds.
    bool wait(const std::function<bool()>& isThere, Deadline by);
    /// The compositor has ended, or what was asked of it: there is no answer from it ever.
    bool isBroken() const { return isBroken_; }
    void breakOff() { isBroken_ = true; }

private:
    pid_t compositor_ = 0;
    wl_display* display_ = nullptr;
    bool isBroken_ = false;
};

} // namespace corvane
