#pragma once

#include "linux/windows/x11/X11Connection.h"
#include "linux/windows/x11/X11WindowKind.h"

#include <map>
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
    WindowKind kind = WindowKind::ordinary;
    bool skipsTaskbar = false;
    bool isIconified = false;
};

/// A display's client windows and the processes behind them.
struct Clients {
    /// From bottom to top.
    std::vector<ClientWindow> windows;
    /// The processes of this machine that are connected, by what of their windows' ids tells their
    /// client. It is the server's own word; empty where the server can't tell.
    std::map<std::uint32_t, pid_t> processes;
    bool hasWindowManager = false;
    /// The processes of the window manager and of the server itself; 0 where they aren't known.
    pid_t windowManager = 0;
    pid_t server = 0;
};

/// Asks the display in a fixed number of round trips, however many windows it has. Look at
/// `server.failed()` behind it.
Clients clients(Server& server, Deadline deadline);

/// The same windows in the same order, for those who need no more of them.
std::vector<xcb_window_t> clientWindowIds(Server& server, Deadline deadline);

/// A client window and its process, which is 0 as above.
struct OwnedWindow {
    xcb_window_t window = XCB_NONE;
    pid_t processIdentifier = 0;
};
std::vector<OwnedWindow> ownedWindows(Server& server, Deadline deadline);
/// The process of a window's client, the server's word before the client's; 0 as above, and where
/// the window is gone.
pid_t processOf(Server& server, xcb_window_t window, Deadline deadline);

} // namespace corvane::x11
