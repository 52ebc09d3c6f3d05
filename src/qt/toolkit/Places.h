#pragma once

#include <QPoint>
#include <optional>
#include <string>

class QWindow;

namespace corvane {

/// Puts a window that isn't shown yet over the middle of another one; without one, into the middle
/// of the monitor that the pointer is on. All of it lies on one monitor, if it fits.
void center(QWindow& window, const QWindow* over = nullptr);

/// Where a window that is shown stands: "x y width height" of its frame's corner, which is
/// `corner`, and its content. A window that fills the screen keeps the numbers of `before`, and
/// becomes "... maximized".
std::string placeOf(const QWindow& window, const QPoint& corner, const std::string& before);

struct RestoredPlace {
    /// Of the frame, as it was; nothing where it isn't to be moved.
    std::optional<QPoint> corner = {};
    bool isMaximized = false;
};
/// Gives a window that isn't shown yet such a place, inside the monitors that are there. Nothing
/// happens with a text that is no place.
RestoredPlace restorePlace(QWindow& window, const std::string& place);

} // namespace corvane
