#pragma once

#include "linux/installed/InstalledApplications.h"
#include "linux/system/ProcessFacts.h"
#include "linux/windows/x11/X11ClientWindows.h"

#include <string>
#include <vector>

namespace corvane {

/// Which of the installed applications a process's window belongs to: by what names it surely, then
/// by its class, then by the program; null where nothing fits. Among equals shown ones come first.
/// Nothing but the arguments is looked at.
const InstalledApplication* applicationOf(const x11::ClientWindow& window,
                                          const ProcessFacts& process,
                                          const std::vector<InstalledApplication>& installed);

} // namespace corvane
