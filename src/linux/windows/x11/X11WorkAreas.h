#pragma once

#include "linux/windows/x11/X11Monitors.h"

#include <vector>

namespace corvane::x11 {

/// What of each monitor is left to windows, in the order of the monitors: as the window manager
/// says for each, else without what panels reserve, else, on a single monitor, as the window
/// manager says for the whole screen. A fixed number of round trips.
std::vector<Frame> workAreas(Server& server, const Monitors& monitors, Deadline deadline);

} // namespace corvane::x11
