#include "linux/windows/toplevels/ToplevelWindowSystem.h"

#include "linux/system/ProcessFacts.h"
#include "linux/system/UnixSocket.h"
#include "linux/windows/toplevels/Protocol.h"

#include <algorithm>
#include <cstdlib>
#include <iterator>
#include <utility>

namespace corvane::toplevels {
namespace {

ManagedWindow described(const Toplevel& toplevel, const std::map<void*, Toplevel>& all) {
    ManagedWindow window{.window = {.number = toplevel.number},
                         .title = toplevel.title,
                         .hints = {.applicationId = toplevel.applicationId},
                         .isOnScreen = !toplevel.isMinimized,
                         .isMinimized = toplevel.isMinimized,
                         .isFullscreen = toplevel.isFullscreen,
                         .isMaximized = toplevel.isMaximized,
                         .canBeAskedToClose = toplevel.handle != nullptr};
    const auto owner = all.find(toplevel.owner);
    if (owner != all.end()) window.owner = owner->second.number;
    return window;
}

/// The displays of the compositor's X servers, each as servers are told it (":1"), empty where that
/// can't be told. It listens for them itself, and they come from nobody who could be followed. One
/// that listens itself may be anybody's. Looked for first, as any other word would start a server.
std::vector<std::string> displaysOf(pid_t compositor) {
    std::vector<std::string> displays;
    for (const auto& [server, words] : processesBeside(compositor, "Xwayland")) {
        const auto display = std::ranges::find_if(
            words, [](const std::string& word) { return word.starts_with(':'); });
        const auto name = display == words.end() ? std::string() : *display;
        const auto socket = connectedTo("/tmp/.X11-unix/X" + name.substr(name.empty() ? 0 : 1));
        const pid_t listener = socket ? processBehind(socket.get()) : 0;
        if (listener == compositor) displays.push_back(name);
        if (listener == 0 || listener == server) displays.emplace_back();
    }
    return displays;
}

std::string displayHere() {
    const char* const value = std::getenv("DISPLAY");
    const std::string display = value ? value : "";
    return display.substr(0, display.find('.'));
}

bool isCalled(const ManagedWindow& client, const std::string& id) {
    return client.hints.className == id || client.hints.instanceName == id;
}

bool areOfOneClass(const std::vector<ManagedWindow>& clients) {
    return std::ranges::all_of(clients, [&](const ManagedWindow& client) {
        return client.hints.className == clients.front().hints.className;
    });
}

} // namespace

ToplevelWindowSystem::ToplevelWindowSystem(std::unique_ptr<WindowSystem> xServer)
    : xServer_(std::move(xServer)) {}

bool ToplevelWindowSystem::isListed(Deadline by) {
    if (list_ && list_->renew(by)) return true;
    if (list_ && !list_->isBroken()) return false;
    list_.reset();
    list_ = ToplevelList::connect(lastNumber_, by);
    return list_ != nullptr;
}

bool ToplevelWindowSystem::isHere(Deadline by) {
    const std::lock_guard lock(mutex_);
    return isListed(by);
}

Abilities ToplevelWindowSystem::abilities(Deadline by) {
    const bool answers = isHere(by);
    const std::lock_guard lock(mutex_);
    const auto compositor = list_ ? processFacts(list_->compositor()) : std::nullopt;
    std::string what = "The desktop doesn't answer at the moment.";
    if (answers)
        what =
            list_->takesRequests()
                ? "This desktop tells which windows there are, but not where: Corvane can finish workspaces here, but not save or restore layouts, and Focus Mode asks nobody while a window names no installed application."
                : "This desktop only tells which windows there are: Corvane can start workspaces here, but not close windows, and not save or restore layouts.";
    return {.desktop = (compositor ? compositor->commandName : "unknown") + " (Wayland)",
            .whatToDoFirst = what};
}

/// False where the X server doesn't answer. Another session's isn't asked.
bool ToplevelWindowSystem::spareXClients(std::vector<ManagedWindow>& windows, Deadline by) {
    const pid_t compositor = list_->compositor();
    const auto displays = displaysOf(compositor);
    if (compositor > 0 && displays.empty()) return true;
    const auto here = displayHere();
    const bool isNamed = !here.empty() && std::ranges::count(displays, here) > 0;
    const auto now = isNamed && xServer_ ? xServer_->windows(by) : WindowsNow();
    if (!now) return false;
    const bool isOwn = displays.size() == 1 && now->session.contains(compositor);
    for (auto& window : windows) {
        std::vector<ManagedWindow> clients;
        std::ranges::copy_if(now->windows, std::back_inserter(clients), [&](const auto& client) {
            return isCalled(client, window.hints.applicationId);
        });
        window.canBeAskedToClose = window.canBeAskedToClose && isOwn &&
                                   std::ranges::all_of(clients, &ManagedWindow::canBeAskedToClose);
        // Its id may be what the program was started as, which names no application.
        if (!clients.empty() && areOfOneClass(clients))
            window.hints.className = clients.front().hints.className;
    }
    return true;
}

std::optional<WindowsNow> ToplevelWindowSystem::read(Deadline by) {
    if (!isListed(by)) return std::nullopt;
    WindowsNow now;
    now.isReady = now.tellsProcesses = false;
    for (const auto& [handle, toplevel] : list_->all()) {
        if (!toplevel.isTold) continue;
        now.windows.push_back(described(toplevel, list_->all()));
        if (toplevel.isActive) now.active = toplevel.number;
    }
    std::ranges::sort(now.windows, {}, [&](const ManagedWindow& window) {
        return std::pair(window.window.number == now.active, window.window.number);
    });
    if (now.windows.size() > mostWindows)
        now.windows.erase(now.windows.begin(), now.windows.end() - mostWindows);
    if (list_->compositor() > 0) now.session.insert(list_->compositor());
    return spareXClients(now.windows, by) ? std::optional(std::move(now)) : std::nullopt;
}

std::optional<WindowsNow> ToplevelWindowSystem::windows(Deadline by) {
    const std::lock_guard lock(mutex_);
    return read(by);
}

std::optional<ManagedWindow> ToplevelWindowSystem::window(const WindowRef& window, Deadline by) {
    const auto now = windows(by);
    if (!now) return std::nullopt;
    const auto found = std::ranges::find(now->windows, window, &ManagedWindow::window);
    return found == now->windows.end() ? std::nullopt : std::optional(*found);
}

const Toplevel* ToplevelWindowSystem::find(const WindowRef& window) const {
    const auto found = std::ranges::find_if(
        list_->all(), [&](const auto& each) { return WindowRef{each.second.number} == window; });
    return found == list_->all().end() ? nullptr : &found->second;
}

WindowAnswer ToplevelWindowSystem::place(const WindowRef& window, const FrameWish&, Deadline by) {
    const std::lock_guard lock(mutex_);
    if (!isListed(by)) return WindowAnswer::unanswered;
    return find(window) ? WindowAnswer::refused : WindowAnswer::gone;
}

WindowAnswer ToplevelWindowSystem::change(const WindowRef& window, bool Toplevel::* is, bool on,
                                          void (*request)(Handle*), Deadline by) {
    if (!isListed(by)) return WindowAnswer::unanswered;
    const auto* const toplevel = find(window);
    if (!toplevel) return WindowAnswer::gone;
    auto* const handle = toplevel->handle;
    if (!handle) return WindowAnswer::refused;
    const auto hasGone = [&] { return !list_->all().contains(handle); };
    const auto isThere = [&] { return hasGone() || list_->all().at(handle).*is == on; };
    if (isThere()) return WindowAnswer::done;
    request(handle);
    if (!list_->wait(isThere, by)) return WindowAnswer::unanswered;
    return hasGone() ? WindowAnswer::gone : WindowAnswer::done;
}

WindowAnswer ToplevelWindowSystem::setFullscreen(const WindowRef& window, bool on, Deadline by) {
    const std::lock_guard lock(mutex_);
    const auto request = [](Handle* handle) {
        zwlr_foreign_toplevel_handle_v1_set_fullscreen(handle, nullptr);
    };
    return change(window, &Toplevel::isFullscreen, on,
                  on ? +request : zwlr_foreign_toplevel_handle_v1_unset_fullscreen, by);
}

WindowAnswer ToplevelWindowSystem::setMaximized(const WindowRef& window, bool on, Deadline by) {
    const std::lock_guard lock(mutex_);
    return change(window, &Toplevel::isMaximized, on,
                  on ? zwlr_foreign_toplevel_handle_v1_set_maximized
                     : zwlr_foreign_toplevel_handle_v1_unset_maximized,
                  by);
}

WindowAnswer ToplevelWindowSystem::activate(const WindowRef& window, Deadline by) {
    const std::lock_guard lock(mutex_);
    if (!isListed(by)) return WindowAnswer::unanswered;
    const auto* const toplevel = find(window);
    if (!toplevel) return WindowAnswer::gone;
    auto* const handle = toplevel->handle;
    if (!handle || !list_->seat()) return WindowAnswer::refused;
    zwlr_foreign_toplevel_handle_v1_activate(handle, list_->seat());
    const bool isActive = list_->wait(
        [&] { return !list_->all().contains(handle) || list_->all().at(handle).isActive; }, by);
    return isActive ? WindowAnswer::done : WindowAnswer::unanswered;
}

WindowAnswer ToplevelWindowSystem::askToClose(std::span<const WindowRef> windows, Deadline by) {
    const std::lock_guard lock(mutex_);
    const auto now = read(by);
    if (!now) return WindowAnswer::unanswered;
    auto answer = WindowAnswer::gone;
    for (const auto& window : windows) {
        const auto listed = std::ranges::find(now->windows, window, &ManagedWindow::window);
        const auto* const toplevel = listed == now->windows.end() ? nullptr : find(window);
        if (!toplevel) continue;
        if (listed->canBeAskedToClose) zwlr_foreign_toplevel_handle_v1_close(toplevel->handle);
        if (!listed->canBeAskedToClose) answer = WindowAnswer::refused;
        if (answer == WindowAnswer::gone) answer = WindowAnswer::done;
    }
    return answer == WindowAnswer::gone || list_->renew(by) ? answer : WindowAnswer::unanswered;
}

} // namespace corvane::toplevels
