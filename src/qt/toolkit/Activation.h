#pragma once

class QWindow;

namespace corvane {

/// Gives the keyboard to a window, even where the window manager would keep it where it is.
void activateIgnoringOthers(QWindow& window);

} // namespace corvane
