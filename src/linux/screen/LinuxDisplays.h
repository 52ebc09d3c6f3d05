#pragma once

#include "linux/windows/WindowSystem.h"
#include "platform/Displays.h"

namespace corvane {

/// NSScreen over the monitors of the window system. Waits half a second at most; a system that
/// doesn't answer has no monitors.
class LinuxDisplays final : public Displays {
public:
    /// The window system outlives this.
    explicit LinuxDisplays(WindowSystem& windows) : windows_(windows) {}

    std::vector<Display> screens() const override;
    std::optional<Display> mainScreen() const override;

private:
    WindowSystem& windows_;
};

} // namespace corvane
