#include "windows/MemoryWindowSystem.h"

#include "linux/windows/Approach.h"
#include "linux/windows/sway/WorkspaceNames.h"

#include <algorithm>
#include <cmath>

namespace corvane {
namespace {

bool isIn(const PixelRect& area, PixelPoint point) {
    return point.x >= area.origin.x && point.x < area.origin.x + area.size.width &&
           point.y >= area.origin.y && point.y < area.origin.y + area.size.height;
}

double fitted(double wished, double least, double step) {
    if (step > 0) wished = least + std::floor((wished - least) / step) * step;
    return std::max(wished, std::max(least, 1.0));
}

} // namespace

bool MemoryWindowSystem::answers() {
    ++questions;
    return isThere && !serverHasStopped;
}

MemoryWindowSystem::Client* MemoryWindowSystem::find(const WindowRef& window) {
    const auto found = std::ranges::find_if(
        clients, [&](const Client& client) { return client.window.window == window; });
    return found == clients.end() ? nullptr : &*found;
}

ManagedWindow& MemoryWindowSystem::show(ManagedWindow window) {
    if (!window.window.number) window.window.number = ++lastNumber_;
    if (window.frame.size == PixelSize()) window.frame = {{100, 100}, {300, 200}};
    if (window.workspace.empty()) window.workspace = workspace;
    window.isOnScreen = true;
    active = window.window.number;
    clients.push_back({.window = window, .restored = window.frame});
    return clients.back().window;
}

const Monitor& MemoryWindowSystem::monitorOf(const PixelRect& frame) const {
    const auto found = std::ranges::find_if(
        screens, [&](const Monitor& monitor) { return isIn(monitor.frame, frame.origin); });
    return found == screens.end() ? screens.front() : *found;
}

void MemoryWindowSystem::maximize(Client& client, bool on) {
    auto& window = client.window;
    if (window.isMaximized == on) return;
    if (on) client.restored = window.frame;
    window.frame = on ? monitorOf(window.frame).workArea : client.restored;
    window.isMaximized = on;
}

void MemoryWindowSystem::fillScreen(Client& client, bool on) {
    auto& window = client.window;
    if (window.isFullscreen == on) return;
    if (on && !window.isMaximized) client.restored = window.frame;
    window.frame = on ? monitorOf(window.frame).frame : client.restored;
    window.isFullscreen = on;
}

bool MemoryWindowSystem::isReady(Deadline) {
    return answers() && !managerHasStopped && whatToDoFirst.empty();
}

Abilities MemoryWindowSystem::abilities(Deadline by) {
    const bool ready = isReady(by);
    return {.desktop = "memory",
            .placesWindows = ready,
            .tellsProcesses = ready,
            .whatToDoFirst = whatToDoFirst};
}

std::optional<WindowsNow> MemoryWindowSystem::windows(Deadline) {
    if (!answers()) return std::nullopt;
    WindowsNow now{.isReady = !managerHasStopped && whatToDoFirst.empty(),
                   .tellsProcesses = tellsProcesses,
                   .windows = {},
                   .active = active,
                   .session = session,
                   .connected = connected};
    for (const auto& client : clients) {
        now.windows.push_back(client.window);
        auto& window = now.windows.back();
        window.isOnScreen = !window.isMinimized && window.workspace == workspace;
        if (now.connected) now.connected->insert(window.window.process);
    }
    return now;
}

std::optional<ManagedWindow> MemoryWindowSystem::window(const WindowRef& window, Deadline) {
    const auto* client = answers() ? find(window) : nullptr;
    return client ? std::optional(client->window) : std::nullopt;
}

std::optional<std::vector<Monitor>> MemoryWindowSystem::monitors(Deadline) {
    return answers() ? std::optional(screens) : std::nullopt;
}

WindowAnswer MemoryWindowSystem::change(const WindowRef& window,
                                        const std::function<WindowAnswer(Client&)>& act) {
    if (!answers() || managerHasStopped) return WindowAnswer::unanswered;
    auto* client = find(window);
    return client ? act(*client) : WindowAnswer::gone;
}

WindowAnswer MemoryWindowSystem::place(const WindowRef& window, const FrameWish& wish, Deadline) {
    return change(window, [&](Client& client) {
        auto target = wishedFrame(wish, client.window.frame);
        if (client.window.isTiled || !isPossible(wish)) return WindowAnswer::refused;
        if (client.window.isFullscreen) {
            return target == client.window.frame ? WindowAnswer::done : WindowAnswer::refused;
        }
        maximize(client, false);
        target.size = {fitted(target.size.width, client.least.width, client.step.width),
                       fitted(target.size.height, client.least.height, client.step.height)};
        client.window.frame = target;
        return WindowAnswer::done;
    });
}

WindowAnswer MemoryWindowSystem::setFullscreen(const WindowRef& window, bool on, Deadline) {
    return change(window, [&](Client& client) {
        if (refusesFullscreen) return WindowAnswer::refused;
        fillScreen(client, on);
        return WindowAnswer::done;
    });
}

WindowAnswer MemoryWindowSystem::setMaximized(const WindowRef& window, bool on, Deadline) {
    return change(window, [&](Client& client) {
        maximize(client, on);
        return WindowAnswer::done;
    });
}

WindowAnswer MemoryWindowSystem::setTilingWorkspace(const WindowRef& window,
                                                    const std::string& name, Deadline) {
    return change(window, [&](Client& client) {
        if (!client.window.isTiled || !sway::movingToWorkspace("", name))
            return WindowAnswer::refused;
        client.window.workspace = name;
        return WindowAnswer::done;
    });
}

WindowAnswer MemoryWindowSystem::activate(const WindowRef& window, Deadline) {
    return change(window, [&](Client& client) {
        client.window.isMinimized = false;
        workspace = client.window.workspace;
        active = window.number;
        std::rotate(clients.begin() + (&client - clients.data()),
                    clients.begin() + (&client - clients.data()) + 1, clients.end());
        return WindowAnswer::done;
    });
}

WindowAnswer MemoryWindowSystem::askToClose(std::span<const WindowRef> windows, Deadline) {
    if (!answers()) return WindowAnswer::unanswered;
    auto answer = WindowAnswer::gone;
    for (const auto& window : windows) {
        auto* client = find(window);
        if (!client) continue;
        if (answer == WindowAnswer::gone) answer = WindowAnswer::done;
        if (!client->window.canBeAskedToClose) {
            answer = WindowAnswer::refused;
            continue;
        }
        askedToClose.push_back(client->window.title.value_or(""));
        if (!client->ignoresClose && !client->hasStopped)
            clients.erase(clients.begin() + (client - clients.data()));
    }
    return answer;
}

} // namespace corvane
