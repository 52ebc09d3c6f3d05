#pragma once

#include "linux/windows/x11/X11WindowGeometry.h"

#include <string>
#include <vector>

namespace corvane::machine {

/// Windows of this process, which say what a test makes them say.
struct OwnWindows {
    OwnWindows() : connection_(xcb_connect(nullptr, nullptr)) {
        screen_ = xcb_setup_roots_iterator(xcb_get_setup(connection_)).data;
    }
    ~OwnWindows() { xcb_disconnect(connection_); }
    OwnWindows(const OwnWindows&) = delete;

    xcb_window_t make(const x11::Frame& frame = {0, 0, 90, 90}) {
        const auto window = xcb_generate_id(connection_);
        // A compositor shows no window that nothing was painted in.
        xcb_create_window(connection_, XCB_COPY_FROM_PARENT, window, screen_->root,
                          static_cast<std::int16_t>(frame.x), static_cast<std::int16_t>(frame.y),
                          static_cast<std::uint16_t>(frame.width),
                          static_cast<std::uint16_t>(frame.height), 0,
                          XCB_WINDOW_CLASS_INPUT_OUTPUT, XCB_COPY_FROM_PARENT, XCB_CW_BACK_PIXEL,
                          &screen_->white_pixel);
        return window;
    }
    xcb_atom_t atom(const std::string& name) {
        const x11::Reply<xcb_intern_atom_reply_t> reply(xcb_intern_atom_reply(
            connection_,
            xcb_intern_atom(connection_, 0, static_cast<std::uint16_t>(name.size()), name.data()),
            nullptr));
        return reply->atom;
    }
    void set(xcb_window_t window, const std::string& property, const std::string& bytes,
             std::uint8_t format = 8, xcb_atom_t type = XCB_ATOM_STRING) {
        xcb_change_property(connection_, XCB_PROP_MODE_REPLACE, window, atom(property), type,
                            format, static_cast<std::uint32_t>(bytes.size() * 8 / format),
                            bytes.data());
    }
    void setList(xcb_window_t window, const std::string& property,
                 const std::vector<std::uint32_t>& values, xcb_atom_t type = XCB_ATOM_CARDINAL) {
        set(window, property,
            {reinterpret_cast<const char*>(values.data()), values.size() * sizeof values[0]}, 32,
            type);
        xcb_flush(connection_);
    }
    void setAtom(xcb_window_t window, const std::string& property, const std::string& value) {
        setList(window, property, {atom(value)}, XCB_ATOM_ATOM);
    }
    void set(xcb_window_t window, const std::string& property, std::uint32_t value) {
        set(window, property, {reinterpret_cast<const char*>(&value), sizeof value}, 32);
    }
    void show(xcb_window_t window) {
        xcb_map_window(connection_, window);
        xcb_flush(connection_);
    }
    void close(xcb_window_t window) {
        xcb_destroy_window(connection_, window);
        xcb_flush(connection_);
    }
    void remove(xcb_window_t window, const std::string& property) {
        xcb_delete_property(connection_, window, atom(property));
    }
    /// The next event, whenever it comes; none once the server has gone.
    x11::Reply<xcb_generic_event_t> wait() {
        return x11::Reply<xcb_generic_event_t>(xcb_wait_for_event(connection_));
    }
    xcb_window_t root() const { return screen_->root; }
    /// The windows that the window manager tells of, oldest first.
    std::vector<std::uint32_t> managed() {
        const x11::Reply<xcb_get_property_reply_t> reply(xcb_get_property_reply(
            connection_,
            xcb_get_property(connection_, 0, root(), atom("_NET_CLIENT_LIST"), XCB_ATOM_WINDOW, 0,
                             1024),
            nullptr));
        const auto* first = static_cast<const std::uint32_t*>(xcb_get_property_value(reply.get()));
        return {first, first + xcb_get_property_value_length(reply.get()) / sizeof *first};
    }

private:
    xcb_connection_t* connection_;
    xcb_screen_t* screen_;
};

} // namespace corvane::machine
