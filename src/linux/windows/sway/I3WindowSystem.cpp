#include "linux/windows/sway/I3WindowSystem.h"

#include "linux/system/ProcessFacts.h"
#include "linux/windows/sway/SwaySocket.h"
#include "linux/windows/sway/SwayTree.h"

#include <algorithm>

namespace corvane::sway {
namespace {

std::optional<std::string> askManager(const std::set<pid_t>& session, Question question,
                                      Deadline by) {
    for (const auto process : session)
        if (auto answer = ask(question, "", process, by)) return answer;
    return std::nullopt;
}

} // namespace

bool I3WindowSystem::isHere(Deadline by) {
    const auto now = xServer_.windows(by);
    const auto isCalledSo = [](pid_t process) {
        const auto facts = processFacts(process);
        return facts && facts->commandName == "i3";
    };
    return now && (std::ranges::any_of(now->session, isCalledSo) ||
                   askManager(now->session, Question::version, by));
}

Abilities I3WindowSystem::abilities(Deadline by) {
    auto can = xServer_.abilities(by);
    if (can.placesWindows) can.whatToDoFirst = "Tiled windows keep the place that i3 gives them.";
    return can;
}

std::optional<WindowsNow> I3WindowSystem::windows(Deadline by) {
    auto now = xServer_.windows(by);
    const auto answer = now ? askManager(now->session, Question::tree, by) : std::nullopt;
    const auto places = answer ? readPlaces(*answer) : std::nullopt;
    if (!places) return now;
    for (auto& window : now->windows) {
        // Later ones say so of what fills its place, so that clients draw no shadow.
        window.isMaximized = false;
        const auto place = places->find(window.window.number);
        if (place == places->end()) continue;
        window.isTiled = place->second == PlaceInTree::tiled;
        if (place->second != PlaceInTree::scratchpad) continue;
        window.isMinimized = true;
        window.isOnScreen = false;
    }
    return now;
}

std::optional<ManagedWindow> I3WindowSystem::window(const WindowRef& window, Deadline by) {
    const auto now = windows(by);
    if (!now) return std::nullopt;
    const auto found = std::ranges::find(now->windows, window, &ManagedWindow::window);
    return found == now->windows.end() ? std::nullopt : std::optional(*found);
}

WindowAnswer I3WindowSystem::place(const WindowRef& window, const FrameWish& wish, Deadline by) {
    const auto now = this->window(window, by);
    return now && (now->isTiled || now->isMinimized) ? WindowAnswer::refused
                                                     : xServer_.place(window, wish, by);
}

} // namespace corvane::sway
