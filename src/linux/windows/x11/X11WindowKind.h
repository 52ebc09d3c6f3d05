#pragma once

#include "linux/windows/x11/X11Connection.h"

namespace corvane::x11 {

/// From "_NET_WM_WINDOW_TYPE".
WindowKind kindOf(const Property& types, const Atoms& atoms);

} // namespace corvane::x11
