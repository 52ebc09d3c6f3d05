#pragma once

#include "linux/windows/x11/X11Connection.h"
#include "platform/WindowList.h"

namespace corvane {

class RunningApplications;

/// CGWindowListCopyWindowInfo over the client windows of the X display: those of the current
/// desktop that are mapped and not hidden. Asks the display anew each time, in a fixed number of
/// round trips, for half a second at most.
class LinuxWindowList final : public WindowList {
public:
    /// Both outlive the list; the connection is one of the main thread.
    LinuxWindowList(x11::Connection& connection, RunningApplications& running)
        : connection_(connection), running_(running) {}

    std::optional<std::vector<WindowInfo>> onScreenWindows() override;

private:
    x11::Connection& connection_;
    RunningApplications& running_;
};

} // namespace corvane
