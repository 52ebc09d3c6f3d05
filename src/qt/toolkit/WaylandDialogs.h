#pragma once

class QWindow;

namespace corvane {

bool isOnWayland();

/// Shows a window in the middle of its owner, or of the screen, also where Wayland leaves that to
/// the compositor: GNOME's is told that it is a dialog, as it takes it for any other window else.
/// A window that is shown already stays as it is.
void showAsDialog(QWindow& window);

} // namespace corvane
