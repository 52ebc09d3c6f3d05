#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string>

#include <xcb/xcb.h>

// A client with as many windows as the argument says, which stay until it is killed.

int main(int count, char** arguments) {
    if (count < 2) return 1;
    auto* connection = xcb_connect(nullptr, nullptr);
    if (xcb_connection_has_error(connection)) return 1;
    const auto* screen = xcb_setup_roots_iterator(xcb_get_setup(connection)).data;
    const int windows = std::atoi(arguments[1]);
    for (int i = 0; i < windows; ++i) {
        const auto window = xcb_generate_id(connection);
        xcb_create_window(connection, XCB_COPY_FROM_PARENT, window, screen->root, 0, 0, 200, 120, 0,
                          XCB_WINDOW_CLASS_INPUT_OUTPUT, XCB_COPY_FROM_PARENT, 0, nullptr);
        const auto title = "Window " + std::to_string(i);
        xcb_change_property(connection, XCB_PROP_MODE_REPLACE, window, XCB_ATOM_WM_NAME,
                            XCB_ATOM_STRING, 8, static_cast<std::uint32_t>(title.size()),
                            title.data());
        constexpr char className[] = "many\0Many";
        xcb_change_property(connection, XCB_PROP_MODE_REPLACE, window, XCB_ATOM_WM_CLASS,
                            XCB_ATOM_STRING, 8, sizeof className, className);
        xcb_map_window(connection, window);
    }
    xcb_flush(connection);
    while (auto* event = xcb_wait_for_event(connection))
        std::free(event);
    xcb_disconnect(connection);
}
