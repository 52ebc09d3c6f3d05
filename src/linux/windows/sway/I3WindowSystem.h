#pragma once

#include "linux/windows/WindowSystem.h"

namespace corvane::sway {

/// An X server whose manager is i3, which is asked as sway is. The X server tells and does all but
/// for what is i3's own: workspaces have names, what it tiles is moved to one of them and placed no
/// further, and what is in its scratchpad counts as minimized.
/// Where i3 doesn't answer, the X server's word is all there is.
class I3WindowSystem final : public WindowSystem {
public:
    /// It outlives this.
    explicit I3WindowSystem(WindowSystem& xServer) : xServer_(xServer) {}

    /// A process that manages the X server answers as i3, or is called so.
    bool isHere(Deadline by);

    bool isReady(Deadline by) override { return xServer_.isReady(by); }
    Abilities abilities(Deadline by) override;
    std::optional<WindowsNow> windows(Deadline by) override;
    std::optional<ManagedWindow> window(const WindowRef& window, Deadline by) override;
    std::optional<std::vector<Monitor>> monitors(Deadline by) override {
        return xServer_.monitors(by);
    }
    WindowAnswer place(const WindowRef& window, const FrameWish& wish, Deadline by) override;
    WindowAnswer setFullscreen(const WindowRef& window, bool on, Deadline by) override {
        return xServer_.setFullscreen(window, on, by);
    }
    WindowAnswer setMaximized(const WindowRef& window, bool on, Deadline by) override {
        return xServer_.setMaximized(window, on, by);
    }
    WindowAnswer setTilingWorkspace(const WindowRef& window, const std::string& workspace,
                                    Deadline by) override;
    WindowAnswer activate(const WindowRef& window, Deadline by) override {
        return xServer_.activate(window, by);
    }
    WindowAnswer askToClose(std::span<const WindowRef> windows, Deadline by) override {
        return xServer_.askToClose(windows, by);
    }
    std::string beginLaunch(const Launch& launch, Deadline by) override {
        return xServer_.beginLaunch(launch, by);
    }
    void endLaunch(const std::string& token, Deadline by) override {
        xServer_.endLaunch(token, by);
    }

private:
    WindowSystem& xServer_;
};

} // namespace corvane::sway
