#include "linux/windows/WaylandSession.h"

#include "linux/system/UnixSocket.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>

namespace corvane {
namespace {

/// What the X server says of a client; nothing where it doesn't vouch for it. Without the window's
/// number, all windows of the process have to take requests.
std::optional<WindowRef> vouchedFor(const XClient& client, const WindowsNow& server,
                                    bool& takesRequests) {
    std::optional<WindowRef> found;
    takesRequests = true;
    for (const auto& window : server.windows) {
        const bool isMeant = client.number ? window.window.number == client.number
                                           : window.window.process == client.window->window.process;
        if (!isMeant) continue;
        found = window.window;
        takesRequests = takesRequests && window.canBeAskedToClose;
    }
    return found;
}

} // namespace

std::optional<pid_t> waylandCompositor() {
    const auto variable = [](const char* name) {
        const char* value = std::getenv(name);
        return std::string(value ? value : "");
    };
    auto display = variable("WAYLAND_DISPLAY");
    if (display.empty()) display = "wayland-0";
    if (!display.starts_with('/')) display = variable("XDG_RUNTIME_DIR") + '/' + display;
    const auto socket = connectedTo(display);
    return socket ? std::optional(processBehind(socket.get())) : std::nullopt;
}

void putPrimaryFirst(std::vector<Monitor>& monitors) {
    std::ranges::stable_sort(monitors, {}, [](const Monitor& monitor) {
        return std::abs(monitor.frame.origin.x) + std::abs(monitor.frame.origin.y);
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
        bool takesRequests = false;
        auto& window = *client.window;
        const auto found = vouchedFor(client, *now, takesRequests);
        window.window.process = found ? found->process : 0;
        window.canBeAskedToClose = window.canBeAskedToClose && found && takesRequests;
    }
    return true;
}

} // namespace corvane
