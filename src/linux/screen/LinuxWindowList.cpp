#include "linux/screen/LinuxWindowList.h"

#include "foundation/Text.h"
#include "linux/running/RunningApplications.h"
#include "linux/windows/x11/X11ClientWindows.h"
#include "linux/windows/x11/X11Monitors.h"
#include "linux/windows/x11/X11WindowGeometry.h"
#include "linux/windows/x11/X11WindowKind.h"

#include <algorithm>
#include <map>

namespace corvane {
namespace {

/// The numbers of the levels that these kinds of windows have on a Mac.
namespace layer {
constexpr std::int64_t desktop = -2147483623;
constexpr std::int64_t below = -1;
constexpr std::int64_t normal = 0;
constexpr std::int64_t above = 3;
constexpr std::int64_t dock = 20;
} // namespace layer

struct Request {
    x11::GeometryRequest geometry;
    xcb_get_property_cookie_t type;
    xcb_get_property_cookie_t title;
    xcb_get_property_cookie_t oldTitle;
};

std::int64_t layerOf(x11::WindowKind kind, const x11::WindowStates& states) {
    if (kind == x11::WindowKind::desktop) return layer::desktop;
    if (kind == x11::WindowKind::dock) return layer::dock;
    if (states.above) return layer::above;
    return states.below ? layer::below : layer::normal;
}

std::string fromLatin1(const std::string& text) {
    std::string result;
    for (const unsigned char letter : text) {
        if (letter < 0x80) {
            result += static_cast<char>(letter);
        } else {
            result += static_cast<char>(0xC0 | letter >> 6);
            result += static_cast<char>(0x80 | (letter & 0x3F));
        }
    }
    return result;
}

std::optional<std::string> titleIn(const x11::Property& title, const x11::Property& oldTitle,
                                   const x11::Atoms& atoms) {
    if (title.exists()) return text::replacingInvalidUtf8(title.text());
    if (!oldTitle.exists()) return std::nullopt;
    if (oldTitle.type == atoms.utf8String) return text::replacingInvalidUtf8(oldTitle.text());
    return fromLatin1(oldTitle.text());
}

WindowBounds boundsOf(const x11::WindowGeometry& geometry, const x11::Frame& primary) {
    const auto frame = geometry.visible();
    return {.x = frame.x - primary.x,
            .y = frame.y - primary.y,
            .width = frame.width,
            .height = frame.height};
}

/// Front to back, with no names of owners yet.
std::vector<WindowInfo> readWindows(x11::Server& server, x11::Deadline deadline) {
    const auto& atoms = server.atoms();
    const auto monitors = x11::requestMonitors(server);
    const auto currentDesktop = server.requestProperty(server.root(), atoms.netCurrentDesktop);
    const auto windows = x11::ownedWindows(server, deadline);
    std::vector<Request> requests;
    for (const auto& [window, process] : windows) {
        requests.push_back({.geometry = x11::requestGeometry(server, window),
                            .type = server.requestProperty(window, atoms.netWmWindowType),
                            .title = server.requestProperty(window, atoms.netWmName),
                            .oldTitle = server.requestProperty(window, XCB_ATOM_WM_NAME)});
    }
    const auto primary = x11::readMonitors(server, monitors, deadline).primary();
    const auto desktop = server.property(currentDesktop, deadline).firstNumber();

    std::vector<WindowInfo> found;
    for (std::size_t i = 0; i < windows.size(); ++i) {
        const auto geometry = x11::readGeometry(server, requests[i].geometry, deadline);
        const auto type = server.property(requests[i].type, deadline);
        const auto title = server.property(requests[i].title, deadline);
        const auto oldTitle = server.property(requests[i].oldTitle, deadline);
        if (!geometry || !geometry->isOnScreen(desktop)) continue;
        WindowInfo info{.bounds = boundsOf(*geometry, primary),
                        .layer = layerOf(x11::kindOf(type, atoms), geometry->states),
                        .name = titleIn(title, oldTitle, atoms),
                        .number = windows[i].window};
        if (windows[i].processIdentifier > 0) info.ownerPID = windows[i].processIdentifier;
        found.push_back(std::move(info));
    }
    std::ranges::reverse(found);
    return found;
}

} // namespace

std::optional<std::vector<WindowInfo>> LinuxWindowList::onScreenWindows() {
    const auto deadline = x11::halfASecondFromNow();
    auto windows = connection_.answer(
        deadline, [&](x11::Server& server) { return readWindows(server, deadline); });
    if (!windows) return std::nullopt;
    std::map<std::int32_t, std::optional<std::string>> names;
    for (const auto& application : running_.list())
        names[application.processIdentifier] = application.localizedName;
    for (auto& window : *windows) {
        const auto name = names.find(window.ownerPID.value_or(0));
        if (name != names.end()) window.ownerName = name->second;
    }
    return windows;
}

} // namespace corvane
