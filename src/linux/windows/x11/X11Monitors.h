#pragma once

#include "linux/windows/x11/X11WindowGeometry.h"

#include <vector>

#include <xcb/randr.h>

namespace corvane::x11 {

/// In pixels of the root window.
struct Monitors {
    /// The primary one first, mirrored ones once. Without RandR 1.5 the whole screen is one; empty
    /// where the server doesn't answer.
    std::vector<Frame> frames = {};
    /// All of the screen.
    Frame root = {};

    /// Its top left is where the seam's coordinates begin.
    Frame primary() const { return frames.empty() ? root : frames.front(); }
};

/// A question for the monitors on its way to the server.
struct MonitorsRequest {
    xcb_randr_get_monitors_cookie_t monitors{};
    xcb_get_geometry_cookie_t root{};
};
MonitorsRequest requestMonitors(const Server& server);
Monitors readMonitors(Server& server, const MonitorsRequest& request, Deadline deadline);

} // namespace corvane::x11
