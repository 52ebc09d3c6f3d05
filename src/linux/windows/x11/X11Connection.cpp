#include "linux/windows/x11/X11Connection.h"

#include "linux/system/UnixSocket.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <thread>
#include <utility>

#include <poll.h>
#include <xcb/randr.h>
#include <xcb/res.h>
#include <xcb/xcbext.h>

namespace corvane::x11 {
namespace {

constexpr std::pair<std::string_view, xcb_atom_t Atoms::*> atomNames[]{
    {"_NET_CLIENT_LIST", &Atoms::netClientList},
    {"_NET_CLIENT_LIST_STACKING", &Atoms::netClientListStacking},
    {"_NET_SUPPORTING_WM_CHECK", &Atoms::netSupportingWmCheck},
    {"_NET_ACTIVE_WINDOW", &Atoms::netActiveWindow},
    {"_NET_CLOSE_WINDOW", &Atoms::netCloseWindow},
    {"WM_PROTOCOLS", &Atoms::wmProtocols},
    {"WM_DELETE_WINDOW", &Atoms::wmDeleteWindow},
    {"_NET_WM_WINDOW_TYPE", &Atoms::netWmWindowType},
    {"_NET_WM_WINDOW_TYPE_NORMAL", &Atoms::typeNormal},
    {"_NET_WM_WINDOW_TYPE_DIALOG", &Atoms::typeDialog},
    {"_NET_WM_WINDOW_TYPE_DESKTOP", &Atoms::typeDesktop},
    {"_NET_WM_WINDOW_TYPE_DOCK", &Atoms::typeDock},
    {"_NET_WM_WINDOW_TYPE_TOOLBAR", &Atoms::typeToolbar},
    {"_NET_WM_WINDOW_TYPE_MENU", &Atoms::typeMenu},
    {"_NET_WM_WINDOW_TYPE_UTILITY", &Atoms::typeUtility},
    {"_NET_WM_WINDOW_TYPE_SPLASH", &Atoms::typeSplash},
    {"_NET_WM_WINDOW_TYPE_NOTIFICATION", &Atoms::typeNotification},
    {"_NET_WM_STATE", &Atoms::netWmState},
    {"_NET_WM_STATE_HIDDEN", &Atoms::stateHidden},
    {"_NET_WM_STATE_SKIP_TASKBAR", &Atoms::stateSkipTaskbar},
    {"WM_STATE", &Atoms::wmState},
    {"_GTK_APPLICATION_ID", &Atoms::gtkApplicationId},
    {"_BAMF_DESKTOP_FILE_HINT", &Atoms::bamfDesktopFile},
    {"_KDE_NET_WM_DESKTOP_FILE", &Atoms::kdeDesktopFile},
    {"_NET_CURRENT_DESKTOP", &Atoms::netCurrentDesktop},
    {"_NET_WORKAREA", &Atoms::netWorkarea},
    {"_NET_WM_DESKTOP", &Atoms::netWmDesktop},
    {"_NET_WM_NAME", &Atoms::netWmName},
    {"UTF8_STRING", &Atoms::utf8String},
    {"_NET_WM_STRUT", &Atoms::netWmStrut},
    {"_NET_WM_STRUT_PARTIAL", &Atoms::netWmStrutPartial},
    {"_NET_FRAME_EXTENTS", &Atoms::netFrameExtents},
    {"_NET_REQUEST_FRAME_EXTENTS", &Atoms::netRequestFrameExtents},
    {"_GTK_FRAME_EXTENTS", &Atoms::gtkFrameExtents},
    {"_NET_MOVERESIZE_WINDOW", &Atoms::netMoveresizeWindow},
    {"_NET_WM_STATE_FULLSCREEN", &Atoms::stateFullscreen},
    {"_NET_WM_STATE_MAXIMIZED_HORZ", &Atoms::stateMaximizedHorz},
    {"_NET_WM_STATE_MAXIMIZED_VERT", &Atoms::stateMaximizedVert},
    {"_NET_WM_STATE_SHADED", &Atoms::stateShaded},
    {"_NET_WM_STATE_ABOVE", &Atoms::stateAbove},
    {"_NET_WM_STATE_BELOW", &Atoms::stateBelow},
    {"_NET_STARTUP_INFO_BEGIN", &Atoms::netStartupInfoBegin},
    {"_NET_STARTUP_INFO", &Atoms::netStartupInfo},
};

/// The first version whose QueryClientIds there is.
constexpr std::uint32_t resMajor = 1;
constexpr std::uint32_t resMinor = 2;

/// It says so itself from version 23.1 on, and calls its outputs so before that.
bool isXwayland(const Server& server) {
    constexpr std::string_view name = "XWAYLAND";
    const Reply<xcb_query_extension_reply_t> extension(xcb_query_extension_reply(
        server.get(), xcb_query_extension(server.get(), name.size(), name.data()), nullptr));
    if (extension && extension->present) return true;
    if (!server.tellsMonitors()) return false;
    const auto screen = xcb_randr_get_screen_resources_current(server.get(), server.root());
    const Reply<xcb_randr_get_screen_resources_current_reply_t> resources(
        xcb_randr_get_screen_resources_current_reply(server.get(), screen, nullptr));
    if (!resources || resources->num_outputs == 0) return false;
    const auto first = *xcb_randr_get_screen_resources_current_outputs(resources.get());
    const Reply<xcb_randr_get_output_info_reply_t> output(xcb_randr_get_output_info_reply(
        server.get(), xcb_randr_get_output_info(server.get(), first, resources->config_timestamp),
        nullptr));
    if (!output) return false;
    const auto* letters =
        reinterpret_cast<const char*>(xcb_randr_get_output_info_name(output.get()));
    return std::string_view(letters, xcb_randr_get_output_info_name_length(output.get()))
        .starts_with(name);
}

} // namespace

std::vector<std::uint32_t> Property::numbers() const {
    if (format != 32) return {};
    std::vector<std::uint32_t> values(bytes.size() / sizeof(std::uint32_t));
    if (!values.empty()) std::memcpy(values.data(), bytes.data(), values.size() * sizeof values[0]);
    return values;
}

std::optional<std::uint32_t> Property::firstNumber() const {
    const auto values = numbers();
    return values.empty() ? std::nullopt : std::optional(values.front());
}

std::vector<std::string> Property::texts() const {
    std::vector<std::string> found;
    if (format != 8) return found;
    for (std::size_t start = 0; start < bytes.size();) {
        const auto end = std::min(bytes.find('\0', start), bytes.size());
        found.push_back(bytes.substr(start, end - start));
        start = end + 1;
    }
    return found;
}

std::string Property::text() const {
    const auto all = texts();
    return all.empty() ? std::string() : all.front();
}

std::unique_ptr<Server> Server::open() {
    std::unique_ptr<Server> server(new Server);
    int screen = 0;
    server->connection_.reset(xcb_connect(nullptr, &screen));
    if (server->failed() || !server->prepare(screen)) return nullptr;
    return server;
}

bool Server::prepare(int screen) {
    const xcb_setup_t* setup = xcb_get_setup(get());
    idMask_ = setup->resource_id_mask;
    screen_ = screen;
    auto screens = xcb_setup_roots_iterator(setup);
    for (; screens.rem > 1 && screen > 0; --screen)
        xcb_screen_next(&screens);
    if (screens.rem == 0) return false;
    root_ = screens.data->root;

    std::array<xcb_intern_atom_cookie_t, std::size(atomNames)> cookies;
    for (std::size_t i = 0; i < cookies.size(); ++i) {
        const auto name = atomNames[i].first;
        cookies[i] =
            xcb_intern_atom(get(), 0, static_cast<std::uint16_t>(name.size()), name.data());
    }
    for (std::size_t i = 0; i < cookies.size(); ++i) {
        const Reply<xcb_intern_atom_reply_t> atom(
            xcb_intern_atom_reply(get(), cookies[i], nullptr));
        if (!atom) return false;
        atoms_.*atomNames[i].second = atom->atom;
    }
    process_ = processBehind(xcb_get_file_descriptor(get()));
    const auto* extension = xcb_get_extension_data(get(), &xcb_res_id);
    if (process_ > 0 && extension && extension->present) {
        const Reply<xcb_res_query_version_reply_t> version(xcb_res_query_version_reply(
            get(), xcb_res_query_version(get(), resMajor, resMinor), nullptr));
        tellsProcesses_ =
            version && std::pair(version->server_major, version->server_minor) >=
                           std::pair<std::uint16_t, std::uint16_t>(resMajor, resMinor);
    }
    const auto* randr = xcb_get_extension_data(get(), &xcb_randr_id);
    tellsMonitors_ = randr && randr->present;
    isXwayland_ = x11::isXwayland(*this);
    return !failed();
}

xcb_get_property_cookie_t Server::requestProperty(xcb_window_t window, xcb_atom_t atom,
                                                  std::uint32_t longest) const {
    return xcb_get_property(get(), 0, window, atom, XCB_GET_PROPERTY_TYPE_ANY, 0, longest);
}

Property Server::property(xcb_get_property_cookie_t cookie, Deadline deadline) {
    const auto answer = reply<xcb_get_property_reply_t>(cookie, deadline);
    if (!answer) return {.windowIsGone = true};
    const auto* bytes = static_cast<const char*>(xcb_get_property_value(answer.get()));
    const auto size = static_cast<std::size_t>(xcb_get_property_value_length(answer.get()));
    return {.type = answer->type, .format = answer->format, .bytes = std::string(bytes, size)};
}

void Server::sendMessage(Recipient recipient, xcb_window_t window, xcb_atom_t type,
                         const Message& message) {
    xcb_client_message_event_t event{};
    event.response_type = XCB_CLIENT_MESSAGE;
    event.format = 32;
    event.window = window;
    event.type = type;
    std::ranges::copy(message, event.data.data32);
    const bool toManager = recipient == Recipient::windowManager;
    xcb_send_event(get(), 0, toManager ? root() : window,
                   toManager
                       ? XCB_EVENT_MASK_SUBSTRUCTURE_REDIRECT | XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY
                       : XCB_EVENT_MASK_NO_EVENT,
                   reinterpret_cast<const char*>(&event));
}

bool Server::finish(Deadline deadline) {
    return reply<xcb_get_input_focus_reply_t>(xcb_get_input_focus(get()), deadline) != nullptr;
}

void* Server::waitForReply(unsigned sequence, Deadline deadline) {
    using namespace std::chrono;
    xcb_flush(get());
    while (!failed()) {
        void* reply = nullptr;
        xcb_generic_error_t* error = nullptr;
        if (xcb_poll_for_reply(get(), sequence, &reply, &error) != 0) {
            std::free(error);
            return reply;
        }
        const auto left = ceil<milliseconds>(deadline - steady_clock::now());
        if (left <= milliseconds(0)) {
            late_ = true;
            break;
        }
        waitForInput(left);
    }
    return nullptr;
}

void Server::waitForInput(std::chrono::milliseconds longest) const {
    pollfd readable{xcb_get_file_descriptor(get()), POLLIN, 0};
    ::poll(&readable, 1, static_cast<int>(longest.count()));
}

Reply<xcb_generic_event_t> Server::event(Deadline deadline) {
    using namespace std::chrono;
    xcb_flush(get());
    while (!failed()) {
        if (Reply<xcb_generic_event_t> event{xcb_poll_for_event(get())}) return event;
        const auto left = ceil<milliseconds>(deadline - steady_clock::now());
        if (left <= milliseconds(0)) break;
        waitForInput(left);
    }
    return nullptr;
}

void Server::dropEvents() {
    while (const auto event = Reply<xcb_generic_event_t>(xcb_poll_for_event(get()))) {
    }
}

Server* Connection::server(Deadline deadline) {
    if (server_) server_->dropEvents();
    if (server_ && !server_->failed()) return server_.get();
    server_.reset();
    if (!opening_.valid()) {
        // The library waits for the server without a limit, so a thread of its own does that; one
        // that is stuck is taken up again by the next call.
        std::packaged_task<std::unique_ptr<Server>()> opening(&Server::open);
        opening_ = opening.get_future();
        std::thread(std::move(opening)).detach();
    }
    if (opening_.wait_until(deadline) != std::future_status::ready) return nullptr;
    server_ = opening_.get();
    return server_.get();
}

} // namespace corvane::x11
