#pragma once

#include "platform/Accessibility.h"
#include "platform/Displays.h"
#include "platform/WindowList.h"

namespace corvane {

/// Judges from a window's layer, bounds and owner whether it is fullscreen, as the window list
/// carries no such mark. Reads the displays and windows as they are now and changes nothing. Main
/// thread.
class FullscreenDetection {
public:
    FullscreenDetection(const Displays& displays, Accessibility& accessibility)
        : displays_(displays), accessibility_(accessibility) {}

    /// Whether a window of another process may stand for an application that shows none: below
    /// layer 0, as large as the main screen or larger, and near the origin.
    bool isPotentialFullscreenWindow(std::int64_t layer, double width, double height, double x,
                                     double y) const;

    /// Four rules, from cheap to dear; the first that says yes counts, with any display. The last
    /// asks the window's application and waits for its answer.
    bool isWindowFullscreen(const WindowInfo& window) const;

private:
    bool isFullscreenByAccessibility(const WindowInfo& window, const Rect& frame) const;

    const Displays& displays_;
    Accessibility& accessibility_;
};

} // namespace corvane
