#pragma once

#include "linux/windows/x11/X11Connection.h"

#include <vector>

namespace corvane::x11 {

/// The client windows from bottom to top as the server has them, for window managers that don't
/// tell. A fixed number of round trips.
std::vector<xcb_window_t> bottomToTop(Server& server, const std::vector<xcb_window_t>& windows,
                                      Deadline deadline);

} // namespace corvane::x11
