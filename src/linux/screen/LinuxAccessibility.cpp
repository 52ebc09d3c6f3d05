#include "linux/screen/LinuxAccessibility.h"

#include "linux/windows/x11/X11ClientWindows.h"
#include "linux/windows/x11/X11Monitors.h"
#include "linux/windows/x11/X11WindowKind.h"

#include <algorithm>
#include <cmath>
#include <ranges>
#include <utility>

namespace corvane {
namespace {

using x11::Server;

xcb_window_t idOf(const AccessibilityWindow& window) {
    return static_cast<xcb_window_t>(window.identifier);
}

/// The protocol has 16 bits for each coordinate.
int toPixels(double value, int least) {
    constexpr double most = 0x7FFF;
    return static_cast<int>(std::lround(std::clamp(value, double(least), most)));
}

bool areFinite(double a, double b) {
    return std::isfinite(a) && std::isfinite(b);
}

/// The window that a window manager names itself by is its own witness; one that has gone leaves
/// only its name on the root window.
bool hasWindowManager(Server& server, x11::Deadline deadline) {
    const auto check = server.atoms().netSupportingWmCheck;
    const auto named = [&](xcb_window_t window) {
        return server.property(server.requestProperty(window, check), deadline)
            .firstNumber()
            .value_or(XCB_NONE);
    };
    const auto manager = named(server.root());
    return manager != XCB_NONE && named(manager) == manager;
}

std::vector<AccessibilityWindow> readWindows(Server& server, std::int32_t processIdentifier,
                                             x11::Deadline deadline) {
    struct Request {
        xcb_window_t window;
        x11::GeometryRequest geometry;
        xcb_get_property_cookie_t types;
    };
    const auto& atoms = server.atoms();
    const auto current = server.requestProperty(server.root(), atoms.netCurrentDesktop);
    std::vector<Request> requests;
    for (const auto& [window, process] : x11::ownedWindows(server, deadline)) {
        if (process != processIdentifier) continue;
        requests.push_back({window, x11::requestGeometry(server, window),
                            server.requestProperty(window, atoms.netWmWindowType)});
    }
    const auto currentDesktop = server.property(current, deadline).firstNumber();
    std::vector<AccessibilityWindow> onScreen;
    std::vector<AccessibilityWindow> others;
    for (const auto& request : requests | std::views::reverse) {
        const auto types = server.property(request.types, deadline);
        const auto geometry = x11::readGeometry(server, request.geometry, deadline);
        if (!geometry || x11::kindOf(types, atoms) != x11::WindowKind::ordinary) continue;
        auto& group = geometry->isOnScreen(currentDesktop) ? onScreen : others;
        group.push_back({processIdentifier, request.window});
    }
    onScreen.insert(onScreen.end(), others.begin(), others.end());
    return onScreen;
}

} // namespace

bool LinuxAccessibility::isProcessTrusted() {
    const auto deadline = x11::halfASecondFromNow();
    return connection_
        .answer(deadline, [&](Server& server) { return hasWindowManager(server, deadline); })
        .value_or(false);
}

std::optional<std::vector<AccessibilityWindow>>
LinuxAccessibility::windows(std::int32_t processIdentifier) {
    const auto deadline = x11::halfASecondFromNow();
    // A client on another machine has none that could be told here.
    if (processIdentifier <= 0) return std::nullopt;
    return connection_.answer(
        deadline, [&](Server& server) { return readWindows(server, processIdentifier, deadline); });
}

std::optional<LinuxAccessibility::Look>
LinuxAccessibility::look(const AccessibilityWindow& window) {
    const auto deadline = x11::halfASecondFromNow();
    const auto found = connection_.answer(deadline, [&](Server& server) -> std::optional<Look> {
        const auto monitors = x11::requestMonitors(server);
        const auto request = x11::requestGeometry(server, idOf(window));
        const auto primary = x11::readMonitors(server, monitors, deadline).primary();
        const auto geometry = x11::readGeometry(server, request, deadline);
        if (!geometry) return std::nullopt;
        if (x11::processOf(server, idOf(window), deadline) != window.processIdentifier) {
            return std::nullopt;
        }
        auto frame = geometry->visible();
        frame.x -= primary.x;
        frame.y -= primary.y;
        return Look{frame, geometry->states.fullscreen};
    });
    return found.value_or(std::nullopt);
}

std::optional<Point> LinuxAccessibility::position(const AccessibilityWindow& window) {
    const auto found = look(window);
    if (!found) return std::nullopt;
    return Point{double(found->frame.x), double(found->frame.y)};
}

std::optional<Size> LinuxAccessibility::size(const AccessibilityWindow& window) {
    const auto found = look(window);
    if (!found) return std::nullopt;
    return Size{double(found->frame.width), double(found->frame.height)};
}

std::optional<bool> LinuxAccessibility::isFullscreen(const AccessibilityWindow& window) {
    const auto found = look(window);
    if (!found) return std::nullopt;
    return found->isFullscreen;
}

int LinuxAccessibility::setPosition(const AccessibilityWindow& window, Point position) {
    if (!areFinite(position.x, position.y)) return cannotComplete;
    lastPlaced_ = {window, position};
    return control(window, [&](auto& control, const auto& primary) {
        return control.place({.x = primary.x + toPixels(position.x, -0x7FFF),
                              .y = primary.y + toPixels(position.y, -0x7FFF)});
    });
}

int LinuxAccessibility::setSize(const AccessibilityWindow& window, Size size) {
    if (!areFinite(size.width, size.height)) return cannotComplete;
    const auto placed = std::exchange(lastPlaced_, std::nullopt);
    return control(window, [&](auto& control, const auto& primary) {
        x11::Wish wish{.width = toPixels(size.width, 1), .height = toPixels(size.height, 1)};
        if (placed && placed->window == window) {
            wish.x = primary.x + toPixels(placed->position.x, -0x7FFF);
            wish.y = primary.y + toPixels(placed->position.y, -0x7FFF);
        }
        return control.place(wish);
    });
}

int LinuxAccessibility::setFullscreen(const AccessibilityWindow& window, bool fullscreen) {
    const int result = control(
        window, [&](auto& control, const auto&) { return control.setFullscreen(fullscreen); });
    unanswered_.reset();
    if (fullscreen && result == cannotComplete) unanswered_ = window;
    return result;
}

int LinuxAccessibility::toggleFullscreen(const AccessibilityWindow& window) {
    const bool isFullscreen = this->isFullscreen(window).value_or(false);
    // Whoever toggles because there was no answer would undo what came late.
    if (isFullscreen && std::exchange(unanswered_, std::nullopt) == window) return success;
    return setFullscreen(window, !isFullscreen);
}

int LinuxAccessibility::zoom(const AccessibilityWindow& window) {
    const bool wasFullscreen = isFullscreen(window).value_or(false);
    const int result = toggleFullscreen(window);
    if (result != cannotComplete || wasFullscreen) return result;
    return control(window, [](auto& control, const auto&) { return control.toggleMaximized(); });
}

int LinuxAccessibility::control(const AccessibilityWindow& window, const Act& act) {
    const auto deadline = x11::halfASecondFromNow();
    struct Found {
        bool isOwned = false;
        x11::Frame primary = {};
    };
    const auto found = connection_.answer(deadline, [&](Server& server) {
        const auto monitors = x11::requestMonitors(server);
        const bool isOwned =
            x11::processOf(server, idOf(window), deadline) == window.processIdentifier;
        return Found{isOwned, x11::readMonitors(server, monitors, deadline).primary()};
    });
    Server* const server = found ? connection_.server(deadline) : nullptr;
    if (!server) return cannotComplete;
    if (!found->isOwned) return invalidElement;
    const auto outcome = [&] {
        x11::WindowControl control(*server, idOf(window), habits_, deadline);
        return act(control, found->primary);
    }();
    if (server->failed()) return cannotComplete;
    switch (outcome) {
    case Outcome::done:
        return success;
    case Outcome::windowIsGone:
        return invalidElement;
    default:
        return cannotComplete;
    }
}

} // namespace corvane
