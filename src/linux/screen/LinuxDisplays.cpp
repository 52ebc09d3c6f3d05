#include "linux/screen/LinuxDisplays.h"

#include "linux/windows/x11/X11Monitors.h"
#include "linux/windows/x11/X11WorkAreas.h"

#include <algorithm>

namespace corvane {
namespace {

using x11::Frame;

/// From the root window's space to AppKit's.
Rect toAppKit(const Frame& frame, const Frame& primary) {
    const int bottom = frame.y + frame.height;
    const int primaryBottom = primary.y + primary.height;
    return {double(frame.x - primary.x), double(primaryBottom - bottom), double(frame.width),
            double(frame.height)};
}

std::vector<Display> readDisplays(x11::Server& server, const x11::Monitors& monitors,
                                  x11::Deadline deadline) {
    const auto areas = x11::workAreas(server, monitors, deadline);
    const auto primary = monitors.primary();
    std::vector<Display> displays;
    for (std::size_t i = 0; i < areas.size(); ++i)
        displays.push_back({toAppKit(monitors.frames[i], primary), toAppKit(areas[i], primary)});
    return displays;
}

std::int64_t sharedArea(const Frame& a, const Frame& b) {
    const int width = std::min(a.x + a.width, b.x + b.width) - std::max(a.x, b.x);
    const int height = std::min(a.y + a.height, b.y + b.height) - std::max(a.y, b.y);
    return width > 0 && height > 0 ? std::int64_t{width} * height : 0;
}

/// Of the monitor that shows most of the window with the keyboard; of the primary one where there
/// is no such window.
std::size_t activeMonitor(x11::Server& server, const x11::Monitors& monitors,
                          x11::Deadline deadline) {
    const auto active = server.requestProperty(server.root(), server.atoms().netActiveWindow);
    const auto window = server.property(active, deadline).firstNumber().value_or(XCB_NONE);
    if (window == XCB_NONE) return 0;
    const auto geometry = x11::readGeometry(server, x11::requestGeometry(server, window), deadline);
    if (!geometry) return 0;
    std::size_t best = 0;
    for (std::size_t i = 1; i < monitors.frames.size(); ++i) {
        if (sharedArea(monitors.frames[i], geometry->visible()) >
            sharedArea(monitors.frames[best], geometry->visible())) {
            best = i;
        }
    }
    return best;
}

} // namespace

std::vector<Display> LinuxDisplays::screens() const {
    const auto deadline = x11::halfASecondFromNow();
    const auto displays = connection_.answer(deadline, [&](x11::Server& server) {
        const auto monitors = x11::readMonitors(server, x11::requestMonitors(server), deadline);
        return readDisplays(server, monitors, deadline);
    });
    return displays.value_or(std::vector<Display>{});
}

std::optional<Display> LinuxDisplays::mainScreen() const {
    const auto deadline = x11::halfASecondFromNow();
    const auto display =
        connection_.answer(deadline, [&](x11::Server& server) -> std::optional<Display> {
            const auto monitors = x11::readMonitors(server, x11::requestMonitors(server), deadline);
            const auto displays = readDisplays(server, monitors, deadline);
            if (displays.empty()) return std::nullopt;
            return displays[activeMonitor(server, monitors, deadline)];
        });
    return display.value_or(std::nullopt);
}

} // namespace corvane
