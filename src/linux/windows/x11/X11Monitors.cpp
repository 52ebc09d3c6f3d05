#include "linux/windows/x11/X11Monitors.h"

#include <algorithm>

namespace corvane::x11 {

MonitorsRequest requestMonitors(const Server& server) {
    constexpr std::uint8_t activeOnes = 1;
    MonitorsRequest request;
    // Asking an extension that isn't there would break the connection.
    if (server.tellsMonitors()) {
        request.monitors = xcb_randr_get_monitors(server.get(), server.root(), activeOnes);
    }
    request.root = xcb_get_geometry(server.get(), server.root());
    return request;
}

Monitors readMonitors(Server& server, const MonitorsRequest& request, Deadline deadline) {
    Monitors result;
    auto& frames = result.frames;
    if (server.tellsMonitors()) {
        const auto answer =
            server.reply<xcb_randr_get_monitors_reply_t>(request.monitors, deadline);
        auto monitors = answer ? xcb_randr_get_monitors_monitors_iterator(answer.get())
                               : xcb_randr_monitor_info_iterator_t{};
        for (; monitors.rem > 0; xcb_randr_monitor_info_next(&monitors)) {
            const auto& each = *monitors.data;
            const Frame frame{each.x, each.y, each.width, each.height};
            if (each.primary) std::erase(frames, frame);
            if (std::ranges::count(frames, frame) > 0) continue;
            frames.insert(each.primary ? frames.begin() : frames.end(), frame);
        }
    }
    const auto root = server.reply<xcb_get_geometry_reply_t>(request.root, deadline);
    if (root) result.root = {0, 0, root->width, root->height};
    if (frames.empty() && root) frames.push_back(result.root);
    return result;
}

} // namespace corvane::x11
