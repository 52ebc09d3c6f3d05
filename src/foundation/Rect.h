#pragma once

namespace corvane {

/// A rectangle in points: origin and size. What the origin means is said where a Rect is used.
struct Rect {
    double x = 0;
    double y = 0;
    double width = 0;
    double height = 0;

    bool operator==(const Rect&) const = default;
};

} // namespace corvane
