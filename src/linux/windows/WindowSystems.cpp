#include "linux/windows/WindowSystems.h"

#include "linux/windows/AgentWindowSystem.h"
#include "linux/windows/gnome/GnomeAgent.h"
#include "linux/windows/kwin/KWinAgent.h"
#include "linux/windows/sway/I3WindowSystem.h"
#include "linux/windows/sway/SwayWindowSystem.h"
#include "linux/windows/toplevels/ToplevelWindowSystem.h"
#include "linux/windows/x11/X11WindowSystem.h"

#include <cstdlib>
#include <mutex>

namespace corvane {
namespace {

bool isSet(const char* variable) {
    const char* value = std::getenv(variable);
    return value && *value;
}

std::unique_ptr<WindowSystem> xServerHere() {
    return isSet("DISPLAY") ? std::make_unique<x11::X11WindowSystem>() : nullptr;
}

/// Chooses once, as soon as somebody answers.
class SystemHere final : public WindowSystem {
public:
    bool isReady(Deadline by) override {
        auto* const system = find(by);
        return system && system->isReady(by);
    }
    Abilities abilities(Deadline by) override {
        auto* const system = find(by);
        if (system) return system->abilities(by);
        return {
            .desktop = "unknown (Wayland)",
            .whatToDoFirst =
                "Corvane can't see the windows of this desktop: log in to an X11 session of it."};
    }
    std::string switchOn(Deadline by) override {
        auto* const system = find(by);
        return system ? system->switchOn(by) : abilities(by).whatToDoFirst;
    }
    std::optional<WindowsNow> windows(Deadline by) override {
        auto* const system = find(by);
        return system ? system->windows(by) : std::nullopt;
    }
    std::optional<ManagedWindow> window(const WindowRef& window, Deadline by) override {
        auto* const system = find(by);
        return system ? system->window(window, by) : std::nullopt;
    }
    std::optional<std::vector<Monitor>> monitors(Deadline by) override {
        auto* const system = find(by);
        return system ? system->monitors(by) : std::nullopt;
    }
    WindowAnswer place(const WindowRef& window, const FrameWish& wish, Deadline by) override {
        auto* const system = find(by);
        return system ? system->place(window, wish, by) : WindowAnswer::unanswered;
    }
    WindowAnswer setFullscreen(const WindowRef& window, bool on, Deadline by) override {
        auto* const system = find(by);
        return system ? system->setFullscreen(window, on, by) : WindowAnswer::unanswered;
    }
    WindowAnswer setMaximized(const WindowRef& window, bool on, Deadline by) override {
        auto* const system = find(by);
        return system ? system->setMaximized(window, on, by) : WindowAnswer::unanswered;
    }
    WindowAnswer setTilingWorkspace(const WindowRef& window, const std::string& workspace,
                                    Deadline by) override {
        auto* const system = find(by);
        return system ? system->setTilingWorkspace(window, workspace, by)
                      : WindowAnswer::unanswered;
    }
    WindowAnswer activate(const WindowRef& window, Deadline by) override {
        auto* const system = find(by);
        return system ? system->activate(window, by) : WindowAnswer::unanswered;
    }
    WindowAnswer askToClose(std::span<const WindowRef> windows, Deadline by) override {
        auto* const system = find(by);
        return system ? system->askToClose(windows, by) : WindowAnswer::unanswered;
    }
    std::string beginLaunch(const Launch& launch, Deadline by) override {
        auto* const system = find(by);
        return system ? system->beginLaunch(launch, by) : std::string();
    }
    void endLaunch(const std::string& token, Deadline by) override {
        if (auto* const system = find(by)) system->endLaunch(token, by);
    }

private:
    WindowSystem* find(Deadline by) {
        const std::lock_guard lock(mutex_);
        if (chosen_) return chosen_;
        const bool isWayland = isSet("WAYLAND_DISPLAY");
        const auto isXwayland = isWayland ? true : xServer_.isXwayland(by);
        if (isXwayland == false) chosen_ = &xServer_;
        if (isXwayland == false && i3_.isHere(by)) chosen_ = &i3_;
        if (isXwayland == true && sway_.isReady(by)) chosen_ = &sway_;
        for (auto* const each : {&kwin_, &gnome_})
            if (isXwayland == true && !chosen_ && each->isHere(by)) chosen_ = each;
        if (isXwayland == true && !chosen_ && toplevels_.isHere(by)) chosen_ = &toplevels_;
        return chosen_;
    }

    std::mutex mutex_;
    x11::X11WindowSystem xServer_;
    sway::I3WindowSystem i3_{xServer_};
    sway::SwayWindowSystem sway_{xServerHere()};
    AgentWindowSystem kwin_{std::make_unique<kwin::KWinAgent>(), xServerHere()};
    AgentWindowSystem gnome_{std::make_unique<gnome::GnomeAgent>(), xServerHere()};
    /// Behind those that tell more.
    toplevels::ToplevelWindowSystem toplevels_{xServerHere()};
    /// One of these; null until somebody answers.
    WindowSystem* chosen_ = nullptr;
};

} // namespace

std::unique_ptr<WindowSystem> windowSystemHere() {
    return std::make_unique<SystemHere>();
}

} // namespace corvane
