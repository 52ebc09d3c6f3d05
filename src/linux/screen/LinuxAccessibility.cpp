#include "linux/screen/LinuxAccessibility.h"

#include "linux/running/RunningApplications.h"
#include "linux/screen/SeamSpace.h"

#include <algorithm>
#include <ranges>
#include <thread>
#include <utility>

namespace corvane {
namespace {

WindowRef refOf(const AccessibilityWindow& window) {
    return {window.identifier, window.processIdentifier};
}

int codeOf(WindowAnswer answer) {
    switch (answer) {
    case WindowAnswer::done:
        return Accessibility::success;
    case WindowAnswer::gone:
        return Accessibility::invalidElement;
    case WindowAnswer::refused:
    case WindowAnswer::unanswered:
        break;
    }
    return Accessibility::cannotComplete;
}

std::vector<AccessibilityWindow> elementsOf(const ShownApplication& shown) {
    std::vector<AccessibilityWindow> onScreen;
    std::vector<AccessibilityWindow> others;
    for (const auto& window : shown.windows | std::views::reverse) {
        if (window.kind != WindowKind::ordinary) continue;
        auto& group = window.isOnScreen ? onScreen : others;
        group.push_back({window.window.process, window.window.number});
    }
    onScreen.insert(onScreen.end(), others.begin(), others.end());
    return onScreen;
}

} // namespace

bool LinuxAccessibility::isProcessTrusted() {
    return windows_.isReady(halfASecondFromNow()) || windows_.isReady(halfASecondFromNow());
}

DesktopFacts LinuxAccessibility::desktop() {
    const auto deadline = halfASecondFromNow();
    auto abilities = windows_.abilities(deadline);
    // A desktop that is busy once is asked once more.
    const bool tellsWindows = windows_.windows(deadline).has_value() ||
                              windows_.windows(halfASecondFromNow()).has_value();
    if (!tellsWindows && abilities.whatToDoFirst.empty())
        abilities.whatToDoFirst = "The desktop doesn't answer at the moment.";
    return {.name = abilities.desktop,
            .tellsWindows = tellsWindows,
            .placesWindows = abilities.placesWindows,
            .whatToDoFirst = abilities.whatToDoFirst};
}

std::optional<std::vector<AccessibilityWindow>>
LinuxAccessibility::windows(std::int32_t processIdentifier) {
    const auto shown = running_.shown();
    // What has no process that could be told here has no windows either.
    if (!shown || processIdentifier <= 0) return std::nullopt;
    for (const auto& each : *shown) {
        if (each.application.processIdentifier == processIdentifier) return elementsOf(each);
    }
    // Listed as it was launched, it is another process by the time that it shows a window.
    for (const auto& each : *shown) {
        if (each.launchedProcess == processIdentifier) return elementsOf(each);
    }
    return std::vector<AccessibilityWindow>();
}

std::optional<Rect> LinuxAccessibility::frame(const AccessibilityWindow& window) {
    const auto deadline = halfASecondFromNow();
    const auto monitors = windows_.monitors(deadline);
    const auto found = monitors ? windows_.window(refOf(window), deadline) : std::nullopt;
    if (!found) return std::nullopt;
    return SeamSpace(*monitors).toSeam(found->frame);
}

std::optional<Point> LinuxAccessibility::position(const AccessibilityWindow& window) {
    const auto found = frame(window);
    return found ? std::optional(Point{found->x, found->y}) : std::nullopt;
}

std::optional<Size> LinuxAccessibility::size(const AccessibilityWindow& window) {
    const auto found = frame(window);
    return found ? std::optional(Size{found->width, found->height}) : std::nullopt;
}

std::optional<bool> LinuxAccessibility::isFullscreen(const AccessibilityWindow& window) {
    const auto found = windows_.window(refOf(window), halfASecondFromNow());
    return found ? std::optional(found->isFullscreen) : std::nullopt;
}

WindowAnswer LinuxAccessibility::place(const WindowRef& window, const Rect& frame) {
    auto monitors = windows_.monitors(halfASecondFromNow());
    if (!monitors) monitors = windows_.monitors(halfASecondFromNow());
    if (!monitors) return WindowAnswer::unanswered;
    const PixelRect target{SeamSpace(*monitors).fromSeam({frame.x, frame.y}),
                           {frame.width, frame.height}};
    const auto fills = [&](const Monitor& monitor) { return monitor.workArea == target; };
    if (std::ranges::any_of(*monitors, fills)) {
        const auto moved = put(window, {.origin = target.origin});
        if (moved != WindowAnswer::done) return moved;
        const auto filled = fill(window, target, halfASecondFromNow());
        if (filled != WindowAnswer::refused) return filled;
    }
    return put(window, {target.origin, target.size});
}

/// A system that was busy is asked once more.
WindowAnswer LinuxAccessibility::put(const WindowRef& window, const FrameWish& wish) {
    const auto answer = windows_.place(window, wish, halfASecondFromNow());
    return answer == WindowAnswer::unanswered ? windows_.place(window, wish, halfASecondFromNow())
                                              : answer;
}

/// On the monitor that the window is on already, by its position. A program whose window is covered
/// may follow only once it is seen, and stays asked to.
WindowAnswer LinuxAccessibility::fill(const WindowRef& window, const PixelRect& area, Deadline by) {
    const auto before = windows_.window(window, by);
    if (!before || before->isFullscreen || before->isTiled) return WindowAnswer::refused;
    if (windows_.setMaximized(window, true, by) != WindowAnswer::done) return WindowAnswer::refused;
    // What a client draws around itself goes late.
    constexpr auto pause = std::chrono::milliseconds(10);
    for (;;) {
        const auto after = windows_.window(window, by);
        if (!after) return WindowAnswer::refused;
        if (after->frame == area) return WindowAnswer::done;
        if (std::chrono::steady_clock::now() + pause >= by)
            return after->frame == before->frame ? WindowAnswer::unanswered : WindowAnswer::refused;
        std::this_thread::sleep_for(pause);
    }
}

FrameCodes LinuxAccessibility::setFrame(const AccessibilityWindow& window, const Rect& frame) {
    const auto answer = place(refOf(window), frame);
    return {codeOf(answer), codeOf(answer)};
}

int LinuxAccessibility::setFullscreen(const AccessibilityWindow& window, bool fullscreen) {
    const auto answer = windows_.setFullscreen(refOf(window), fullscreen, halfASecondFromNow());
    unanswered_.reset();
    if (fullscreen && answer == WindowAnswer::unanswered) unanswered_ = window;
    return codeOf(answer);
}

int LinuxAccessibility::setTilingWorkspace(const AccessibilityWindow& window,
                                           const std::string& name) {
    const auto set = [&] {
        return windows_.setTilingWorkspace(refOf(window), name, halfASecondFromNow());
    };
    const auto answer = set();
    return codeOf(answer == WindowAnswer::unanswered ? set() : answer);
}

int LinuxAccessibility::toggleFullscreen(const AccessibilityWindow& window) {
    const bool isFullscreen = this->isFullscreen(window).value_or(false);
    // Whoever toggles because there was no answer would undo what came late.
    if (isFullscreen && std::exchange(unanswered_, std::nullopt) == window) return success;
    return setFullscreen(window, !isFullscreen);
}

int LinuxAccessibility::zoom(const AccessibilityWindow& window) {
    const auto deadline = halfASecondFromNow();
    const auto before = windows_.window(refOf(window), deadline);
    const int result = toggleFullscreen(window);
    if (result != cannotComplete || !before || before->isFullscreen) return result;
    return codeOf(windows_.setMaximized(refOf(window), !before->isMaximized, halfASecondFromNow()));
}

} // namespace corvane
