#pragma once

#include "linux/windows/x11/X11Connection.h"

#include <optional>

namespace corvane::x11 {

/// In pixels of the root window, y downward.
struct Frame {
    int x = 0;
    int y = 0;
    int width = 0;
    int height = 0;

    bool operator==(const Frame&) const = default;
    PixelRect rect() const { return {{double(x), double(y)}, {double(width), double(height)}}; }
};

/// The widths of something around a window.
struct Margins {
    int left = 0;
    int right = 0;
    int top = 0;
    int bottom = 0;

    bool operator==(const Margins&) const = default;
};

/// "_NET_WM_STATE".
struct WindowStates {
    bool fullscreen = false;
    bool maximizedHorizontally = false;
    bool maximizedVertically = false;
    bool shaded = false;
    bool hidden = false;
    bool above = false;
    bool below = false;

    bool operator==(const WindowStates&) const = default;
};

/// The number of a window that is on all desktops.
inline constexpr std::uint32_t everyDesktop = 0xFFFFFFFF;

/// How a client window stands on the display.
struct WindowGeometry {
    Frame client = {};
    /// What the window manager draws around the client's rectangle.
    Margins decorations = {};
    /// What a client that decorates itself draws inside of it as shadow; nothing where it doesn't
    /// say.
    std::optional<Margins> shadows = {};
    WindowStates states = {};
    /// Mapped, and so are all that it is in.
    bool isViewable = false;
    /// Nothing where the window doesn't say.
    std::optional<std::uint32_t> desktop = {};

    /// On the desktop of that number or on all, and neither iconified nor hidden otherwise.
    bool isOnScreen(std::optional<std::uint32_t> currentDesktop) const;
    /// What a person sees of the window.
    Frame visible() const;
    /// With the decorations, and with shadows that the client draws.
    Frame decorated() const;
};

/// A question for one window's geometry on its way to the server.
struct GeometryRequest {
    xcb_get_geometry_cookie_t size;
    xcb_translate_coordinates_cookie_t origin;
    xcb_get_property_cookie_t decorations;
    xcb_get_property_cookie_t shadows;
    xcb_get_property_cookie_t states;
    xcb_get_window_attributes_cookie_t attributes;
    xcb_get_property_cookie_t desktop;
};
GeometryRequest requestGeometry(const Server& server, xcb_window_t window);

/// Nothing where the window is gone or the server doesn't answer.
std::optional<WindowGeometry> readGeometry(Server& server, const GeometryRequest& request,
                                           Deadline deadline);

} // namespace corvane::x11
