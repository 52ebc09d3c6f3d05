#include "linux/windows/x11/X11ClientWindows.h"

#include "linux/windows/x11/X11StackingOrder.h"
#include "linux/windows/x11/X11WindowGeometry.h"
#include "linux/windows/x11/X11WindowKind.h"

#include <algorithm>
#include <array>
#include <map>
#include <optional>

#include <xcb/res.h>

namespace corvane::x11 {
namespace {

using Processes = std::map<std::uint32_t, pid_t>;

bool contains(const std::vector<std::uint32_t>& values, std::uint32_t value) {
    return std::ranges::count(values, value) > 0;
}

/// Of a window's client, or one question for all clients. A client's words about itself can be
/// wrong, the server's aren't.
xcb_res_query_client_ids_cookie_t requestProcesses(const Server& server, xcb_window_t window) {
    const xcb_res_client_id_spec_t which{window, XCB_RES_CLIENT_ID_MASK_LOCAL_CLIENT_PID};
    return xcb_res_query_client_ids(server.get(), 1, &which);
}

/// The processes by client.
Processes readProcesses(Server& server, xcb_res_query_client_ids_cookie_t cookie,
                        Deadline deadline) {
    Processes processes;
    const auto answer = server.reply<xcb_res_query_client_ids_reply_t>(cookie, deadline);
    if (!answer) return processes;
    auto ids = xcb_res_query_client_ids_ids_iterator(answer.get());
    for (; ids.rem > 0; xcb_res_client_id_value_next(&ids)) {
        if (ids.data->spec.mask != XCB_RES_CLIENT_ID_MASK_LOCAL_CLIENT_PID ||
            xcb_res_client_id_value_value_length(ids.data) < 1) {
            continue;
        }
        // A client of another process namespace is told as 0.
        const auto process = static_cast<pid_t>(*xcb_res_client_id_value_value(ids.data));
        if (process > 0) processes[server.clientOf(ids.data->spec.client)] = process;
    }
    return processes;
}

std::vector<xcb_window_t> childrenOf(Server& server, const std::vector<xcb_window_t>& parents,
                                     Deadline deadline) {
    std::vector<xcb_query_tree_cookie_t> cookies;
    for (const auto parent : parents)
        cookies.push_back(xcb_query_tree(server.get(), parent));
    std::vector<xcb_window_t> children;
    for (const auto cookie : cookies) {
        const auto tree = server.reply<xcb_query_tree_reply_t>(cookie, deadline);
        if (!tree) continue;
        const auto* first = xcb_query_tree_children(tree.get());
        children.insert(children.end(), first, first + xcb_query_tree_children_length(tree.get()));
    }
    return children;
}

/// Without a list of a window manager's: the windows that one has given a state, inside its frames
/// or not.
std::vector<xcb_window_t> windowsWithState(Server& server, Deadline deadline) {
    constexpr int deepest = 3;
    std::vector<xcb_window_t> found;
    std::vector<xcb_window_t> level{server.root()};
    for (int depth = 0; depth < deepest && !level.empty(); ++depth) {
        std::vector<xcb_window_t> others;
        std::vector<xcb_get_property_cookie_t> cookies;
        const auto children = childrenOf(server, level, deadline);
        for (const auto child : children)
            cookies.push_back(server.requestProperty(child, server.atoms().wmState));
        for (std::size_t i = 0; i < children.size(); ++i) {
            const bool hasState = server.property(cookies[i], deadline).exists();
            (hasState ? found : others).push_back(children[i]);
        }
        level = std::move(others);
    }
    return found;
}

/// The list by age holds what the stacking one leaves out on some window managers.
std::vector<xcb_window_t> listedWindows(Server& server, const Property& byAge,
                                        const Property& stacking, Deadline deadline) {
    if (!byAge.exists() && !stacking.exists()) {
        return bottomToTop(server, windowsWithState(server, deadline), deadline);
    }
    if (!stacking.exists()) return bottomToTop(server, byAge.numbers(), deadline);
    auto windows = stacking.numbers();
    const auto listed = byAge.numbers();
    std::vector<xcb_window_t> missing;
    std::ranges::copy_if(listed, std::back_inserter(missing),
                         [&](auto window) { return !contains(windows, window); });
    windows.insert(windows.begin(), missing.begin(), missing.end());
    return windows;
}

enum Field {
    windowClass,
    gtkApplication,
    bamfFile,
    kdeFile,
    transientFor,
    windowType,
    netState,
    wmState,
    protocols,
    title,
    oldTitle,
    fieldCount
};
struct Request {
    std::array<xcb_get_property_cookie_t, fieldCount> fields;
    GeometryRequest geometry;
};

Request requestWindow(const Server& server, xcb_window_t window) {
    const auto& atoms = server.atoms();
    const std::array<xcb_atom_t, fieldCount> names{
        XCB_ATOM_WM_CLASS,         atoms.gtkApplicationId,
        atoms.bamfDesktopFile,     atoms.kdeDesktopFile,
        XCB_ATOM_WM_TRANSIENT_FOR, atoms.netWmWindowType,
        atoms.netWmState,          atoms.wmState,
        atoms.wmProtocols,         atoms.netWmName,
        XCB_ATOM_WM_NAME};
    Request request;
    for (std::size_t field = 0; field < fieldCount; ++field)
        request.fields[field] = server.requestProperty(window, names[field]);
    request.geometry = requestGeometry(server, window);
    return request;
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

std::optional<std::string> titleIn(const Property& title, const Property& oldTitle,
                                   const Atoms& atoms) {
    if (title.exists()) return title.bytes;
    if (!oldTitle.exists()) return std::nullopt;
    return oldTitle.type == atoms.utf8String ? oldTitle.bytes : fromLatin1(oldTitle.bytes);
}

WindowLayer layerOf(const WindowStates& states) {
    if (states.above) return WindowLayer::above;
    return states.below ? WindowLayer::below : WindowLayer::normal;
}

/// Nothing for a window that is gone by now.
std::optional<ManagedWindow> readWindow(Server& server, const WindowRef& window,
                                        const Request& request,
                                        std::optional<std::uint32_t> currentDesktop,
                                        Deadline deadline) {
    std::array<Property, fieldCount> fields;
    for (std::size_t field = 0; field < fieldCount; ++field)
        fields[field] = server.property(request.fields[field], deadline);
    const auto geometry = readGeometry(server, request.geometry, deadline);
    if (!geometry) return std::nullopt;

    const auto& atoms = server.atoms();
    ManagedWindow result{.window = window};
    const auto names = fields[windowClass].texts();
    if (!names.empty()) result.hints.instanceName = names[0];
    if (names.size() > 1) result.hints.className = names[1];
    result.hints.applicationId = fields[gtkApplication].text();
    result.hints.desktopFile = fields[bamfFile].text();
    if (result.hints.desktopFile.empty()) result.hints.desktopFile = fields[kdeFile].text();
    const auto owner = fields[transientFor].firstNumber().value_or(XCB_NONE);
    if (owner != XCB_NONE && owner != server.root()) result.owner = owner;
    result.title = titleIn(fields[title], fields[oldTitle], atoms);
    result.kind = kindOf(fields[windowType], atoms);
    constexpr std::uint32_t iconic = 3;
    const auto& states = geometry->states;
    result.layer = layerOf(states);
    result.frame = geometry->visible().rect();
    if (geometry->desktop && geometry->desktop != everyDesktop)
        result.workspace = std::to_string(*geometry->desktop);
    result.isOnScreen = geometry->isOnScreen(currentDesktop);
    result.isMinimized = states.hidden || fields[wmState].firstNumber() == iconic;
    result.isFullscreen = states.fullscreen;
    result.isMaximized = states.maximizedHorizontally && states.maximizedVertically;
    result.skipsTaskbar = contains(fields[netState].numbers(), atoms.stateSkipTaskbar);
    result.canBeAskedToClose = contains(fields[protocols].numbers(), atoms.wmDeleteWindow);
    return result;
}

pid_t processIn(const Processes& processes, const Server& server, xcb_window_t window) {
    const auto process = processes.find(server.clientOf(window));
    return process == processes.end() ? 0 : process->second;
}

struct ListRequest {
    xcb_get_property_cookie_t byAge, stacking;
};

ListRequest requestList(const Server& server) {
    const auto& atoms = server.atoms();
    return {server.requestProperty(server.root(), atoms.netClientList, mostWindows),
            server.requestProperty(server.root(), atoms.netClientListStacking, mostWindows)};
}

std::vector<xcb_window_t> readList(Server& server, const ListRequest& request, Deadline deadline) {
    const Property age = server.property(request.byAge, deadline);
    auto windows =
        listedWindows(server, age, server.property(request.stacking, deadline), deadline);
    if (windows.size() > mostWindows) windows.resize(mostWindows);
    return windows;
}

} // namespace

xcb_window_t windowManager(Server& server, Deadline deadline) {
    const auto check = server.atoms().netSupportingWmCheck;
    const auto named = [&](xcb_window_t window) {
        return server.property(server.requestProperty(window, check), deadline)
            .firstNumber()
            .value_or(XCB_NONE);
    };
    const auto manager = named(server.root());
    // One that has gone leaves only its name on the root window.
    return manager != XCB_NONE && named(manager) == manager ? manager : XCB_NONE;
}

WindowsNow readWindows(Server& server, Deadline deadline) {
    const auto& atoms = server.atoms();
    const auto list = requestList(server);
    const auto active = server.requestProperty(server.root(), atoms.netActiveWindow);
    const auto desktop = server.requestProperty(server.root(), atoms.netCurrentDesktop);
    std::optional<xcb_res_query_client_ids_cookie_t> processIds;
    if (server.tellsProcesses()) processIds = requestProcesses(server, XCB_NONE);

    const auto windows = readList(server, list, deadline);
    std::vector<Request> requests;
    for (const auto window : windows)
        requests.push_back(requestWindow(server, window));

    WindowsNow result;
    const auto activeWindow = server.property(active, deadline).firstNumber().value_or(XCB_NONE);
    if (activeWindow != XCB_NONE) result.active = activeWindow;
    const auto currentDesktop = server.property(desktop, deadline).firstNumber();
    Processes processes;
    if (processIds) {
        processes = readProcesses(server, *processIds, deadline);
        auto& connected = result.connected.emplace();
        for (const auto& [client, process] : processes)
            connected.insert(process);
    }
    for (std::size_t i = 0; i < windows.size(); ++i) {
        const WindowRef reference{windows[i], processIn(processes, server, windows[i])};
        auto window = readWindow(server, reference, requests[i], currentDesktop, deadline);
        if (window) result.windows.push_back(std::move(*window));
    }
    const auto manager = windowManager(server, deadline);
    result.isReady = manager != XCB_NONE;
    for (const auto process : {processIn(processes, server, manager), server.processIdentifier()}) {
        if (process > 0) result.session.insert(process);
    }
    return result;
}

std::optional<ManagedWindow> readWindow(Server& server, const WindowRef& window,
                                        Deadline deadline) {
    const auto desktop = server.requestProperty(server.root(), server.atoms().netCurrentDesktop);
    const auto request = requestWindow(server, idOf(window));
    const bool isThere = exists(server, window, deadline);
    const auto currentDesktop = server.property(desktop, deadline).firstNumber();
    auto result = readWindow(server, window, request, currentDesktop, deadline);
    return isThere ? result : std::nullopt;
}

std::vector<xcb_window_t> clientWindowIds(Server& server, Deadline deadline) {
    return readList(server, requestList(server), deadline);
}

bool exists(Server& server, const WindowRef& window, Deadline deadline) {
    if (!server.tellsProcesses()) return window.process == 0;
    const auto cookie = requestProcesses(server, idOf(window));
    return processIn(readProcesses(server, cookie, deadline), server, idOf(window)) ==
           window.process;
}

} // namespace corvane::x11
