#include "linux/screen/SeamSpace.h"

namespace corvane {

Rect SeamSpace::toSeam(const PixelRect& rect) const {
    return {rect.origin.x - primary_.origin.x, rect.origin.y - primary_.origin.y, rect.size.width,
            rect.size.height};
}

PixelPoint SeamSpace::fromSeam(const Point& point) const {
    return {primary_.origin.x + point.x, primary_.origin.y + point.y};
}

Rect SeamSpace::toAppKit(const PixelRect& rect) const {
    const double bottom = rect.origin.y + rect.size.height;
    const double primaryBottom = primary_.origin.y + primary_.size.height;
    return {rect.origin.x - primary_.origin.x, primaryBottom - bottom, rect.size.width,
            rect.size.height};
}

} // namespace corvane
