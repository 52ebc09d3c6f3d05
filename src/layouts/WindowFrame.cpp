#include "layouts/WindowFrame.h"

#include "foundation/Text.h"

namespace corvane {

std::optional<Rect> windowFrame(const WindowInfo& window) {
    const auto& bounds = window.bounds;
    if (!bounds || !bounds->x || !bounds->y || !bounds->width || !bounds->height) {
        return std::nullopt;
    }
    return Rect{*bounds->x, *bounds->y, *bounds->width, *bounds->height};
}

std::string describedFrame(const Rect& frame) {
    return text::number(frame.width) + "x" + text::number(frame.height) + " at (" +
           text::number(frame.x) + ", " + text::number(frame.y) + ")";
}

} // namespace corvane
