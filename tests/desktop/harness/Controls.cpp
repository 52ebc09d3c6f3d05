#include "desktop/harness/Controls.h"

#include <stdexcept>

#include <gio/gio.h>

namespace corvane::desktop {
namespace {

using Bus = std::shared_ptr<GDBusConnection>;
using Variant = std::shared_ptr<GVariant>;
constexpr int answerWithinMilliseconds = 5000;
constexpr auto rootPath = "/org/a11y/atspi/accessible/root";
constexpr auto accessible = "org.a11y.atspi.Accessible";

struct Element {
    std::string bus;
    std::string path;
};

Bus connected(const std::string& address) {
    constexpr auto flags = GDBusConnectionFlags(G_DBUS_CONNECTION_FLAGS_AUTHENTICATION_CLIENT |
                                                G_DBUS_CONNECTION_FLAGS_MESSAGE_BUS_CONNECTION);
    auto* bus =
        g_dbus_connection_new_for_address_sync(address.c_str(), flags, nullptr, nullptr, nullptr);
    if (!bus) throw std::runtime_error("no bus at " + address);
    return Bus(bus, g_object_unref);
}

/// Nothing where the element has gone, as it can at any moment.
Variant call(const Bus& bus, const Element& element, const char* interface, const char* method,
             GVariant* arguments = nullptr) {
    auto* answer = g_dbus_connection_call_sync(
        bus.get(), element.bus.c_str(), element.path.c_str(), interface, method, arguments, nullptr,
        G_DBUS_CALL_FLAGS_NONE, answerWithinMilliseconds, nullptr, nullptr);
    return answer ? Variant(answer, g_variant_unref) : nullptr;
}

/// The bits of the element's states, as AT-SPI numbers them.
class States {
public:
    States(const Bus& bus, const Element& element) {
        const auto answer = call(bus, element, accessible, "GetState");
        if (!answer || !g_variant_is_of_type(answer.get(), G_VARIANT_TYPE("(au)"))) return;
        const Variant words(g_variant_get_child_value(answer.get(), 0), g_variant_unref);
        if (g_variant_n_children(words.get()) > 0) {
            g_variant_get_child(words.get(), 0, "u", &bits_);
        }
    }
    bool isEnabled() const { return bits_ >> 8 & 1; }
    bool isShowing() const { return bits_ >> 25 & 1; }
    bool isFocused() const { return bits_ >> 12 & 1; }

private:
    guint32 bits_ = 0;
};

std::string name(const Bus& bus, const Element& element) {
    const auto answer = call(bus, element, "org.freedesktop.DBus.Properties", "Get",
                             g_variant_new("(ss)", accessible, "Name"));
    if (!answer) return {};
    GVariant* value = nullptr;
    g_variant_get(answer.get(), "(v)", &value);
    const Variant owner(value, g_variant_unref);
    return g_variant_is_of_type(value, G_VARIANT_TYPE_STRING) ? g_variant_get_string(value, nullptr)
                                                              : "";
}

std::string roleName(const Bus& bus, const Element& element) {
    const auto answer = call(bus, element, accessible, "GetRoleName");
    if (!answer) return {};
    const char* text = nullptr;
    g_variant_get(answer.get(), "(&s)", &text);
    return text;
}

Rect extents(const Bus& bus, const Element& element) {
    constexpr guint32 onScreen = 0;
    const auto answer = call(bus, element, "org.a11y.atspi.Component", "GetExtents",
                             g_variant_new("(u)", onScreen));
    if (!answer) return {};
    gint32 x = 0, y = 0, width = 0, height = 0;
    g_variant_get(answer.get(), "((iiii))", &x, &y, &width, &height);
    return {double(x), double(y), double(width), double(height)};
}

std::vector<Element> children(const Bus& bus, const Element& element) {
    std::vector<Element> found;
    const auto answer = call(bus, element, accessible, "GetChildren");
    if (!answer) return found;
    GVariantIter* each = nullptr;
    g_variant_get(answer.get(), "(a(so))", &each);
    const char* owner = nullptr;
    const char* path = nullptr;
    while (g_variant_iter_next(each, "(&s&o)", &owner, &path))
        found.push_back({owner, path});
    g_variant_iter_free(each);
    return found;
}

void collect(const Bus& bus, const Element& element, std::vector<Control>& found) {
    const States states(bus, element);
    if (!states.isShowing()) return;
    if (const auto text = name(bus, element); !text.empty()) {
        found.push_back({.name = text,
                         .role = roleName(bus, element),
                         .isEnabled = states.isEnabled(),
                         .place = extents(bus, element),
                         .hasKeyboard = states.isFocused(),
                         .bus = element.bus,
                         .path = element.path});
    }
    for (const auto& child : children(bus, element))
        collect(bus, child, found);
}

} // namespace

Accessibility::Accessibility(const std::string& sessionBusAddress) {
    const auto session = connected(sessionBusAddress);
    const auto answer =
        call(session, {"org.a11y.Bus", "/org/a11y/bus"}, "org.a11y.Bus", "GetAddress");
    if (!answer) throw std::runtime_error("the session has no accessibility bus");
    const char* address = nullptr;
    g_variant_get(answer.get(), "(&s)", &address);
    bus_ = connected(address);
}

std::vector<Control> Accessibility::controls(pid_t pid) const {
    std::vector<Control> found;
    for (const auto& application : children(bus_, {"org.a11y.atspi.Registry", rootPath})) {
        const auto owner =
            call(bus_, {"org.freedesktop.DBus", "/org/freedesktop/DBus"}, "org.freedesktop.DBus",
                 "GetConnectionUnixProcessID", g_variant_new("(s)", application.bus.c_str()));
        guint32 ownerPid = 0;
        if (owner) g_variant_get(owner.get(), "(u)", &ownerPid);
        if (pid_t(ownerPid) != pid) continue;
        for (const auto& window : children(bus_, application)) {
            const auto before = found.size();
            collect(bus_, window, found);
            if (found.size() > before) found[before].isWindow = true;
        }
    }
    return found;
}

bool Accessibility::act(const Control& control, const std::string& action) const {
    constexpr auto interface = "org.a11y.atspi.Action";
    const Element element{control.bus, control.path};
    const auto offered = call(bus_, element, interface, "GetActions");
    if (!offered || !g_variant_is_of_type(offered.get(), G_VARIANT_TYPE("(a(sss))"))) return false;
    const Variant actions(g_variant_get_child_value(offered.get(), 0), g_variant_unref);
    for (gsize i = 0; i < g_variant_n_children(actions.get()); ++i) {
        const char* name = nullptr;
        g_variant_get_child(actions.get(), i, "(&sss)", &name, nullptr, nullptr);
        if (name != action) continue;
        const auto done =
            call(bus_, element, interface, "DoAction", g_variant_new("(i)", gint32(i)));
        gboolean isDone = FALSE;
        if (done) g_variant_get(done.get(), "(b)", &isDone);
        return isDone;
    }
    return false;
}

} // namespace corvane::desktop
