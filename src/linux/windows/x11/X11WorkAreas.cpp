#include "linux/windows/x11/X11WorkAreas.h"

#include "linux/windows/x11/X11ClientWindows.h"

#include <algorithm>
#include <string>

namespace corvane::x11 {
namespace {

int rightOf(const Frame& frame) {
    return frame.x + frame.width;
}

int bottomOf(const Frame& frame) {
    return frame.y + frame.height;
}

bool contains(const Frame& outer, const Frame& inner) {
    return inner.x >= outer.x && inner.y >= outer.y && rightOf(inner) <= rightOf(outer) &&
           bottomOf(inner) <= bottomOf(outer) && inner.width > 0 && inner.height > 0;
}

/// Rectangles of four numbers each.
std::vector<Frame> framesIn(const Property& property) {
    const auto values = property.numbers();
    const auto at = [&](std::size_t index) { return static_cast<int>(values[index]); };
    std::vector<Frame> frames;
    for (std::size_t i = 0; i + 3 < values.size(); i += 4)
        frames.push_back({at(i), at(i + 1), at(i + 2), at(i + 3)});
    return frames;
}

/// Has one rectangle a monitor, in an order of the window manager's own.
std::vector<Frame> managersAreas(Server& server, std::uint32_t desktop, Deadline deadline) {
    const std::string name = "_GTK_WORKAREAS_D" + std::to_string(desktop);
    constexpr std::uint8_t onlyIfItExists = 1;
    const auto atom = server.reply<xcb_intern_atom_reply_t>(
        xcb_intern_atom(server.get(), onlyIfItExists, static_cast<std::uint16_t>(name.size()),
                        name.data()),
        deadline);
    if (!atom || atom->atom == XCB_NONE) return {};
    return framesIn(server.property(server.requestProperty(server.root(), atom->atom), deadline));
}

/// The width at one edge of the screen that a panel wants for itself, from `first` to `last` along
/// that edge.
struct Strut {
    enum Edge { left, right, top, bottom } edge;
    int width;
    int first;
    int last;
};

/// `values` are the widths at the left, right, top and bottom; behind them the first and last pixel
/// of each, if the panel says so.
void addStruts(std::vector<Strut>& struts, const std::vector<std::uint32_t>& values) {
    constexpr std::size_t edges = 4;
    constexpr std::uint32_t most = 0xFFFF;
    if (values.size() < edges) return;
    const auto at = [&](std::size_t index) {
        return static_cast<int>(std::min(values[index], most));
    };
    const bool isPartial = values.size() >= 3 * edges;
    for (std::size_t edge = 0; edge < edges; ++edge) {
        const int first = isPartial ? at(edges + 2 * edge) : 0;
        const int last = isPartial ? at(edges + 2 * edge + 1) : 0;
        const bool isWhole = last <= first;
        if (at(edge) == 0) continue;
        struts.push_back({static_cast<Strut::Edge>(edge), at(edge), isWhole ? 0 : first,
                          isWhole ? int{most} : last});
    }
}

/// Nearly all windows have none, so only those that do are looked at more closely.
std::vector<Strut> panelsStruts(Server& server, std::optional<std::uint32_t> currentDesktop,
                                Deadline deadline) {
    struct Request {
        xcb_window_t window;
        xcb_get_property_cookie_t partial;
        xcb_get_property_cookie_t whole;
    };
    struct Panel {
        std::vector<std::uint32_t> values;
        GeometryRequest geometry;
    };
    const auto& atoms = server.atoms();
    std::vector<Request> requests;
    for (const auto window : clientWindowIds(server, deadline)) {
        requests.push_back({window, server.requestProperty(window, atoms.netWmStrutPartial),
                            server.requestProperty(window, atoms.netWmStrut)});
    }
    std::vector<Panel> panels;
    for (const auto& request : requests) {
        const auto partial = server.property(request.partial, deadline);
        const auto whole = server.property(request.whole, deadline);
        if (!partial.exists() && !whole.exists()) continue;
        panels.push_back({(partial.exists() ? partial : whole).numbers(),
                          requestGeometry(server, request.window)});
    }
    std::vector<Strut> struts;
    for (const auto& panel : panels) {
        const auto geometry = readGeometry(server, panel.geometry, deadline);
        if (geometry && geometry->isOnScreen(currentDesktop)) addStruts(struts, panel.values);
    }
    return struts;
}

/// What is left of the monitor. Struts count from the edge of the whole screen, so one that would
/// take all of a monitor belongs to a panel behind it.
Frame without(const Strut& strut, Frame monitor, const Frame& root) {
    const bool isUpright = strut.edge == Strut::left || strut.edge == Strut::right;
    const int begin = isUpright ? monitor.y : monitor.x;
    const int end = isUpright ? bottomOf(monitor) : rightOf(monitor);
    if (strut.last < begin || strut.first >= end) return monitor;
    const auto taken = [&] {
        switch (strut.edge) {
        case Strut::left:
            return strut.width - monitor.x;
        case Strut::right:
            return rightOf(monitor) - (rightOf(root) - strut.width);
        case Strut::top:
            return strut.width - monitor.y;
        default:
            return bottomOf(monitor) - (bottomOf(root) - strut.width);
        }
    }();
    int& length = isUpright ? monitor.width : monitor.height;
    if (taken <= 0 || taken >= length) return monitor;
    length -= taken;
    if (strut.edge == Strut::left) monitor.x += taken;
    if (strut.edge == Strut::top) monitor.y += taken;
    return monitor;
}

} // namespace

std::vector<Frame> workAreas(Server& server, const Monitors& monitors, Deadline deadline) {
    const auto& atoms = server.atoms();
    const auto current = server.requestProperty(server.root(), atoms.netCurrentDesktop);
    const auto whole = server.requestProperty(server.root(), atoms.netWorkarea);
    const auto desktop = server.property(current, deadline).firstNumber();
    const auto wholeAreas = framesIn(server.property(whole, deadline));

    auto areas = monitors.frames;
    const auto each = managersAreas(server, desktop.value_or(0), deadline);
    if (!each.empty()) {
        for (auto& area : areas) {
            const auto found = std::ranges::find_if(
                each, [&](const Frame& managers) { return contains(area, managers); });
            if (found != each.end()) area = *found;
        }
        return areas;
    }
    const auto struts = panelsStruts(server, desktop, deadline);
    for (auto& area : areas) {
        for (const auto& strut : struts)
            area = without(strut, area, monitors.root);
    }
    const bool isSaid = desktop.value_or(0) < wholeAreas.size();
    if (struts.empty() && areas.size() == 1 && isSaid) {
        const auto& said = wholeAreas[desktop.value_or(0)];
        if (contains(areas.front(), said)) areas.front() = said;
    }
    return areas;
}

} // namespace corvane::x11
