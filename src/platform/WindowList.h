#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace corvane {

/// "kCGWindowBounds": what a person sees of the window, decorations in and shadows out. Points,
/// origin at the top left of the primary display, y downward. Each value is absent where it can't
/// be read.
struct WindowBounds {
    std::optional<double> x = {};
    std::optional<double> y = {};
    std::optional<double> width = {};
    std::optional<double> height = {};

    bool operator==(const WindowBounds&) const = default;
};

/// One window of the list; each value is absent where it can't be read.
struct WindowInfo {
    /// "kCGWindowBounds"
    std::optional<WindowBounds> bounds = {};
    /// "kCGWindowOwnerPID"
    std::optional<std::int32_t> ownerPID = {};
    /// "kCGWindowOwnerName": the localized name of the owner.
    std::optional<std::string> ownerName = {};
    /// "kCGWindowLayer": 0 for ordinary windows, below 0 for the desktop, above for docks.
    std::optional<std::int64_t> layer = {};
    /// "kCGWindowName": the title.
    std::optional<std::string> name = {};
    /// "kCGWindowNumber"
    std::optional<std::int64_t> number = {};
    /// What a tiler calls the workspace that it has the window on; only of windows that it tiles.
    std::optional<std::string> tilingWorkspace = {};

    bool operator==(const WindowInfo&) const = default;
};

/// CGWindowListCopyWindowInfo. Main thread.
class WindowList {
public:
    virtual ~WindowList() = default;
    /// kCGWindowListOptionOnScreenOnly: the windows of all processes that are on the screen now,
    /// front to back, and behind them what a tiler has on other workspaces; nothing where the
    /// desktop doesn't answer.
    virtual std::optional<std::vector<WindowInfo>> onScreenWindows() = 0;
};

} // namespace corvane
