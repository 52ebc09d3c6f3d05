#pragma once

#include "linux/windows/x11/X11Connection.h"
#include "linux/windows/x11/X11WindowControl.h"

#include <functional>
#include <mutex>

namespace corvane::x11 {

/// The X server that DISPLAY names, with a window manager that keeps to EWMH. Connects when first
/// asked. Only a server of this machine and process space tells processes; the ones of another
/// are all 0.
class X11WindowSystem final : public WindowSystem {
public:
    /// Its windows are only the X11 part of a Wayland session. Nothing where it doesn't answer.
    std::optional<bool> isXwayland(Deadline by);

    bool isReady(Deadline by) override;
    Abilities abilities(Deadline by) override;
    std::optional<WindowsNow> windows(Deadline by) override;
    std::optional<ManagedWindow> window(const WindowRef& window, Deadline by) override;
    std::optional<std::vector<Monitor>> monitors(Deadline by) override;
    WindowAnswer place(const WindowRef& window, const FrameWish& wish, Deadline by) override;
    WindowAnswer setFullscreen(const WindowRef& window, bool on, Deadline by) override;
    WindowAnswer setMaximized(const WindowRef& window, bool on, Deadline by) override;
    WindowAnswer activate(const WindowRef& window, Deadline by) override;
    WindowAnswer askToClose(std::span<const WindowRef> windows, Deadline by) override;
    std::string beginLaunch(const Launch& launch, Deadline by) override;
    void endLaunch(const std::string& token, Deadline by) override;

private:
    using Act = std::function<WindowAnswer(X11WindowControl&)>;
    WindowAnswer control(const WindowRef& window, Deadline by, const Act& act);

    std::mutex mutex_;
    Connection connection_;
    ManagerHabits habits_;
};

} // namespace corvane::x11
