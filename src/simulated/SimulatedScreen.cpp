#include "simulated/SimulatedScreen.h"

#include "foundation/Text.h"
#include "simulated/SimulatedQueue.h"

#include <algorithm>

namespace corvane {

namespace {

AccessibilityWindow elementOf(const SimulatedWindow& window) {
    return {window.info.ownerPID.value_or(0),
            static_cast<std::uint64_t>(window.info.number.value_or(0))};
}

std::string pair(double a, double b) {
    return text::number(a) + "," + text::number(b);
}

} // namespace

WindowInfo windowInfo(std::int32_t ownerPID, std::int64_t number, std::string ownerName,
                      const Rect& frame) {
    return {.bounds = WindowBounds{frame.x, frame.y, frame.width, frame.height},
            .ownerPID = ownerPID,
            .ownerName = std::move(ownerName),
            .layer = 0,
            .name = "Window " + std::to_string(number),
            .number = number};
}

bool SimulatedScreen::hasAppeared(const SimulatedWindow& window) const {
    return clock_.now().seconds - SimulatedQueue::start.seconds >= window.appearsAt;
}

std::optional<Display> SimulatedScreen::mainScreen() const {
    return mainDisplay < displays.size() ? std::optional(displays[mainDisplay]) : std::nullopt;
}

std::optional<std::vector<WindowInfo>> SimulatedScreen::onScreenWindows() {
    if (!windowListAnswers) return std::nullopt;
    std::vector<WindowInfo> list;
    for (const auto& window : stack) {
        if (window.isOnScreen && hasAppeared(window)) list.push_back(window.info);
    }
    return list;
}

std::optional<std::vector<AccessibilityWindow>>
SimulatedScreen::windows(std::int32_t processIdentifier) {
    if (unanswering.contains(processIdentifier)) return std::nullopt;
    std::vector<AccessibilityWindow> elements;
    for (const auto& window : stack) {
        const bool belongs = window.isAccessible && window.info.ownerPID == processIdentifier;
        if (belongs && hasAppeared(window)) elements.push_back(elementOf(window));
    }
    return elements;
}

SimulatedWindow* SimulatedScreen::find(const AccessibilityWindow& window) {
    const auto found = std::ranges::find_if(stack, [&](const SimulatedWindow& candidate) {
        return candidate.isAccessible && elementOf(candidate) == window;
    });
    return found == stack.end() ? nullptr : &*found;
}

SimulatedWindow* SimulatedScreen::readable(const AccessibilityWindow& window,
                                           std::string_view attribute) {
    auto* found = find(window);
    return found && !found->refusals.contains(attribute) ? found : nullptr;
}

std::optional<Point> SimulatedScreen::position(const AccessibilityWindow& window) {
    const auto* found = readable(window, "AXPosition");
    if (!found || !found->info.bounds) return std::nullopt;
    return Point{found->info.bounds->x.value_or(0), found->info.bounds->y.value_or(0)};
}

std::optional<Size> SimulatedScreen::size(const AccessibilityWindow& window) {
    const auto* found = readable(window, "AXSize");
    if (!found || !found->info.bounds) return std::nullopt;
    return Size{found->info.bounds->width.value_or(0), found->info.bounds->height.value_or(0)};
}

std::optional<bool> SimulatedScreen::isFullscreen(const AccessibilityWindow& window) {
    const auto* found = readable(window, "AXFullScreen");
    return found ? std::optional(found->isFullscreen) : std::nullopt;
}

template <typename Change>
int SimulatedScreen::set(const AccessibilityWindow& window, std::string_view attribute,
                         const std::string& value, Change change) {
    log_.push_back(std::string(attribute) + " " + std::to_string(window.processIdentifier) + "/" +
                   std::to_string(window.identifier) + " " + value);
    auto* found = find(window);
    if (!found) return invalidElement;
    const auto refusal = found->refusals.find(attribute);
    if (refusal != found->refusals.end()) return refusal->second;
    if (!found->info.bounds) found->info.bounds.emplace();
    change(*found);
    return success;
}

FrameCodes SimulatedScreen::setFrame(const AccessibilityWindow& window, const Rect& frame) {
    FrameCodes codes;
    codes.position = set(window, "AXPosition", pair(frame.x, frame.y), [&](auto& moved) {
        moved.info.bounds->x = frame.x;
        moved.info.bounds->y = frame.y;
    });
    codes.size = set(window, "AXSize", pair(frame.width, frame.height), [&](auto& sized) {
        sized.info.bounds->width = frame.width;
        sized.info.bounds->height = frame.height;
    });
    return codes;
}

int SimulatedScreen::setFullscreen(const AccessibilityWindow& window, bool fullscreen) {
    return set(window, "AXFullScreen", fullscreen ? "true" : "false", [&](SimulatedWindow& shown) {
        shown.isFullscreen = fullscreen;
        if (!fullscreen || displays.empty()) return;
        const auto& frame = displays.front().frame;
        shown.info.bounds = WindowBounds{frame.x, frame.y, frame.width, frame.height};
    });
}

int SimulatedScreen::setTilingWorkspace(const AccessibilityWindow& window,
                                        const std::string& name) {
    const auto* found = find(window);
    if (found && !found->info.tilingWorkspace) return cannotComplete;
    return set(window, "Workspace", name,
               [&](SimulatedWindow& tiled) { tiled.info.tilingWorkspace = name; });
}

} // namespace corvane
