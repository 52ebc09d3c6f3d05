#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <iterator>
#include <string>
#include <string_view>

#include <unistd.h>
#include <xcb/xcb.h>

// A client with two windows. The second one has the type that the second argument names, or else it
// belongs to the first one. The first argument says how it takes it to be asked to close one:
//
//     close    closes it, and ends with the last one
//     ignore   does nothing
//     hide     takes both away and stays connected
//
// Two more arguments are the classes of the two, as of two applications in one process.

namespace {

xcb_atom_t atom(xcb_connection_t* connection, std::string_view name) {
    auto* reply = xcb_intern_atom_reply(
        connection,
        xcb_intern_atom(connection, 0, static_cast<std::uint16_t>(name.size()), name.data()),
        nullptr);
    const auto result = reply ? reply->atom : xcb_atom_t{};
    std::free(reply);
    return result;
}

void setProperty(xcb_connection_t* connection, xcb_window_t window, xcb_atom_t property,
                 xcb_atom_t type, std::uint32_t value) {
    xcb_change_property(connection, XCB_PROP_MODE_REPLACE, window, property, type, 32, 1, &value);
}

void setClass(xcb_connection_t* connection, xcb_window_t window, const std::string& name) {
    const auto both = name + '\0' + name + '\0';
    xcb_change_property(connection, XCB_PROP_MODE_REPLACE, window, XCB_ATOM_WM_CLASS,
                        XCB_ATOM_STRING, 8, static_cast<std::uint32_t>(both.size()), both.data());
}

} // namespace

int main(int count, char** arguments) {
    if (count < 2) return 1;
    const std::string_view reaction = arguments[1];
    auto* connection = xcb_connect(nullptr, nullptr);
    if (xcb_connection_has_error(connection)) return 1;
    const auto* screen = xcb_setup_roots_iterator(xcb_get_setup(connection)).data;
    const xcb_window_t windows[]{xcb_generate_id(connection), xcb_generate_id(connection)};
    const auto deleteWindow = atom(connection, "WM_DELETE_WINDOW");
    const auto protocols = atom(connection, "WM_PROTOCOLS");
    char machine[256] = {};
    gethostname(machine, sizeof machine - 1);
    for (const auto window : windows) {
        // A compositor shows no window that nothing was painted in.
        xcb_create_window(connection, XCB_COPY_FROM_PARENT, window, screen->root, 0, 0, 90, 90, 0,
                          XCB_WINDOW_CLASS_INPUT_OUTPUT, XCB_COPY_FROM_PARENT, XCB_CW_BACK_PIXEL,
                          &screen->white_pixel);
        setProperty(connection, window, protocols, XCB_ATOM_ATOM, deleteWindow);
        setProperty(connection, window, atom(connection, "_NET_WM_PID"), XCB_ATOM_CARDINAL,
                    static_cast<std::uint32_t>(getpid()));
        xcb_change_property(connection, XCB_PROP_MODE_REPLACE, window, XCB_ATOM_WM_CLIENT_MACHINE,
                            XCB_ATOM_STRING, 8, static_cast<std::uint32_t>(std::strlen(machine)),
                            machine);
    }
    if (count > 2) {
        setProperty(connection, windows[1], atom(connection, "_NET_WM_WINDOW_TYPE"), XCB_ATOM_ATOM,
                    atom(connection, arguments[2]));
    } else {
        setProperty(connection, windows[1], XCB_ATOM_WM_TRANSIENT_FOR, XCB_ATOM_WINDOW, windows[0]);
    }
    for (int i = 0; i < 2; ++i) {
        if (count > 4) setClass(connection, windows[i], arguments[3 + i]);
        xcb_map_window(connection, windows[i]);
    }
    xcb_flush(connection);

    std::size_t open = std::size(windows);
    while (auto* event = xcb_wait_for_event(connection)) {
        const auto* message = reinterpret_cast<xcb_client_message_event_t*>(event);
        const bool asked = (event->response_type & 0x7f) == XCB_CLIENT_MESSAGE &&
                           message->type == protocols && message->data.data32[0] == deleteWindow;
        for (const auto window : windows) {
            const bool goes =
                reaction == "hide" || (reaction == "close" && window == message->window);
            if (!asked || !goes) continue;
            xcb_destroy_window(connection, window);
            --open;
        }
        std::free(event);
        xcb_flush(connection);
        if (open == 0 && reaction == "close") break;
    }
    xcb_disconnect(connection);
}
