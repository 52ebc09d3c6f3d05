#include "machine/OwnWindows.h"

#include <iterator>
#include <string_view>

#include <unistd.h>

// A client with two windows. Asked to close one, it does where the first argument is "close", and
// ends with the last. The second window has the type that the second argument names, or else
// belongs to the first. Two more are their classes.
int main(int count, char** arguments) {
    if (count < 2) return 1;
    const std::string_view reaction = arguments[1];
    corvane::machine::OwnWindows own;
    const xcb_window_t windows[]{own.make(), own.make()};
    char machine[256] = {};
    gethostname(machine, sizeof machine - 1);
    for (const auto window : windows) {
        own.setAtom(window, "WM_PROTOCOLS", "WM_DELETE_WINDOW");
        own.setList(window, "_NET_WM_PID", {static_cast<std::uint32_t>(getpid())});
        own.set(window, "WM_CLIENT_MACHINE", machine);
    }
    if (count > 2) {
        own.setAtom(windows[1], "_NET_WM_WINDOW_TYPE", arguments[2]);
    } else {
        own.setList(windows[1], "WM_TRANSIENT_FOR", {windows[0]}, XCB_ATOM_WINDOW);
    }
    for (int i = 0; i < 2; ++i) {
        const std::string name = count > 4 ? arguments[3 + i] : "";
        if (!name.empty()) own.set(windows[i], "WM_CLASS", name + '\0' + name + '\0');
        own.show(windows[i]);
    }

    const auto protocols = own.atom("WM_PROTOCOLS");
    const auto deleteWindow = own.atom("WM_DELETE_WINDOW");
    std::size_t open = std::size(windows);
    while (const auto event = own.wait()) {
        const auto& message = reinterpret_cast<const xcb_client_message_event_t&>(*event);
        const bool asked = (event->response_type & 0x7f) == XCB_CLIENT_MESSAGE &&
                           message.type == protocols && message.data.data32[0] == deleteWindow;
        if (!asked || reaction != "close") continue;
        own.close(message.window);
        if (--open == 0) break;
    }
}
