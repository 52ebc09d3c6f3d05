#pragma once

#include <string>

namespace corvane::world {

/// The shell command whose output visibleFrame() reads; it ends with _NET_WM_STATE.
std::string frameQuestion(const std::string& xWindow);

/// "x,y wxh" as a person sees it, decorations in and shadows out; empty where the window is gone.
std::string visibleFrame(const std::string& told);

} // namespace corvane::world
