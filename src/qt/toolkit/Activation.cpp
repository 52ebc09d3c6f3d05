#include "qt/toolkit/Activation.h"

#include <QGuiApplication>
#include <QWindow>
#include <cstdlib>
#include <memory>
#include <string_view>

#include <xcb/xcb.h>

namespace corvane {

namespace {

/// The window manager is asked as a pager asks it: it takes that for the user's own wish.
void askAsPager(xcb_connection_t* display, xcb_window_t window) {
    constexpr std::string_view name = "_NET_ACTIVE_WINDOW";
    constexpr std::uint32_t pager = 2;
    const auto cookie = xcb_intern_atom(display, false, std::uint16_t(name.size()), name.data());
    const std::unique_ptr<xcb_intern_atom_reply_t, decltype(&std::free)> atom(
        xcb_intern_atom_reply(display, cookie, nullptr), &std::free);
    if (!atom) return;
    xcb_client_message_event_t message{};
    message.response_type = XCB_CLIENT_MESSAGE;
    message.format = 32;
    message.window = window;
    message.type = atom->atom;
    message.data.data32[0] = pager;
    message.data.data32[1] = XCB_CURRENT_TIME;
    const auto root = xcb_setup_roots_iterator(xcb_get_setup(display)).data->root;
    xcb_send_event(display, false, root,
                   XCB_EVENT_MASK_SUBSTRUCTURE_REDIRECT | XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY,
                   reinterpret_cast<const char*>(&message));
    xcb_flush(display);
}

} // namespace

void activateIgnoringOthers(QWindow& window) {
    window.requestActivate();
    const auto* x11 = qGuiApp->nativeInterface<QNativeInterface::QX11Application>();
    if (x11 && x11->connection() && window.handle())
        askAsPager(x11->connection(), xcb_window_t(window.winId()));
}

} // namespace corvane
