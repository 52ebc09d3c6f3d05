#pragma once

#include "linux/windows/x11/X11Connection.h"
#include "linux/windows/x11/X11WindowControl.h"
#include "platform/Accessibility.h"

#include <functional>

namespace corvane {

/// The Accessibility interface over the client windows of the X display and its window manager. An
/// element names its window by the X id; where another process has that id by now, the element is
/// invalid.
class LinuxAccessibility final : public Accessibility {
public:
    /// The connection is one of the main thread and outlives this.
    explicit LinuxAccessibility(x11::Connection& connection) : connection_(connection) {}

    /// There is an X display with a window manager that keeps to EWMH.
    bool isProcessTrusted() override;
    /// Ordinary windows and dialogs. Iconified ones and those of other desktops come last.
    std::optional<std::vector<AccessibilityWindow>>
    windows(std::int32_t processIdentifier) override;

    std::optional<Point> position(const AccessibilityWindow& window) override;
    std::optional<Size> size(const AccessibilityWindow& window) override;
    std::optional<bool> isFullscreen(const AccessibilityWindow& window) override;

    /// A window that is to change leaves fullscreen, maximization and shade first. The size is set
    /// at the position that was set last, which a window manager may have kept from it till then.
    int setPosition(const AccessibilityWindow& window, Point position) override;
    int setSize(const AccessibilityWindow& window, Size size) override;
    int setFullscreen(const AccessibilityWindow& window, bool fullscreen) override;

    /// To fullscreen and back. A window that only was late to become fullscreen stays so.
    int toggleFullscreen(const AccessibilityWindow& window);
    /// A click on the button that makes the window as large as it gets: fullscreen, or maximized
    /// where the window manager knows no fullscreen; and back.
    int zoom(const AccessibilityWindow& window);

private:
    struct Look {
        x11::Frame frame;
        bool isFullscreen = false;
    };
    std::optional<Look> look(const AccessibilityWindow& window);

    using Outcome = x11::WindowControl::Outcome;
    /// `act` gets the window, and where the seam's coordinates begin on the root window.
    using Act = std::function<Outcome(x11::WindowControl&, const x11::Frame& primary)>;
    int control(const AccessibilityWindow& window, const Act& act);

    struct Placed {
        AccessibilityWindow window;
        Point position;
    };

    x11::Connection& connection_;
    x11::ManagerHabits habits_;
    std::optional<Placed> lastPlaced_;
    /// Was to become fullscreen, without an answer in time.
    std::optional<AccessibilityWindow> unanswered_;
};

} // namespace corvane
