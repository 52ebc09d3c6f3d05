#include "linux/screen/LinuxWindowList.h"

#include "foundation/Text.h"
#include "linux/running/RunningApplications.h"
#include "linux/screen/SeamSpace.h"

#include <algorithm>
#include <map>
#include <ranges>

namespace corvane {
namespace {

/// The numbers of the levels that these kinds of windows have on a Mac.
namespace layer {
constexpr std::int64_t desktop = -2147483623;
constexpr std::int64_t below = -1;
constexpr std::int64_t normal = 0;
constexpr std::int64_t above = 3;
constexpr std::int64_t dock = 20;
} // namespace layer

std::int64_t layerOf(const ManagedWindow& window) {
    if (window.kind == WindowKind::desktop) return layer::desktop;
    if (window.kind == WindowKind::dock) return layer::dock;
    if (window.layer == WindowLayer::above) return layer::above;
    return window.layer == WindowLayer::below ? layer::below : layer::normal;
}

WindowInfo infoOf(const ManagedWindow& window, const SeamSpace& space) {
    const auto frame = space.toSeam(window.frame);
    WindowInfo info{.bounds = WindowBounds{frame.x, frame.y, frame.width, frame.height},
                    .layer = layerOf(window),
                    .number = static_cast<std::int64_t>(window.window.number)};
    if (window.title) info.name = text::replacingInvalidUtf8(*window.title);
    if (window.isTiled && !window.workspace.empty())
        info.tilingWorkspace = text::replacingInvalidUtf8(window.workspace);
    if (window.window.process > 0) info.ownerPID = window.window.process;
    return info;
}

/// What a tiler has on a workspace has its place there, whichever one is shown.
bool hasItsPlace(const ManagedWindow& window) {
    return window.isOnScreen || (window.isTiled && !window.isMinimized);
}

} // namespace

std::optional<std::vector<WindowInfo>> LinuxWindowList::onScreenWindows() {
    const auto deadline = halfASecondFromNow();
    auto now = windows_.windows(deadline);
    const auto monitors = now ? windows_.monitors(deadline) : std::nullopt;
    if (!monitors) return std::nullopt;
    const auto applications = running_.shownAmong(*now);
    std::map<std::uint64_t, const RunningApplication*> owners;
    for (const auto& shown : applications) {
        for (const auto& window : shown.windows)
            owners[window.window.number] = &shown.application;
    }
    const SeamSpace space(*monitors);
    std::vector<WindowInfo> found;
    std::ranges::stable_partition(now->windows,
                                  [](const auto& window) { return !window.isOnScreen; });
    for (const auto& window : now->windows | std::views::reverse) {
        if (!hasItsPlace(window)) continue;
        auto info = infoOf(window, space);
        if (const auto owner = owners.find(window.window.number); owner != owners.end()) {
            info.ownerPID = owner->second->processIdentifier;
            info.ownerName = owner->second->localizedName;
        }
        found.push_back(std::move(info));
    }
    return found;
}

} // namespace corvane
