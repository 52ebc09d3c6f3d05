#include "linux/windows/WindowSystems.h"

#include "linux/windows/x11/X11WindowSystem.h"

#include <cstdlib>
#include <string_view>

namespace corvane {
namespace {

/// Stands for a session that nobody here knows.
class UnknownWindowSystem final : public WindowSystem {
    bool isReady(Deadline) override { return false; }
    Abilities abilities(Deadline) override {
        return {.whatToDoFirst = "Corvane can't see the windows of this desktop: log in to an X11 "
                                 "session of it."};
    }
    std::optional<WindowsNow> windows(Deadline) override { return std::nullopt; }
    std::optional<ManagedWindow> window(const WindowRef&, Deadline) override {
        return std::nullopt;
    }
    std::optional<std::vector<Monitor>> monitors(Deadline) override { return std::nullopt; }
    WindowAnswer place(const WindowRef&, const FrameWish&, Deadline) override {
        return WindowAnswer::unanswered;
    }
    WindowAnswer setFullscreen(const WindowRef&, bool, Deadline) override {
        return WindowAnswer::unanswered;
    }
    WindowAnswer setMaximized(const WindowRef&, bool, Deadline) override {
        return WindowAnswer::unanswered;
    }
    WindowAnswer activate(const WindowRef&, Deadline) override { return WindowAnswer::unanswered; }
    WindowAnswer askToClose(std::span<const WindowRef>, Deadline) override {
        return WindowAnswer::unanswered;
    }
};

bool isSet(const char* variable) {
    const char* value = std::getenv(variable);
    return value && *value;
}

} // namespace

std::unique_ptr<WindowSystem> windowSystemHere() {
    if (!isSet("WAYLAND_DISPLAY")) return std::make_unique<x11::X11WindowSystem>();
    return std::make_unique<UnknownWindowSystem>();
}

} // namespace corvane
