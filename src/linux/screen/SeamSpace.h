#pragma once

#include "foundation/Rect.h"
#include "linux/windows/WindowSystem.h"
#include "platform/Accessibility.h"

#include <vector>

namespace corvane {

/// Between the window system's space and the two of the seam, whose origin is a corner of the
/// primary monitor.
class SeamSpace {
public:
    /// The primary one first; without any, the spaces begin at the same place.
    explicit SeamSpace(const std::vector<Monitor>& monitors)
        : primary_(monitors.empty() ? PixelRect{} : monitors.front().frame) {}

    /// Of window frames: top left of the primary display, y downward.
    Rect toSeam(const PixelRect& rect) const;
    PixelPoint fromSeam(const Point& point) const;
    /// Of displays: bottom left of the primary display, y upward.
    Rect toAppKit(const PixelRect& rect) const;

private:
    PixelRect primary_;
};

} // namespace corvane
