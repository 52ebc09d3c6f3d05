#pragma once

#include "foundation/Rect.h"
#include "linux/windows/WindowSystem.h"
#include "platform/Accessibility.h"

namespace corvane {

class RunningApplications;

/// The Accessibility interface over the window system. An element names its window by the system's
/// number and the process behind it; where another process has that number by now, the element is
/// invalid.
class LinuxAccessibility final : public Accessibility {
public:
    /// Both outlive this.
    LinuxAccessibility(WindowSystem& windows, RunningApplications& running)
        : windows_(windows), running_(running) {}

    /// The window system is ready. One that doesn't answer in time is asked once more.
    bool isProcessTrusted() override;
    DesktopFacts desktop() override;
    /// Of the running application with that identifier: ordinary windows and dialogs. Iconified
    /// ones and those of other workspaces come last.
    std::optional<std::vector<AccessibilityWindow>>
    windows(std::int32_t processIdentifier) override;

    std::optional<Point> position(const AccessibilityWindow& window) override;
    std::optional<Size> size(const AccessibilityWindow& window) override;
    std::optional<bool> isFullscreen(const AccessibilityWindow& window) override;

    /// A window that is to change leaves maximization and shade first; a fullscreen or tiled one
    /// stays as it is. Both are asked for at once, and once more where there was no answer. A frame
    /// that is a monitor's work area is that of a maximized window, and is reached by making it
    /// one.
    FrameCodes setFrame(const AccessibilityWindow& window, const Rect& frame) override;
    int setFullscreen(const AccessibilityWindow& window, bool fullscreen) override;
    int setTilingWorkspace(const AccessibilityWindow& window, const std::string& name) override;

    /// To fullscreen and back. A window that only was late to become fullscreen stays so.
    int toggleFullscreen(const AccessibilityWindow& window);
    /// A click on the button that makes the window as large as it gets: fullscreen, or maximized
    /// where the window system does no fullscreen; and back.
    int zoom(const AccessibilityWindow& window);

private:
    WindowAnswer put(const WindowRef& window, const FrameWish& wish);
    WindowAnswer fill(const WindowRef& window, const PixelRect& area, Deadline by);
    std::optional<Rect> frame(const AccessibilityWindow& window);
    WindowAnswer place(const WindowRef& window, const Rect& frame);

    WindowSystem& windows_;
    RunningApplications& running_;
    /// Was to become fullscreen, without an answer in time.
    std::optional<AccessibilityWindow> unanswered_;
};

} // namespace corvane
