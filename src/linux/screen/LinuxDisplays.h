#pragma once

#include "linux/windows/x11/X11Connection.h"
#include "platform/Displays.h"

namespace corvane {

/// NSScreen over the monitors of the X display; what panels take of them as the window manager
/// says, else as the panels themselves say. Asks the display anew each time, in a fixed number of
/// round trips, for half a second at most; one that doesn't answer has no monitors.
class LinuxDisplays final : public Displays {
public:
    /// The connection is one of the main thread and outlives this.
    explicit LinuxDisplays(x11::Connection& connection) : connection_(connection) {}

    std::vector<Display> screens() const override;
    std::optional<Display> mainScreen() const override;

private:
    x11::Connection& connection_;
};

} // namespace corvane
