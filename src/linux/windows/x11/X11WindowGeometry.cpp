#include "linux/windows/x11/X11WindowGeometry.h"

#include <algorithm>

namespace corvane::x11 {
namespace {

/// What a client says may be anything; more than this is no frame.
constexpr std::uint32_t widestMargin = 4096;

std::optional<Margins> marginsIn(const Property& property) {
    const auto values = property.numbers();
    if (values.size() < 4) return std::nullopt;
    if (std::ranges::any_of(values, [](auto value) { return value > widestMargin; })) {
        return std::nullopt;
    }
    const auto at = [&](std::size_t index) { return static_cast<int>(values[index]); };
    return Margins{at(0), at(1), at(2), at(3)};
}

WindowStates statesIn(const Property& property, const Atoms& atoms) {
    const auto values = property.numbers();
    const auto has = [&](xcb_atom_t state) { return std::ranges::count(values, state) > 0; };
    return {.fullscreen = has(atoms.stateFullscreen),
            .maximizedHorizontally = has(atoms.stateMaximizedHorz),
            .maximizedVertically = has(atoms.stateMaximizedVert),
            .shaded = has(atoms.stateShaded),
            .hidden = has(atoms.stateHidden),
            .above = has(atoms.stateAbove),
            .below = has(atoms.stateBelow)};
}

} // namespace

// Some window managers leave windows that are iconified or on another desktop mapped.
bool WindowGeometry::isOnScreen(std::optional<std::uint32_t> currentDesktop) const {
    const bool isHere =
        !desktop || !currentDesktop || desktop == everyDesktop || desktop == currentDesktop;
    return isViewable && isHere && !states.hidden;
}

// The real parent window isn't asked: on some window managers it is wider than what is to be seen.
Frame WindowGeometry::visible() const {
    const Frame outer = decorated();
    const Margins inner = shadows.value_or(Margins{});
    return {outer.x + inner.left, outer.y + inner.top, outer.width - inner.left - inner.right,
            outer.height - inner.top - inner.bottom};
}

Frame WindowGeometry::decorated() const {
    return {client.x - decorations.left, client.y - decorations.top,
            client.width + decorations.left + decorations.right,
            client.height + decorations.top + decorations.bottom};
}

GeometryRequest requestGeometry(const Server& server, xcb_window_t window) {
    const auto& atoms = server.atoms();
    return {.size = xcb_get_geometry(server.get(), window),
            .origin = xcb_translate_coordinates(server.get(), window, server.root(), 0, 0),
            .decorations = server.requestProperty(window, atoms.netFrameExtents),
            .shadows = server.requestProperty(window, atoms.gtkFrameExtents),
            .states = server.requestProperty(window, atoms.netWmState),
            .attributes = xcb_get_window_attributes(server.get(), window),
            .desktop = server.requestProperty(window, atoms.netWmDesktop)};
}

std::optional<WindowGeometry> readGeometry(Server& server, const GeometryRequest& request,
                                           Deadline deadline) {
    const auto size = server.reply<xcb_get_geometry_reply_t>(request.size, deadline);
    const auto origin = server.reply<xcb_translate_coordinates_reply_t>(request.origin, deadline);
    const auto decorations = server.property(request.decorations, deadline);
    const auto shadows = server.property(request.shadows, deadline);
    const auto states = server.property(request.states, deadline);
    const auto attributes =
        server.reply<xcb_get_window_attributes_reply_t>(request.attributes, deadline);
    const auto desktop = server.property(request.desktop, deadline).firstNumber();
    if (!size || !origin || !attributes) return std::nullopt;
    return WindowGeometry{
        .client = {origin->dst_x, origin->dst_y, size->width, size->height},
        .decorations = marginsIn(decorations).value_or(Margins{}),
        .shadows = marginsIn(shadows),
        .states = statesIn(states, server.atoms()),
        .isViewable = attributes->map_state == XCB_MAP_STATE_VIEWABLE,
        .desktop = desktop,
    };
}

} // namespace corvane::x11
