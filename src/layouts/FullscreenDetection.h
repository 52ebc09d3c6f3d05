#pragma once

#include "platform/Accessibility.h"
#include "platform/Displays.h"
#include "platform/WindowList.h"

#include <map>
#include <vector>

namespace corvane {

/// Judges from a window's layer, bounds and owner whether it is fullscreen, as the window list
/// carries no such mark. Changes nothing. An application is asked for its windows once, when they
/// are first needed; whoever wants to know anew makes another one of these. Main thread.
class FullscreenDetection {
public:
    FullscreenDetection(const Displays& displays, Accessibility& accessibility)
        : displays_(displays), accessibility_(accessibility) {}

    /// Whether a window of another process may stand for an application that shows none: below
    /// layer 0, as large as the main screen or larger, and near the origin.
    bool isPotentialFullscreenWindow(std::int64_t layer, double width, double height, double x,
                                     double y) const;

    /// Four rules, from cheap to dear; the first that says yes counts, with any display. The last
    /// asks the window's application and waits for its answer, and is the only one for a window
    /// that is tiled.
    bool isWindowFullscreen(const WindowInfo& window);

private:
    /// One of the "AXWindows" whose position and size can be read.
    struct Element {
        AccessibilityWindow window;
        Rect frame;
    };
    const std::vector<Element>& elementsOf(std::int32_t processIdentifier);
    bool isFullscreenByAccessibility(const WindowInfo& window, const Rect& frame);

    const Displays& displays_;
    Accessibility& accessibility_;
    std::map<std::int32_t, std::vector<Element>> elements_;
};

} // namespace corvane
