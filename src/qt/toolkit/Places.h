#pragma once

#include <string>

class QWindow;

namespace corvane {

/// Puts a window that isn't shown yet over the middle of another one; without one, into the middle
/// of the monitor that the pointer is on. All of it lies on one monitor, if it fits.
void center(QWindow& window, const QWindow* over = nullptr);

/// Where a window that is shown stands: "x y width height" of its frame's corner and its content.
/// A window that fills the screen keeps the numbers of `before`, and becomes "... maximized".
std::string placeOf(const QWindow& window, const std::string& before);
/// Gives a window that isn't shown yet such a place, inside the monitors that are there. True where
/// it is to be shown maximized. Nothing happens with a text that is no place.
bool restorePlace(QWindow& window, const std::string& place);

} // namespace corvane
