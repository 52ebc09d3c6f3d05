#pragma once

#include "foundation/Rect.h"
#include "platform/WindowList.h"

#include <optional>
#include <string>

namespace corvane {

/// The window's rectangle, in the space of the window list; nothing unless all four of its values
/// can be read.
std::optional<Rect> windowFrame(const WindowInfo& window);

/// "800x600 at (10, 20)", for diagnostics.
std::string describedFrame(const Rect& frame);

} // namespace corvane
