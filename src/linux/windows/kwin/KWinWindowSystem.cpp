#include "linux/windows/kwin/KWinWindowSystem.h"

#include "linux/windows/Approach.h"
#include "linux/windows/WaylandSession.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <utility>

namespace corvane::kwin {
namespace {

using std::chrono::steady_clock;

/// Windows are asked for by identifier, in the words of windows.js.
std::string quoted(const Uuid& id) {
    return '"' + kwinText(id) + '"';
}

std::string written(double number) {
    std::array<char, 32> letters;
    const auto end = std::to_chars(letters.data(), letters.data() + letters.size(), number).ptr;
    return {letters.data(), end};
}

std::string placing(const Uuid& id, const PixelRect& frame) {
    std::string words = "place(" + quoted(id);
    for (const double number :
         {frame.origin.x, frame.origin.y, frame.size.width, frame.size.height})
        words += ", " + written(number);
    return words + ')';
}

/// Plasma 5.27 has no fractions of a pixel in most places.
bool isNear(const PixelRect& one, const PixelRect& other) {
    const auto near = [](double a, double b) { return std::abs(a - b) < 1; };
    return near(one.origin.x, other.origin.x) && near(one.origin.y, other.origin.y) &&
           near(one.size.width, other.size.width) && near(one.size.height, other.size.height);
}

auto isCalled(const WindowRef& window) {
    return [&](const ToldWindow& each) { return each.window.window == window; };
}

} // namespace

KWinWindowSystem::KWinWindowSystem(std::unique_ptr<WindowSystem> xServer)
    : xServer_(std::move(xServer)) {}

bool KWinWindowSystem::isReady(Deadline by) {
    const std::lock_guard lock(mutex_);
    return scripting_.ask("monitors()", by).has_value();
}

Abilities KWinWindowSystem::abilities(Deadline by) {
    if (!isReady(by)) return {.whatToDoFirst = "KWin doesn't answer at the moment."};
    const std::lock_guard lock(mutex_);
    return {.placesWindows = true,
            .tellsProcesses = scripting_.compositor(by).value_or(0) > 0,
            .whatToDoFirst = ""};
}

/// Numbers of windows that have gone are never given again.
void KWinWindowSystem::giveNumbers(Told& told) {
    std::map<Uuid, std::uint64_t> now;
    for (auto& each : told.windows) {
        const auto known = numbers_.find(each.id);
        const auto number = known == numbers_.end() ? ++lastNumber_ : known->second;
        now.emplace(each.id, number);
        each.window.window.number = number;
    }
    for (auto& each : told.windows) {
        const auto owner = each.owner ? now.find(*each.owner) : now.end();
        if (owner != now.end()) each.window.owner = owner->second;
    }
    numbers_ = std::move(now);
}

std::optional<Told> KWinWindowSystem::list(Deadline by) {
    const auto answer = scripting_.ask("list()", by);
    auto told = answer ? readWindows(*answer) : std::nullopt;
    const auto compositor = told ? scripting_.compositor(by) : std::nullopt;
    if (!compositor) return std::nullopt;
    giveNumbers(*told);
    std::vector<XClient> clients;
    for (auto& each : told->windows) {
        if (*compositor == 0) each.window.window.process = 0;
        if (each.isXClient) clients.push_back({&each.window, each.xNumber});
        if (each.mayBeMaximized)
            each.window.isMaximized = scripting_.isMaximized(kwinText(each.id), by);
    }
    if (!checkXClients(clients, xServer_.get(), *compositor, by)) return std::nullopt;
    return told;
}

WindowAnswer KWinWindowSystem::look(const WindowRef& window, ToldWindow& now, Deadline by) {
    auto told = list(by);
    if (!told) return WindowAnswer::unanswered;
    const auto found = std::ranges::find_if(told->windows, isCalled(window));
    if (found == told->windows.end()) return WindowAnswer::gone;
    now = std::move(*found);
    return WindowAnswer::done;
}

WindowAnswer KWinWindowSystem::ask(const std::string& question, ToldWindow& now, Deadline by) {
    const auto answer = scripting_.ask(question, by);
    auto told = answer ? readWindows(*answer) : std::nullopt;
    if (!told) return WindowAnswer::unanswered;
    if (told->windows.empty()) return WindowAnswer::gone;
    now = std::move(told->windows.front());
    return WindowAnswer::done;
}

std::optional<WindowsNow> KWinWindowSystem::windows(Deadline by) {
    const std::lock_guard lock(mutex_);
    auto told = list(by);
    if (!told) return std::nullopt;
    WindowsNow now;
    for (const auto at : told->stacking) {
        auto& each = told->windows[at];
        if (each.id == told->active) now.active = each.window.window.number;
        now.windows.push_back(std::move(each.window));
    }
    if (const auto compositor = scripting_.compositor(by).value_or(0))
        now.session.insert(compositor);
    return now;
}

std::optional<ManagedWindow> KWinWindowSystem::window(const WindowRef& window, Deadline by) {
    const std::lock_guard lock(mutex_);
    ToldWindow now;
    if (look(window, now, by) != WindowAnswer::done) return std::nullopt;
    return std::move(now.window);
}

std::optional<std::vector<Monitor>> KWinWindowSystem::monitors(Deadline by) {
    const std::lock_guard lock(mutex_);
    const auto answer = scripting_.ask("monitors()", by);
    auto monitors = answer ? readMonitors(*answer) : std::nullopt;
    if (monitors) putPrimaryFirst(*monitors);
    return monitors;
}

WindowAnswer KWinWindowSystem::place(const WindowRef& window, const FrameWish& wish, Deadline by) {
    if (!isPossible(wish)) return WindowAnswer::refused;
    const std::lock_guard lock(mutex_);
    ToldWindow now;
    const auto found = look(window, now, by);
    if (found != WindowAnswer::done) return found;
    const auto target = wishedFrame(wish, now.window.frame);
    if (target == now.window.frame) return WindowAnswer::done;
    if (now.window.isFullscreen) return WindowAnswer::refused;
    std::string words;
    auto answer = WindowAnswer::done;
    const auto look = [&]() -> std::optional<PixelRect> {
        if (answer == WindowAnswer::gone) return std::nullopt;
        const auto& frame = now.window.frame;
        return !words.empty() && isNear(frame, target) ? target : frame;
    };
    const auto ask = [&](const PixelRect& aim) {
        auto next = placing(now.id, aim);
        if (next == words) return ApproachSteps::Asked::nothingNew;
        words = std::move(next);
        answer = this->ask(words, now, by);
        return answer == WindowAnswer::unanswered ? ApproachSteps::Asked::unanswered
                                                  : ApproachSteps::Asked::answered;
    };
    return approach(
        wish, {.ask = ask, .look = look, .isLate = [&] { return steady_clock::now() >= by; }});
}

WindowAnswer KWinWindowSystem::setFullscreen(const WindowRef& window, bool on, Deadline by) {
    const std::lock_guard lock(mutex_);
    ToldWindow now;
    auto answer = look(window, now, by);
    if (answer != WindowAnswer::done || now.window.isFullscreen == on) return answer;
    answer = ask("setFullscreen(" + quoted(now.id) + (on ? ", true)" : ", false)"), now, by);
    const bool isMissed = answer == WindowAnswer::done && now.window.isFullscreen != on;
    return isMissed ? WindowAnswer::refused : answer;
}

WindowAnswer KWinWindowSystem::setMaximized(const WindowRef& window, bool on, Deadline by) {
    const std::lock_guard lock(mutex_);
    ToldWindow now;
    auto answer = look(window, now, by);
    if (answer != WindowAnswer::done || now.window.isMaximized == on) return answer;
    answer = ask("setMaximized(" + quoted(now.id) + (on ? ", true)" : ", false)"), now, by);
    if (answer == WindowAnswer::done) answer = look(window, now, by);
    const bool isMissed = answer == WindowAnswer::done && now.window.isMaximized != on;
    return isMissed ? WindowAnswer::refused : answer;
}

WindowAnswer KWinWindowSystem::activate(const WindowRef& window, Deadline by) {
    const std::lock_guard lock(mutex_);
    ToldWindow now;
    const auto answer = look(window, now, by);
    return answer == WindowAnswer::done ? ask("activate(" + quoted(now.id) + ")", now, by) : answer;
}

WindowAnswer KWinWindowSystem::askToClose(std::span<const WindowRef> windows, Deadline by) {
    const std::lock_guard lock(mutex_);
    const auto told = list(by);
    if (!told) return WindowAnswer::unanswered;
    auto answer = WindowAnswer::gone;
    std::string ids;
    for (const auto& window : windows) {
        const auto found = std::ranges::find_if(told->windows, isCalled(window));
        if (found == told->windows.end()) continue;
        const bool canBeAsked = found->window.canBeAskedToClose;
        if (canBeAsked) ids += quoted(found->id) + ", ";
        if (!canBeAsked) answer = WindowAnswer::refused;
        if (answer == WindowAnswer::gone) answer = WindowAnswer::done;
    }
    if (ids.empty()) return answer;
    return scripting_.ask("close([" + ids + "])", by) ? answer : WindowAnswer::unanswered;
}

} // namespace corvane::kwin
