#pragma once

#include "linux/windows/WindowSystem.h"

#include <memory>

namespace corvane {

/// Whoever shows the windows of the session that the environment names. A Wayland session that
/// nobody here knows gets a system that is never ready and tells nothing, as Xwayland's clients
/// alone would be half of the truth.
std::unique_ptr<WindowSystem> windowSystemHere();

} // namespace corvane
