#pragma once

#include "linux/windows/WindowSystem.h"

namespace corvane::kwin {

/// Where the output begins that its user put first of all, which its scripts don't know. Nothing
/// where the KWin of this session doesn't tell by then.
std::optional<PixelPoint> primaryOrigin(Deadline by);

} // namespace corvane::kwin
