#pragma once

#include "core/Records.h"
#include "layouts/FullscreenDetection.h"
#include "platform/Applications.h"
#include "platform/WindowList.h"

#include <optional>
#include <string>
#include <vector>

namespace corvane {

/// Turns the windows that a running application shows now into records. Main thread.
class WindowCapture {
public:
    WindowCapture(WindowList& windowList, const Displays& displays, Accessibility& accessibility)
        : windowList_(windowList), displays_(displays), accessibility_(accessibility) {}

    /// The windows above 50 by 50 that belong to the application by process or by name, front to
    /// back; without any, the first that may stand for it fullscreen. Nothing where there is none,
    /// and where the desktop doesn't tell its windows.
    std::optional<std::vector<WindowInfo>>
    windowsForApplication(const RunningApplication& application) const;

    /// One record a window, front to back, under the application's own name, or `name` where it has
    /// none. Of regular and fullscreen windows only the regular ones are recorded.
    std::vector<WindowLayout> capture(const RunningApplication& application,
                                      const std::string& name) const;

private:
    std::vector<WindowInfo> chosenWindows(std::vector<WindowInfo> windows,
                                          const std::string& displayName) const;

    WindowList& windowList_;
    const Displays& displays_;
    Accessibility& accessibility_;
};

} // namespace corvane
