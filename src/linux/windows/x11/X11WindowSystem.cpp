#include "linux/windows/x11/X11WindowSystem.h"

#include "linux/windows/Approach.h"
#include "linux/windows/x11/X11ClientWindows.h"
#include "linux/windows/x11/X11Launches.h"
#include "linux/windows/x11/X11WorkAreas.h"

#include <algorithm>
#include <utility>

namespace corvane::x11 {
namespace {

/// The window manager treats it as the user's own wish.
constexpr std::uint32_t asPager = 2;

void requestClosing(Server& server, xcb_window_t window, bool hasManager) {
    const auto& atoms = server.atoms();
    if (hasManager) {
        server.sendMessage(Server::Recipient::windowManager, window, atoms.netCloseWindow,
                           {XCB_CURRENT_TIME, asPager});
    } else {
        server.sendMessage(Server::Recipient::client, window, atoms.wmProtocols,
                           {atoms.wmDeleteWindow});
    }
}

/// Some window managers only mark a window of another desktop as wanted, so the desktop is shown
/// first, as a pager does it.
void requestActivation(Server& server, xcb_window_t window, Deadline deadline) {
    const auto& atoms = server.atoms();
    const auto its = server.requestProperty(window, atoms.netWmDesktop);
    const auto current = server.requestProperty(server.root(), atoms.netCurrentDesktop);
    const auto desktop = server.property(its, deadline).firstNumber();
    const auto shown = server.property(current, deadline).firstNumber();
    if (desktop && shown && desktop != everyDesktop && desktop != shown) {
        server.sendMessage(Server::Recipient::windowManager, server.root(), atoms.netCurrentDesktop,
                           {*desktop, XCB_CURRENT_TIME});
    }
    // A window manager maps an iconified window again on this, whatever it makes of the message.
    xcb_map_window(server.get(), window);
    server.sendMessage(Server::Recipient::windowManager, window, atoms.netActiveWindow,
                       {asPager, XCB_CURRENT_TIME});
    // Some give it the keyboard where it is, behind others.
    constexpr std::uint32_t above = XCB_STACK_MODE_ABOVE;
    xcb_configure_window(server.get(), window, XCB_CONFIG_WINDOW_STACK_MODE, &above);
}

} // namespace

std::optional<bool> X11WindowSystem::isXwayland(Deadline by) {
    const std::lock_guard lock(mutex_);
    return connection_.answer(by, [](Server& server) { return server.isXwayland(); });
}

bool X11WindowSystem::isReady(Deadline by) {
    const std::lock_guard lock(mutex_);
    const auto manager =
        connection_.answer(by, [&](Server& server) { return windowManager(server, by); });
    return manager.value_or(XCB_NONE) != XCB_NONE;
}

Abilities X11WindowSystem::abilities(Deadline by) {
    const std::lock_guard lock(mutex_);
    const auto told = connection_.answer(by, [&](Server& server) {
        Abilities can{.desktop = "X11", .whatToDoFirst = ""};
        const auto manager = windowManager(server, by);
        can.placesWindows = manager != XCB_NONE;
        can.tellsProcesses = can.placesWindows && server.tellsProcesses();
        if (!can.placesWindows) return can;
        const auto name = server.requestProperty(manager, server.atoms().netWmName);
        const auto text = server.property(name, by).text();
        if (!text.empty()) can.desktop = text + " (X11)";
        return can;
    });
    if (told && told->placesWindows) return *told;
    return {.desktop = "X11",
            .whatToDoFirst = "Start a window manager: without one, nothing places windows."};
}

std::optional<WindowsNow> X11WindowSystem::windows(Deadline by) {
    const std::lock_guard lock(mutex_);
    return connection_.answer(by, [&](Server& server) { return readWindows(server, by); });
}

std::optional<ManagedWindow> X11WindowSystem::window(const WindowRef& window, Deadline by) {
    const std::lock_guard lock(mutex_);
    const auto found =
        connection_.answer(by, [&](Server& server) { return readWindow(server, window, by); });
    return found.value_or(std::nullopt);
}

std::optional<std::vector<Monitor>> X11WindowSystem::monitors(Deadline by) {
    const std::lock_guard lock(mutex_);
    return connection_.answer(by, [&](Server& server) {
        const auto monitors = readMonitors(server, requestMonitors(server), by);
        const auto areas = workAreas(server, monitors, by);
        std::vector<Monitor> result;
        for (std::size_t i = 0; i < areas.size(); ++i)
            result.push_back({monitors.frames[i].rect(), areas[i].rect()});
        return result;
    });
}

WindowAnswer X11WindowSystem::place(const WindowRef& window, const FrameWish& wish, Deadline by) {
    return control(window, by, [&](X11WindowControl& control) {
        return isPossible(wish) ? control.place(wish) : WindowAnswer::refused;
    });
}

WindowAnswer X11WindowSystem::setFullscreen(const WindowRef& window, bool on, Deadline by) {
    return control(window, by,
                   [&](X11WindowControl& control) { return control.setFullscreen(on); });
}

WindowAnswer X11WindowSystem::setMaximized(const WindowRef& window, bool on, Deadline by) {
    return control(window, by, [&](X11WindowControl& control) { return control.setMaximized(on); });
}

WindowAnswer X11WindowSystem::control(const WindowRef& window, Deadline by, const Act& act) {
    const std::lock_guard lock(mutex_);
    // Asking first shows whether an old connection is broken.
    const auto isThere =
        connection_.answer(by, [&](Server& server) { return exists(server, window, by); });
    Server* const server = isThere ? connection_.server(by) : nullptr;
    if (!server) return WindowAnswer::unanswered;
    if (!*isThere) return WindowAnswer::gone;
    const auto answer = [&] {
        X11WindowControl control(*server, idOf(window), habits_, by);
        return act(control);
    }();
    return server->failed() ? WindowAnswer::unanswered : answer;
}

WindowAnswer X11WindowSystem::activate(const WindowRef& window, Deadline by) {
    const std::lock_guard lock(mutex_);
    const auto answer = connection_.answer(by, [&](Server& server) {
        if (!readWindow(server, window, by)) return WindowAnswer::gone;
        requestActivation(server, idOf(window), by);
        return server.finish(by) ? WindowAnswer::done : WindowAnswer::unanswered;
    });
    return answer.value_or(WindowAnswer::unanswered);
}

WindowAnswer X11WindowSystem::askToClose(std::span<const WindowRef> windows, Deadline by) {
    const std::lock_guard lock(mutex_);
    // Nothing is sent before all is known, so that a broken connection can be asked once more.
    const auto now = connection_.answer(by, [&](Server& server) {
        return std::pair(readWindows(server, by).windows, windowManager(server, by) != XCB_NONE);
    });
    Server* const server = now ? connection_.server(by) : nullptr;
    if (!server) return WindowAnswer::unanswered;
    const auto& [all, hasManager] = *now;
    auto answer = WindowAnswer::gone;
    for (const auto& window : windows) {
        const auto found = std::ranges::find(all, window, &ManagedWindow::window);
        if (found == all.end()) continue;
        if (found->canBeAskedToClose) requestClosing(*server, idOf(window), hasManager);
        if (!found->canBeAskedToClose) answer = WindowAnswer::refused;
        if (answer == WindowAnswer::gone) answer = WindowAnswer::done;
    }
    return server->finish(by) ? answer : WindowAnswer::unanswered;
}

std::string X11WindowSystem::beginLaunch(const Launch& launch, Deadline by) {
    const std::lock_guard lock(mutex_);
    const auto token = connection_.answer(
        by, [&](Server& server) { return x11::beginLaunch(server, launch, by); });
    return token.value_or("");
}

void X11WindowSystem::endLaunch(const std::string& token, Deadline by) {
    const std::lock_guard lock(mutex_);
    connection_.answer(by, [&](Server& server) {
        x11::endLaunch(server, token);
        return server.finish(by);
    });
}

} // namespace corvane::x11
