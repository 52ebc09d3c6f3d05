#include "linux/windows/AgentWindowSystem.h"

#include "linux/windows/Approach.h"
#include "linux/windows/WaylandSession.h"

#include <algorithm>
#include <cmath>
#include <set>
#include <thread>
#include <utility>

namespace corvane {
namespace {

using std::chrono::steady_clock;

/// Not every compositor has fractions of a pixel.
bool isNear(const PixelRect& one, const PixelRect& other) {
    const auto near = [](double a, double b) { return std::abs(a - b) < 1; };
    return near(one.origin.x, other.origin.x) && near(one.origin.y, other.origin.y) &&
           near(one.size.width, other.size.width) && near(one.size.height, other.size.height);
}

auto isCalled(const WindowRef& window) {
    return [&](const ToldWindow& each) { return each.window.window == window; };
}

} // namespace

AgentWindowSystem::AgentWindowSystem(std::unique_ptr<Agent> agent,
                                     std::unique_ptr<WindowSystem> xServer)
    : agent_(std::move(agent)), xServer_(std::move(xServer)) {}

bool AgentWindowSystem::isHere(Deadline by) {
    const std::lock_guard lock(mutex_);
    return agent_->compositor(by).has_value();
}

bool AgentWindowSystem::isReady(Deadline by) {
    return monitors(by).has_value();
}

Abilities AgentWindowSystem::abilities(Deadline by) {
    const bool isReady = this->isReady(by);
    const std::lock_guard lock(mutex_);
    if (!isReady) return {.desktop = agent_->desktop(), .whatToDoFirst = agent_->whatToDoFirst(by)};
    return {.desktop = agent_->desktop(),
            .placesWindows = true,
            .tellsProcesses = agent_->compositor(by).value_or(0) > 0,
            .whatToDoFirst = ""};
}

std::string AgentWindowSystem::switchOn(Deadline by) {
    const std::lock_guard lock(mutex_);
    return agent_->switchOn(by);
}

/// Numbers of windows that have gone are never given again.
void AgentWindowSystem::giveNumbers(Told& told) {
    for (auto& each : told.windows) {
        const auto [known, isNew] = numbers_.try_emplace(each.id, lastNumber_ + 1);
        if (isNew) ++lastNumber_;
        each.window.window.number = known->second;
    }
    for (auto& each : told.windows) {
        const auto owner = each.owner ? numbers_.find(*each.owner) : numbers_.end();
        if (owner != numbers_.end()) each.window.owner = owner->second;
    }
}

std::optional<Told> AgentWindowSystem::understood(const std::optional<std::string>& answer,
                                                  Deadline by) {
    auto told = answer ? readWindows(*answer) : std::nullopt;
    if (!told) return std::nullopt;
    const pid_t compositor = agent_->speaker();
    giveNumbers(*told);
    std::vector<XClient> clients;
    for (auto& each : told->windows) {
        if (compositor == 0) each.window.window.process = 0;
        if (each.isXClient) clients.push_back({&each.window, each.xNumber});
        if (each.mayBeMaximized) each.window.isMaximized = agent_->isMaximized(each.id, by);
    }
    if (!checkXClients(clients, xServer_.get(), compositor, by)) return std::nullopt;
    return told;
}

std::optional<Told> AgentWindowSystem::list(Deadline by) {
    auto told = understood(agent_->list(by), by);
    if (!told) return std::nullopt;
    std::set<std::uint64_t> there;
    for (const auto& each : told->windows)
        there.insert(each.window.window.number);
    std::erase_if(numbers_, [&](const auto& known) { return !there.contains(known.second); });
    return told;
}

WindowAnswer AgentWindowSystem::look(const WindowRef& window, ToldWindow& now, Deadline by) {
    const auto known = std::ranges::find_if(
        numbers_, [&](const auto& each) { return each.second == window.number; });
    auto told = known == numbers_.end() ? list(by) : understood(agent_->find(known->first, by), by);
    if (!told) return WindowAnswer::unanswered;
    const auto found = std::ranges::find_if(told->windows, isCalled(window));
    if (found == told->windows.end()) return WindowAnswer::gone;
    now = std::move(*found);
    return WindowAnswer::done;
}

WindowAnswer AgentWindowSystem::act(const Deed& deed, ToldWindow& now, Deadline by) {
    const auto answer = agent_->act(deed, by);
    auto told = answer ? readWindows(*answer) : std::nullopt;
    if (!told) return WindowAnswer::unanswered;
    if (told->windows.empty()) return WindowAnswer::gone;
    now = std::move(told->windows.front());
    return WindowAnswer::done;
}

std::optional<WindowsNow> AgentWindowSystem::windows(Deadline by) {
    const std::lock_guard lock(mutex_);
    auto told = list(by);
    if (!told) return std::nullopt;
    WindowsNow now;
    for (const auto at : told->stacking) {
        auto& each = told->windows[at];
        if (each.id == told->active) now.active = each.window.window.number;
        now.windows.push_back(std::move(each.window));
    }
    const pid_t compositor = agent_->speaker();
    now.tellsProcesses = compositor > 0;
    if (now.tellsProcesses) now.session.insert(compositor);
    return now;
}

std::optional<ManagedWindow> AgentWindowSystem::window(const WindowRef& window, Deadline by) {
    const std::lock_guard lock(mutex_);
    ToldWindow now;
    if (look(window, now, by) != WindowAnswer::done) return std::nullopt;
    return std::move(now.window);
}

std::optional<std::vector<Monitor>> AgentWindowSystem::monitors(Deadline by) {
    const std::lock_guard lock(mutex_);
    const auto answer = agent_->monitors(by);
    auto monitors = answer ? readMonitors(*answer) : std::nullopt;
    if (!monitors || monitors->size() < 2) return monitors;
    if (const auto origin = agent_->primaryOrigin(by)) putPrimaryFirst(*monitors, *origin);
    return monitors;
}

WindowAnswer AgentWindowSystem::place(const WindowRef& window, const FrameWish& wish, Deadline by) {
    if (!isPossible(wish)) return WindowAnswer::refused;
    const std::lock_guard lock(mutex_);
    ToldWindow now;
    const auto found = look(window, now, by);
    if (found != WindowAnswer::done) return found;
    const auto target = wishedFrame(wish, now.window.frame);
    if (target == now.window.frame) return WindowAnswer::done;
    if (now.window.isFullscreen) return WindowAnswer::refused;
    std::optional<PixelRect> last;
    auto answer = WindowAnswer::done;
    const auto seen = [&]() -> std::optional<PixelRect> {
        if (answer == WindowAnswer::gone) return std::nullopt;
        const auto& frame = now.window.frame;
        return last && isNear(frame, target) ? target : frame;
    };
    const auto ask = [&](const PixelRect& aim) {
        if (aim == last) return ApproachSteps::Asked::nothingNew;
        last = aim;
        const Deed deed{.kind = Deed::Kind::place, .windows = {now.id}, .frame = aim};
        const auto before = now.window.frame;
        answer = act(deed, now, by);
        // A client that hasn't moved at all is busy and may yet do it: any other wish would then be
        // one too many.
        const bool isSilent = answer == WindowAnswer::done && now.window.frame == before;
        return answer == WindowAnswer::unanswered || isSilent ? ApproachSteps::Asked::unanswered
                                                              : ApproachSteps::Asked::answered;
    };
    const auto [start, wasMaximized] = std::pair(now.window.frame, now.window.isMaximized);
    const auto result = approach(
        wish, {.ask = ask, .look = seen, .isLate = [&] { return steady_clock::now() >= by; }});
    // One that is as large as before has no limit there: it is busy, and draws later.
    const bool isBehind = now.window.frame.size == start.size;
    if (wasMaximized && (result == WindowAnswer::done || result == WindowAnswer::unanswered))
        keepPlaced(window, isBehind ? target : now.window.frame, by);
    return result;
}

/// A picture from when it was maximized makes the window as large again: programs draw late.
void AgentWindowSystem::keepPlaced(const WindowRef& window, const PixelRect& frame, Deadline by) {
    constexpr auto late = std::chrono::milliseconds(200);
    constexpr auto pause = std::chrono::milliseconds(20);
    const auto until = std::min(steady_clock::now() + late, by);
    ToldWindow now;
    while (steady_clock::now() < until) {
        std::this_thread::sleep_for(pause);
        if (look(window, now, until) != WindowAnswer::done) return;
        if (!isNear(now.window.frame, frame) && !now.window.isFullscreen)
            act({.kind = Deed::Kind::place, .windows = {now.id}, .frame = frame}, now, until);
    }
}

WindowAnswer AgentWindowSystem::setFullscreen(const WindowRef& window, bool on, Deadline by) {
    const std::lock_guard lock(mutex_);
    ToldWindow now;
    auto answer = look(window, now, by);
    if (answer != WindowAnswer::done || now.window.isFullscreen == on) return answer;
    answer = act({.kind = Deed::Kind::setFullscreen, .windows = {now.id}, .on = on}, now, by);
    const bool isMissed = answer == WindowAnswer::done && now.window.isFullscreen != on;
    return isMissed ? WindowAnswer::refused : answer;
}

WindowAnswer AgentWindowSystem::setMaximized(const WindowRef& window, bool on, Deadline by) {
    const std::lock_guard lock(mutex_);
    ToldWindow now;
    auto answer = look(window, now, by);
    if (answer != WindowAnswer::done || now.window.isMaximized == on) return answer;
    answer = act({.kind = Deed::Kind::setMaximized, .windows = {now.id}, .on = on}, now, by);
    // Not every agent tells.
    if (answer == WindowAnswer::done) answer = look(window, now, by);
    const bool isMissed = answer == WindowAnswer::done && now.window.isMaximized != on;
    return isMissed ? WindowAnswer::refused : answer;
}

WindowAnswer AgentWindowSystem::activate(const WindowRef& window, Deadline by) {
    const std::lock_guard lock(mutex_);
    ToldWindow now;
    const auto answer = look(window, now, by);
    if (answer != WindowAnswer::done) return answer;
    return act({.kind = Deed::Kind::activate, .windows = {now.id}}, now, by);
}

WindowAnswer AgentWindowSystem::askToClose(std::span<const WindowRef> windows, Deadline by) {
    const std::lock_guard lock(mutex_);
    const auto told = list(by);
    if (!told) return WindowAnswer::unanswered;
    auto answer = WindowAnswer::gone;
    Deed deed{.kind = Deed::Kind::close, .windows = {}};
    for (const auto& window : windows) {
        const auto found = std::ranges::find_if(told->windows, isCalled(window));
        if (found == told->windows.end()) continue;
        const bool canBeAsked = found->window.canBeAskedToClose;
        if (canBeAsked) deed.windows.push_back(found->id);
        if (!canBeAsked) answer = WindowAnswer::refused;
        if (answer == WindowAnswer::gone) answer = WindowAnswer::done;
    }
    if (deed.windows.empty()) return answer;
    const auto asked = agent_->act(deed, by);
    return asked && readWindows(*asked) ? answer : WindowAnswer::unanswered;
}

} // namespace corvane
