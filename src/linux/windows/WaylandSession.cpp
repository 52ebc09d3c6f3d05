#include "linux/windows/WaylandSession.h"

#include "linux/system/UnixSocket.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>

namespace corvane {
namespace {

bool areCalledAlike(const ManagedWindow& one, const ManagedWindow& other) {
    return one.title == other.title && one.hints.instanceName == other.hints.instanceName &&
           one.hints.className == other.hints.className;
}

/// The server's own word of a client: by its number; by its process, which it may have named itself
/// and which has to have a window of its class; or by what it is called where no other is called
/// so.
const ManagedWindow* windowOf(const XClient& client, std::span<const XClient> clients,
                              const std::vector<ManagedWindow>& windows) {
    const auto& wanted = *client.window;
    const auto found = std::ranges::find_if(windows, [&](const ManagedWindow& other) {
        if (client.number) return other.window.number == client.number;
        return wanted.window.process > 0 && other.window.process == wanted.window.process &&
               other.hints.className == wanted.hints.className;
    });
    if (found != windows.end()) return &*found;
    const auto isAlike = [&](const ManagedWindow& other) { return areCalledAlike(other, wanted); };
    const auto named = std::ranges::find_if(windows, isAlike);
    const bool isOne = !client.number && std::ranges::count_if(windows, isAlike) == 1 &&
                       std::ranges::count_if(clients, [&](const XClient& other) {
                           return isAlike(*other.window);
                       }) == 1;
    return isOne ? &*named : nullptr;
}

/// Of a client whose number isn't told, all windows of its process have to take requests.
bool takesRequests(const XClient& client, const ManagedWindow* found,
                   const std::vector<ManagedWindow>& windows) {
    if (!found || client.number) return found && found->canBeAskedToClose;
    return std::ranges::all_of(windows, [&](const ManagedWindow& window) {
        return window.window.process != found->window.process || window.canBeAskedToClose;
    });
}

} // namespace

int millisecondsTo(Deadline by) {
    using namespace std::chrono;
    const auto left = ceil<milliseconds>(by - steady_clock::now()).count();
    return static_cast<int>(std::max<std::int64_t>(left, 0));
}

FileDescriptor connectedToWayland() {
    const auto variable = [](const char* name) {
        const char* value = std::getenv(name);
        return std::string(value ? value : "");
    };
    auto display = variable("WAYLAND_DISPLAY");
    if (display.empty()) display = "wayland-0";
    if (!display.starts_with('/')) display = variable("XDG_RUNTIME_DIR") + '/' + display;
    return connectedTo(display);
}

std::optional<pid_t> waylandCompositor() {
    const auto socket = connectedToWayland();
    return socket ? std::optional(processBehind(socket.get())) : std::nullopt;
}

void putPrimaryFirst(std::vector<Monitor>& monitors, const PixelPoint& origin) {
    std::ranges::stable_sort(monitors, {}, [&](const Monitor& monitor) {
        const auto& [x, y] = monitor.frame.origin;
        return std::abs(x - origin.x) + std::abs(y - origin.y);
    });
}

bool checkXClients(std::span<const XClient> clients, WindowSystem* server, pid_t compositor,
                   Deadline by) {
    if (clients.empty()) return true;
    auto now = server ? server->windows(by) : WindowsNow();
    if (!now) return false;
    // The environment may name another session's server. This one's is managed by the compositor.
    if (!now->session.contains(compositor)) now->windows.clear();
    for (const auto& client : clients) {
        auto& window = *client.window;
        const auto* const its = windowOf(client, clients, now->windows);
        window.window.process = its ? its->window.process : 0;
        if (its && client.number) window.hints = its->hints;
        if (!takesRequests(client, its, now->windows)) window.canBeAskedToClose = false;
    }
    return true;
}

} // namespace corvane
