#include "linux/screen/LinuxDisplays.h"

#include "linux/screen/SeamSpace.h"

#include <algorithm>

namespace corvane {
namespace {

std::vector<Display> displaysOf(const std::vector<Monitor>& monitors) {
    const SeamSpace space(monitors);
    std::vector<Display> displays;
    for (const auto& monitor : monitors)
        displays.push_back({space.toAppKit(monitor.frame), space.toAppKit(monitor.workArea)});
    return displays;
}

double shared(double begin, double length, double otherBegin, double otherLength) {
    return std::max(0.0, std::min(begin + length, otherBegin + otherLength) -
                             std::max(begin, otherBegin));
}

double sharedArea(const PixelRect& a, const PixelRect& b) {
    return shared(a.origin.x, a.size.width, b.origin.x, b.size.width) *
           shared(a.origin.y, a.size.height, b.origin.y, b.size.height);
}

/// Of the monitor that shows most of the window with the keyboard; of the primary one where there
/// is no such window.
std::size_t activeMonitor(const std::vector<Monitor>& monitors, const WindowsNow& now) {
    const auto active = std::ranges::find_if(now.windows, [&](const ManagedWindow& window) {
        return window.window.number == now.active;
    });
    if (active == now.windows.end()) return 0;
    std::size_t best = 0;
    for (std::size_t i = 1; i < monitors.size(); ++i) {
        if (sharedArea(monitors[i].frame, active->frame) >
            sharedArea(monitors[best].frame, active->frame)) {
            best = i;
        }
    }
    return best;
}

} // namespace

std::vector<Display> LinuxDisplays::screens() const {
    const auto monitors = windows_.monitors(halfASecondFromNow());
    return displaysOf(monitors.value_or(std::vector<Monitor>()));
}

std::optional<Display> LinuxDisplays::mainScreen() const {
    const auto deadline = halfASecondFromNow();
    const auto monitors = windows_.monitors(deadline);
    if (!monitors || monitors->empty()) return std::nullopt;
    const auto now = windows_.windows(deadline);
    return displaysOf(*monitors).at(now ? activeMonitor(*monitors, *now) : 0);
}

} // namespace corvane
