#pragma once

#include "linux/X11Connection.h"

#include <string>
#include <vector>

#include <sys/types.h>

namespace corvane::x11 {

/// What a top-level window says of itself. Everything is the client's word and may be wrong.
struct ClientWindow {
    xcb_window_t window = XCB_NONE;
    /// 0 where it isn't known, or the client runs on another machine.
    pid_t processIdentifier = 0;
    /// The two texts of WM_CLASS.
    std::string instanceName = {};
    std::string className = {};
    std::string gtkApplicationId = {};
    /// A path or a desktop id that the client or its launcher set.
    std::string desktopFileHint = {};
    /// XCB_NONE where it belongs to no other window.
    xcb_window_t transientFor = XCB_NONE;
    /// A normal window or a dialog, not a dock, a desktop or a menu.
    bool isOrdinary = true;
    bool skipsTaskbar = false;
    bool isIconified = false;
};

/// The client windows of the display, from bottom to top, in a fixed number of round trips. Look at
/// `server.failed()` behind it.
std::vector<ClientWindow> clientWindows(Server& server, Deadline deadline);

} // namespace corvane::x11
