#include "linux/windows/x11/X11ClientWindows.h"

#include "linux/windows/x11/X11StackingOrder.h"

#include <algorithm>
#include <array>
#include <optional>

#include <unistd.h>
#include <xcb/res.h>

namespace corvane::x11 {
namespace {

using Processes = std::map<std::uint32_t, pid_t>;

bool contains(const std::vector<std::uint32_t>& values, std::uint32_t value) {
    return std::ranges::count(values, value) > 0;
}

/// One question for all clients; a client's words about itself can be wrong, the server's aren't.
xcb_res_query_client_ids_cookie_t requestProcesses(const Server& server) {
    const xcb_res_client_id_spec_t everyClient{XCB_NONE, XCB_RES_CLIENT_ID_MASK_LOCAL_CLIENT_PID};
    return xcb_res_query_client_ids(server.get(), 1, &everyClient);
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
    processIdentifier,
    machine,
    windowClass,
    gtkApplication,
    bamfFile,
    kdeFile,
    transientFor,
    windowType,
    netState,
    wmState,
    fieldCount
};
using Cookies = std::array<xcb_get_property_cookie_t, fieldCount>;

Cookies requestFields(const Server& server, xcb_window_t window) {
    const auto& atoms = server.atoms();
    Cookies cookies;
    const auto request = [&](Field field, xcb_atom_t atom) {
        cookies[field] = server.requestProperty(window, atom);
    };
    request(processIdentifier, atoms.netWmPid);
    request(machine, XCB_ATOM_WM_CLIENT_MACHINE);
    request(windowClass, XCB_ATOM_WM_CLASS);
    request(gtkApplication, atoms.gtkApplicationId);
    request(bamfFile, atoms.bamfDesktopFile);
    request(kdeFile, atoms.kdeDesktopFile);
    request(transientFor, XCB_ATOM_WM_TRANSIENT_FOR);
    request(windowType, atoms.netWmWindowType);
    request(netState, atoms.netWmState);
    request(wmState, atoms.wmState);
    return cookies;
}

bool isThisMachine(const std::string& name) {
    char own[256] = {};
    return ::gethostname(own, sizeof own - 1) == 0 && name == own;
}

/// Nothing for a window that is gone by now.
std::optional<ClientWindow> readWindow(Server& server, xcb_window_t window, const Cookies& cookies,
                                       Deadline deadline) {
    std::array<Property, fieldCount> fields;
    for (std::size_t field = 0; field < fieldCount; ++field)
        fields[field] = server.property(cookies[field], deadline);
    if (fields[wmState].windowIsGone) return std::nullopt;

    ClientWindow result{.window = window};
    if (isThisMachine(fields[machine].text())) {
        result.processIdentifier =
            static_cast<pid_t>(fields[processIdentifier].firstNumber().value_or(0));
    }
    const auto names = fields[windowClass].texts();
    if (!names.empty()) result.instanceName = names[0];
    if (names.size() > 1) result.className = names[1];
    result.gtkApplicationId = fields[gtkApplication].text();
    result.desktopFileHint = fields[bamfFile].text();
    if (result.desktopFileHint.empty()) result.desktopFileHint = fields[kdeFile].text();
    const auto owner = fields[transientFor].firstNumber().value_or(0);
    if (owner != server.root()) result.transientFor = owner;
    result.kind = kindOf(fields[windowType], server.atoms());
    const auto states = fields[netState].numbers();
    constexpr std::uint32_t iconic = 3;
    result.skipsTaskbar = contains(states, server.atoms().stateSkipTaskbar);
    result.isIconified = contains(states, server.atoms().stateHidden) ||
                         fields[wmState].firstNumber().value_or(0) == iconic;
    return result;
}

/// Only windows whose client the server can't tell the process of are asked themselves.
std::vector<OwnedWindow> withProcesses(Server& server, const std::vector<xcb_window_t>& windows,
                                       const Processes& processes, Deadline deadline) {
    struct Request {
        std::size_t index;
        xcb_get_property_cookie_t processIdentifier;
        xcb_get_property_cookie_t machine;
    };
    std::vector<OwnedWindow> result;
    std::vector<Request> requests;
    for (const auto window : windows) {
        const auto process = processes.find(server.clientOf(window));
        if (process != processes.end()) {
            result.push_back({window, process->second});
            continue;
        }
        requests.push_back({result.size(), server.requestProperty(window, server.atoms().netWmPid),
                            server.requestProperty(window, XCB_ATOM_WM_CLIENT_MACHINE)});
        result.push_back({window});
    }
    for (const auto& request : requests) {
        const auto process = server.property(request.processIdentifier, deadline).numbers();
        const auto machine = server.property(request.machine, deadline).text();
        if (process.empty() || !isThisMachine(machine)) continue;
        result[request.index].processIdentifier = static_cast<pid_t>(process.front());
    }
    return result;
}

} // namespace

Clients clients(Server& server, Deadline deadline) {
    constexpr std::uint32_t longestList = 4096;
    const auto& atoms = server.atoms();
    const auto byAge = server.requestProperty(server.root(), atoms.netClientList, longestList);
    const auto stacking =
        server.requestProperty(server.root(), atoms.netClientListStacking, longestList);
    const auto check = server.requestProperty(server.root(), atoms.netSupportingWmCheck);
    std::optional<xcb_res_query_client_ids_cookie_t> processIds;
    if (server.tellsProcesses()) processIds = requestProcesses(server);

    const Property age = server.property(byAge, deadline);
    const auto windows = listedWindows(server, age, server.property(stacking, deadline), deadline);
    const auto manager = server.property(check, deadline).firstNumber().value_or(0);
    const auto managersCheck = server.requestProperty(manager, atoms.netSupportingWmCheck);
    const auto managersProcess = server.requestProperty(manager, atoms.netWmPid);
    std::vector<Cookies> cookies;
    for (const auto window : windows)
        cookies.push_back(requestFields(server, window));

    Clients result;
    if (processIds) result.processes = readProcesses(server, *processIds, deadline);
    const auto processOf = [&](std::uint32_t client, pid_t itsOwnWord) {
        const auto process = result.processes.find(client);
        return process == result.processes.end() ? itsOwnWord : process->second;
    };
    result.server = server.processIdentifier();
    const auto managersWord =
        static_cast<pid_t>(server.property(managersProcess, deadline).firstNumber().value_or(0));
    // One that has gone leaves its word on the root window.
    if (manager != XCB_NONE &&
        server.property(managersCheck, deadline).firstNumber().value_or(0) == manager) {
        result.hasWindowManager = true;
        result.windowManager = processOf(server.clientOf(manager), managersWord);
    }
    for (std::size_t i = 0; i < windows.size(); ++i) {
        auto window = readWindow(server, windows[i], cookies[i], deadline);
        if (!window) continue;
        window->processIdentifier =
            processOf(server.clientOf(windows[i]), window->processIdentifier);
        result.windows.push_back(std::move(*window));
    }
    return result;
}

std::vector<xcb_window_t> clientWindowIds(Server& server, Deadline deadline) {
    constexpr std::uint32_t longestList = 4096;
    const auto& atoms = server.atoms();
    const auto byAge = server.requestProperty(server.root(), atoms.netClientList, longestList);
    const auto stacking =
        server.requestProperty(server.root(), atoms.netClientListStacking, longestList);
    const Property age = server.property(byAge, deadline);
    return listedWindows(server, age, server.property(stacking, deadline), deadline);
}

std::vector<OwnedWindow> ownedWindows(Server& server, Deadline deadline) {
    std::optional<xcb_res_query_client_ids_cookie_t> processIds;
    if (server.tellsProcesses()) processIds = requestProcesses(server);
    const auto windows = clientWindowIds(server, deadline);
    const auto processes = processIds ? readProcesses(server, *processIds, deadline) : Processes();
    return withProcesses(server, windows, processes, deadline);
}

pid_t processOf(Server& server, xcb_window_t window, Deadline deadline) {
    Processes processes;
    if (server.tellsProcesses()) {
        const xcb_res_client_id_spec_t client{window, XCB_RES_CLIENT_ID_MASK_LOCAL_CLIENT_PID};
        const auto cookie = xcb_res_query_client_ids(server.get(), 1, &client);
        processes = readProcesses(server, cookie, deadline);
    }
    return withProcesses(server, {window}, processes, deadline).front().processIdentifier;
}

} // namespace corvane::x11
