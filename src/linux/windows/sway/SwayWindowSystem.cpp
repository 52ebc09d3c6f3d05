#include "linux/windows/sway/SwayWindowSystem.h"

#include "linux/windows/Approach.h"
#include "linux/windows/WaylandSession.h"
#include "linux/windows/sway/WorkspaceNames.h"

#include <algorithm>
#include <cmath>
#include <thread>
#include <utility>

namespace corvane::sway {
namespace {

using std::chrono::steady_clock;

std::string criteria(const WindowRef& window) {
    return "[con_id=" + std::to_string(window.number) + "] ";
}

std::string placing(const WindowRef& window, const PixelRect& frame) {
    const auto pixels = [](double length) { return std::to_string(std::lround(length)) + " px "; };
    return criteria(window) + "resize set width " + pixels(frame.size.width) + "height " +
           pixels(frame.size.height) + ", move absolute position " + pixels(frame.origin.x) +
           pixels(frame.origin.y);
}

bool contains(const PixelRect& area, const PixelRect& frame) {
    const double x = frame.origin.x + frame.size.width / 2 - area.origin.x;
    const double y = frame.origin.y + frame.size.height / 2 - area.origin.y;
    return x >= 0 && y >= 0 && x < area.size.width && y < area.size.height;
}

} // namespace

SwayWindowSystem::SwayWindowSystem(std::unique_ptr<WindowSystem> xServer)
    : xServer_(std::move(xServer)) {}

/// The display is asked for its process only where the one that is known doesn't answer any more.
/// Nothing is done by another one than was looked at: its windows have the same numbers.
std::optional<std::string> SwayWindowSystem::ask(Question question, std::string_view words,
                                                 Deadline by) {
    if (compositor_) {
        if (auto answer = sway::ask(question, words, *compositor_, by)) return answer;
        if (question == Question::run) return std::nullopt;
    }
    const auto now = waylandCompositor();
    if (now == compositor_) return std::nullopt;
    compositor_ = now;
    return now ? sway::ask(question, words, *now, by) : std::nullopt;
}

bool SwayWindowSystem::isReady(Deadline by) {
    const std::lock_guard lock(mutex_);
    return ask(Question::version, "", by).has_value();
}

Abilities SwayWindowSystem::abilities(Deadline by) {
    const std::string desktop = "sway (Wayland)";
    if (!isReady(by))
        return {.desktop = desktop, .whatToDoFirst = "Sway doesn't answer at the moment."};
    const std::lock_guard lock(mutex_);
    return {
        .desktop = desktop,
        .placesWindows = true,
        .tellsProcesses = compositor_.value_or(0) > 0,
        .whatToDoFirst =
            "Tiled windows come back to their workspace and keep the place that sway gives them there."};
}

std::optional<Tree> SwayWindowSystem::tree(Deadline by) {
    const auto answer = ask(Question::tree, "", by);
    auto tree = answer ? readTree(*answer) : std::nullopt;
    if (!tree) return std::nullopt;
    const auto compositor = compositor_.value_or(0);
    std::vector<XClient> clients;
    for (auto& each : tree->windows) {
        if (compositor == 0) each.window.window.process = 0;
        if (each.xWindow) clients.push_back({&each.window, each.xWindow});
    }
    if (!checkXClients(clients, xServer_.get(), compositor, by)) return std::nullopt;
    return tree;
}

WindowAnswer SwayWindowSystem::look(const WindowRef& window, TreeWindow& now, Deadline by) {
    auto all = tree(by);
    if (!all) return WindowAnswer::unanswered;
    const auto found = std::ranges::find(all->windows, window,
                                         [](const TreeWindow& each) { return each.window.window; });
    if (found == all->windows.end()) return WindowAnswer::gone;
    now = std::move(*found);
    return WindowAnswer::done;
}

std::optional<WindowsNow> SwayWindowSystem::windows(Deadline by) {
    const std::lock_guard lock(mutex_);
    auto all = tree(by);
    if (!all) return std::nullopt;
    WindowsNow now{.windows = {}, .active = all->active, .session = {}, .connected = {}};
    for (auto& each : all->windows)
        now.windows.push_back(std::move(each.window));
    now.tellsProcesses = compositor_.value_or(0) > 0;
    if (now.tellsProcesses) now.session.insert(*compositor_);
    return now;
}

std::optional<ManagedWindow> SwayWindowSystem::window(const WindowRef& window, Deadline by) {
    const std::lock_guard lock(mutex_);
    TreeWindow now;
    if (look(window, now, by) != WindowAnswer::done) return std::nullopt;
    return std::move(now.window);
}

std::optional<std::vector<Monitor>> SwayWindowSystem::monitors(Deadline by) {
    const std::lock_guard lock(mutex_);
    const auto outputs = ask(Question::outputs, "", by);
    const auto workspaces = outputs ? ask(Question::workspaces, "", by) : std::nullopt;
    auto monitors = workspaces ? readMonitors(*outputs, *workspaces) : std::nullopt;
    if (monitors) putPrimaryFirst(*monitors, {});
    return monitors;
}

WindowAnswer SwayWindowSystem::place(const WindowRef& window, const FrameWish& wish, Deadline by) {
    if (!isPossible(wish)) return WindowAnswer::refused;
    const std::lock_guard lock(mutex_);
    TreeWindow start;
    const auto answer = look(window, start, by);
    if (answer != WindowAnswer::done) return answer;
    const auto& now = start.window;
    if (wishedFrame(wish, now.frame) == now.frame) return WindowAnswer::done;
    if (now.isFullscreen || now.isTiled || now.isMinimized) return WindowAnswer::refused;
    return moveTo(start, wish, by);
}

WindowAnswer SwayWindowSystem::moveTo(const TreeWindow& start, const FrameWish& wish, Deadline by) {
    const auto& window = start.window.window;
    TreeWindow now = start;
    PixelRect last;
    std::string words;
    const auto placed = approach(
        wish,
        {.ask =
             [&](const PixelRect& aim) {
                 auto next = placing(window, aim);
                 if (next == words) return ApproachSteps::Asked::nothingNew;
                 words = std::move(next);
                 last = aim;
                 return ask(Question::run, words, by) ? ApproachSteps::Asked::answered
                                                      : ApproachSteps::Asked::unanswered;
             },
         .look = [&] { return words.empty() ? start.window.frame : frameAtRest(now, last, by); },
         .isLate = [&] { return steady_clock::now() >= by; }});
    // Sway shows what it moves: a window of a hidden workspace is on another one then.
    const auto& workspace = start.window.workspace;
    if (placed == WindowAnswer::done && now.window.workspace != workspace &&
        contains(start.workspaceArea, now.window.frame)) {
        if (const auto back = movingToWorkspace(criteria(window), workspace))
            ask(Question::run, *back, by);
    }
    return placed;
}

/// Nothing tells that a frame changed. One that stays another than the aim for a while stands.
std::optional<PixelRect> SwayWindowSystem::frameAtRest(TreeWindow& now, const PixelRect& aim,
                                                       Deadline by) {
    constexpr auto quiet = std::chrono::milliseconds(60);
    constexpr auto pause = std::chrono::milliseconds(1);
    std::optional<PixelRect> last;
    auto until = steady_clock::now() + quiet;
    for (;;) {
        const auto answer = look(WindowRef(now.window.window), now, by);
        if (answer == WindowAnswer::gone) return std::nullopt;
        if (answer != WindowAnswer::done) return last.value_or(PixelRect());
        const auto& frame = now.window.frame;
        if (last != frame) until = steady_clock::now() + quiet;
        last = frame;
        if (frame == aim || steady_clock::now() >= std::min(until, by)) return last;
        std::this_thread::sleep_for(pause);
    }
}

WindowAnswer SwayWindowSystem::setFullscreen(const WindowRef& window, bool on, Deadline by) {
    const std::lock_guard lock(mutex_);
    TreeWindow now;
    auto answer = look(window, now, by);
    if (answer != WindowAnswer::done || now.window.isFullscreen == on) return answer;
    if (now.window.isMinimized) return WindowAnswer::refused;
    ask(Question::run, criteria(window) + (on ? "fullscreen enable" : "fullscreen disable"), by);
    answer = look(window, now, by);
    if (on && answer == WindowAnswer::done) keepFilling(now, by);
    const bool isMissed = answer == WindowAnswer::done && now.window.isFullscreen != on;
    return isMissed ? WindowAnswer::refused : answer;
}

/// A picture in the size from before makes the window as small again, though it fills the screen:
/// programs draw late.
void SwayWindowSystem::keepFilling(const TreeWindow& filling, Deadline by) {
    constexpr auto late = std::chrono::milliseconds(150);
    constexpr auto pause = std::chrono::milliseconds(5);
    const auto& window = filling.window.window;
    const auto until = std::min(steady_clock::now() + late, by);
    TreeWindow now = filling;
    std::optional<PixelRect> answered;
    do {
        const auto &frame = now.window.frame, &area = now.workspaceArea;
        const bool isShort =
            frame.size.width < area.size.width || frame.size.height < area.size.height;
        if (isShort && now.window.isFullscreen && frame != answered)
            ask(Question::run, criteria(window) + "fullscreen disable, fullscreen enable", by);
        answered = frame;
        std::this_thread::sleep_for(pause);
    } while (look(window, now, until) == WindowAnswer::done && steady_clock::now() < until);
}

WindowAnswer SwayWindowSystem::setMaximized(const WindowRef& window, bool, Deadline by) {
    const std::lock_guard lock(mutex_);
    TreeWindow now;
    const auto answer = look(window, now, by);
    return answer == WindowAnswer::done ? WindowAnswer::refused : answer;
}

WindowAnswer SwayWindowSystem::setTilingWorkspace(const WindowRef& window,
                                                  const std::string& workspace, Deadline by) {
    const std::lock_guard lock(mutex_);
    TreeWindow now;
    auto answer = look(window, now, by);
    if (answer != WindowAnswer::done) return answer;
    if (!now.window.isTiled) return WindowAnswer::refused;
    if (now.window.workspace == workspace) return WindowAnswer::done;
    if (now.window.isFullscreen) return WindowAnswer::refused;
    const auto words = movingToWorkspace(criteria(window), workspace);
    if (!words) return WindowAnswer::refused;
    if (!ask(Question::run, *words, by)) return WindowAnswer::unanswered;
    answer = look(window, now, by);
    const bool isMissed = answer == WindowAnswer::done && now.window.workspace != workspace;
    return isMissed ? WindowAnswer::refused : answer;
}

WindowAnswer SwayWindowSystem::activate(const WindowRef& window, Deadline by) {
    const std::lock_guard lock(mutex_);
    TreeWindow now;
    const auto answer = look(window, now, by);
    if (answer != WindowAnswer::done) return answer;
    const auto done = ask(Question::run, criteria(window) + "focus", by);
    if (!done) return WindowAnswer::unanswered;
    return readSuccess(*done) ? WindowAnswer::done : WindowAnswer::refused;
}

WindowAnswer SwayWindowSystem::askToClose(std::span<const WindowRef> windows, Deadline by) {
    const std::lock_guard lock(mutex_);
    const auto all = tree(by);
    if (!all) return WindowAnswer::unanswered;
    auto answer = WindowAnswer::gone;
    std::string words;
    for (const auto& window : windows) {
        const auto found = std::ranges::find(
            all->windows, window, [](const TreeWindow& each) { return each.window.window; });
        if (found == all->windows.end()) continue;
        const bool canBeAsked = found->window.canBeAskedToClose;
        if (canBeAsked) words += criteria(window) + "kill; ";
        if (!canBeAsked) answer = WindowAnswer::refused;
        if (answer == WindowAnswer::gone) answer = WindowAnswer::done;
    }
    if (words.empty()) return answer;
    return ask(Question::run, words, by) ? answer : WindowAnswer::unanswered;
}

} // namespace corvane::sway
