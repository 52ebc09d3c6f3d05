#include "layouts/ScreenInfo.h"

#include <algorithm>

namespace corvane {

namespace {

bool intersect(const Rect& a, const Rect& b) {
    return a.x < b.x + b.width && b.x < a.x + a.width && a.y < b.y + b.height &&
           b.y < a.y + a.height;
}

} // namespace

std::int64_t screenIndexForFrame(const Rect& frame, const std::vector<Display>& screens) {
    const auto found = std::ranges::find_if(
        screens, [&](const Display& screen) { return intersect(screen.frame, frame); });
    return found == screens.end() ? 0 : found - screens.begin();
}

std::optional<ScreenInfo> makeScreenInfo(const WindowLayout& layout,
                                         const std::vector<Display>& screens) {
    if (screens.empty()) return std::nullopt;
    const auto index = layout.screen.value_or(0);
    const bool isThere = index >= 0 && index < std::ssize(screens);
    const auto& screen = screens[isThere ? static_cast<std::size_t>(index) : 0].frame;
    // A quotient that isn't finite couldn't be stored, and would keep the whole file from it.
    if (screen.width <= 0 || screen.height <= 0) return std::nullopt;
    const auto& window = layout.frame;
    return ScreenInfo{.frame = screen,
                      .relativeFrame = {window.x / screen.width, window.y / screen.height,
                                        window.width / screen.width, window.height / screen.height},
                      .index = index,
                      .isPrimary = index == 0};
}

SavedWindowLayout makeSavedWindowLayout(const WindowLayout& layout, Timestamp savedDate,
                                        const std::vector<Display>& screens) {
    SavedWindowLayout saved;
    saved.appName = layout.appName;
    saved.frame = layout.frame;
    saved.recordedAt = savedDate;
    saved.isFullscreen = layout.isFullscreen;
    saved.tilingWorkspace = layout.tilingWorkspace;
    if (const auto info = makeScreenInfo(layout, screens)) {
        saved.screenFrame = info->frame;
        saved.relativeFrame = info->relativeFrame;
        saved.screenIndex = info->index;
        saved.isOnPrimaryScreen = info->isPrimary;
    }
    return saved;
}

} // namespace corvane
