#pragma once

#include "linux/windows/x11/X11Connection.h"

#include <optional>
#include <vector>

/// The client windows of a display. Look at `server.failed()` behind each of these.
namespace corvane::x11 {

inline xcb_window_t idOf(const WindowRef& window) {
    return static_cast<xcb_window_t>(window.number);
}

/// All of them with the processes behind them, in a fixed number of round trips, however many
/// there are. The processes are the server's word, the rest is the clients' and the manager's.
WindowsNow readWindows(Server& server, Deadline deadline);

/// One of them; nothing where it is gone.
std::optional<ManagedWindow> readWindow(Server& server, const WindowRef& window, Deadline deadline);

/// The same windows in the same order, for those who need no more of them.
std::vector<xcb_window_t> clientWindowIds(Server& server, Deadline deadline);

/// Whether the window's number still belongs to a client of that process.
bool exists(Server& server, const WindowRef& window, Deadline deadline);

/// The window by which a window manager says that it keeps to EWMH; XCB_NONE where there is none.
xcb_window_t windowManager(Server& server, Deadline deadline);

} // namespace corvane::x11
