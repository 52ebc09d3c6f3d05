#include "linux/windows/sway/I3WindowSystem.h"

#include "linux/system/ProcessFacts.h"
#include "linux/windows/sway/SwaySocket.h"
#include "linux/windows/sway/SwayTree.h"
#include "linux/windows/sway/WorkspaceNames.h"

#include <algorithm>

namespace corvane::sway {
namespace {

std::optional<std::string> askManager(const std::set<pid_t>& session, Question question,
                                      std::string_view words, Deadline by) {
    for (const auto process : session)
        if (auto answer = ask(question, words, process, by)) return answer;
    return std::nullopt;
}

std::optional<ManagedWindow> oneOf(const std::optional<WindowsNow>& now, const WindowRef& window) {
    if (!now) return std::nullopt;
    const auto found = std::ranges::find(now->windows, window, &ManagedWindow::window);
    return found == now->windows.end() ? std::nullopt : std::optional(*found);
}

} // namespace

bool I3WindowSystem::isHere(Deadline by) {
    const auto now = xServer_.windows(by);
    const auto isCalledSo = [](pid_t process) {
        const auto facts = processFacts(process);
        return facts && facts->commandName == "i3";
    };
    return now && (std::ranges::any_of(now->session, isCalledSo) ||
                   askManager(now->session, Question::version, "", by));
}

Abilities I3WindowSystem::abilities(Deadline by) {
    auto can = xServer_.abilities(by);
    if (can.placesWindows)
        can.whatToDoFirst =
            "Tiled windows come back to their workspace and keep the place that i3 gives them there.";
    return can;
}

std::optional<WindowsNow> I3WindowSystem::windows(Deadline by) {
    auto now = xServer_.windows(by);
    const auto answer = now ? askManager(now->session, Question::tree, "", by) : std::nullopt;
    const auto places = answer ? readPlaces(*answer) : std::nullopt;
    if (!places) return now;
    for (auto& window : now->windows) {
        // Later ones say so of what fills its place, so that clients draw no shadow.
        window.isMaximized = false;
        const auto place = places->find(window.window.number);
        if (place == places->end()) continue;
        const auto& [arrangement, workspace] = place->second;
        window.isTiled = arrangement == Arrangement::tiled;
        window.workspace = workspace;
        if (arrangement != Arrangement::scratchpad) continue;
        window.isMinimized = true;
        window.isOnScreen = false;
    }
    return now;
}

std::optional<ManagedWindow> I3WindowSystem::window(const WindowRef& window, Deadline by) {
    return oneOf(windows(by), window);
}

WindowAnswer I3WindowSystem::place(const WindowRef& window, const FrameWish& wish, Deadline by) {
    const auto now = this->window(window, by);
    return now && (now->isTiled || now->isMinimized) ? WindowAnswer::refused
                                                     : xServer_.place(window, wish, by);
}

WindowAnswer I3WindowSystem::setTilingWorkspace(const WindowRef& window,
                                                const std::string& workspace, Deadline by) {
    const auto all = windows(by);
    const auto now = oneOf(all, window);
    if (!now) return all ? WindowAnswer::gone : WindowAnswer::unanswered;
    if (!now->isTiled) return WindowAnswer::refused;
    if (now->workspace == workspace) return WindowAnswer::done;
    if (now->isFullscreen) return WindowAnswer::refused;
    const auto words = movingToWorkspace("[id=" + std::to_string(window.number) + "] ", workspace);
    if (!words) return WindowAnswer::refused;
    if (!askManager(all->session, Question::run, *words, by)) return WindowAnswer::unanswered;
    const auto after = this->window(window, by);
    if (!after) return WindowAnswer::gone;
    return after->workspace == workspace ? WindowAnswer::done : WindowAnswer::refused;
}

} // namespace corvane::sway
