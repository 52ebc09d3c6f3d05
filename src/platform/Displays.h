#pragma once

#include "foundation/Rect.h"

#include <optional>
#include <vector>

namespace corvane {

/// One NSScreen, in AppKit's space: points, origin at the bottom left of the primary display, y
/// upward.
struct Display {
    /// The whole display.
    Rect frame;
    /// Without what panels and docks take.
    Rect visibleFrame;

    bool operator==(const Display&) const = default;
};

/// NSScreen. Main thread.
class Displays {
public:
    virtual ~Displays() = default;
    /// screens: the primary display first; empty where there is none.
    virtual std::vector<Display> screens() const = 0;
    /// mainScreen: the display of the window with the keyboard; nothing where there is no display.
    virtual std::optional<Display> mainScreen() const = 0;
};

} // namespace corvane
