#include "desktop/harness/Controls.h"

#include <algorithm>
#include <iterator>
#include <list>
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

/// One question to one element; a floating reference to its arguments, if it has any.
struct Question {
    Element element;
    const char* interface;
    const char* method;
    GVariant* arguments = nullptr;
};

/// The answers to all of them, asked at once, as each takes a turn of three processes by itself.
/// Nothing for what has gone.
std::vector<Variant> callAll(const Bus& bus, const std::vector<Question>& questions) {
    const std::shared_ptr<GMainContext> context(g_main_context_new(), g_main_context_unref);
    g_main_context_push_thread_default(context.get());
    struct Slot {
        std::size_t* left;
        Variant answer = nullptr;
    };
    std::size_t left = questions.size();
    std::vector<Slot> slots(questions.size(), {&left});
    for (std::size_t i = 0; i < questions.size(); ++i) {
        const auto& [element, interface, method, arguments] = questions[i];
        const auto take = [](GObject* source, GAsyncResult* result, gpointer data) {
            auto& slot = *static_cast<Slot*>(data);
            auto* answer =
                g_dbus_connection_call_finish(G_DBUS_CONNECTION(source), result, nullptr);
            if (answer) slot.answer = Variant(answer, g_variant_unref);
            --*slot.left;
        };
        g_dbus_connection_call(bus.get(), element.bus.c_str(), element.path.c_str(), interface,
                               method, arguments, nullptr, G_DBUS_CALL_FLAGS_NONE,
                               answerWithinMilliseconds, nullptr, take, &slots[i]);
    }
    while (left > 0)
        g_main_context_iteration(context.get(), TRUE);
    g_main_context_pop_thread_default(context.get());
    std::vector<Variant> answers;
    for (auto& slot : slots)
        answers.push_back(std::move(slot.answer));
    return answers;
}

/// The bits of an element's states, as AT-SPI numbers them.
class States {
public:
    explicit States(const Variant& answer) {
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

std::string nameIn(const Variant& answer) {
    if (!answer) return {};
    GVariant* value = nullptr;
    g_variant_get(answer.get(), "(v)", &value);
    const Variant owner(value, g_variant_unref);
    return g_variant_is_of_type(value, G_VARIANT_TYPE_STRING) ? g_variant_get_string(value, nullptr)
                                                              : "";
}

std::string roleIn(const Variant& answer) {
    if (!answer) return {};
    const char* text = nullptr;
    g_variant_get(answer.get(), "(&s)", &text);
    return text;
}

Rect extentsIn(const Variant& answer) {
    if (!answer) return {};
    gint32 x = 0, y = 0, width = 0, height = 0;
    g_variant_get(answer.get(), "((iiii))", &x, &y, &width, &height);
    return {double(x), double(y), double(width), double(height)};
}

std::vector<Element> childrenIn(const Variant& answer) {
    std::vector<Element> found;
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

std::vector<Element> children(const Bus& bus, const Element& element) {
    return childrenIn(call(bus, element, accessible, "GetChildren"));
}

/// What shows itself in a window, parents before their children: a question to all of a floor at a
/// time.
std::list<Control> shownIn(const Bus& bus, const Element& window) {
    constexpr guint32 onScreen = 0;
    std::list<Control> found(1);
    struct Child {
        Element element;
        std::list<Control>::iterator parent;
    };
    std::vector<Child> floor{{window, found.begin()}};
    while (!floor.empty()) {
        std::vector<Question> questions;
        for (const auto& [element, parent] : floor) {
            questions.push_back({element, accessible, "GetState"});
            questions.push_back({element, "org.freedesktop.DBus.Properties", "Get",
                                 g_variant_new("(ss)", accessible, "Name")});
            questions.push_back({element, accessible, "GetRoleName"});
            questions.push_back({element, "org.a11y.atspi.Component", "GetExtents",
                                 g_variant_new("(u)", onScreen)});
            questions.push_back({element, accessible, "GetChildren"});
        }
        const auto answers = callAll(bus, questions);
        std::vector<Child> next;
        // From the last, as each goes right behind its parent.
        for (std::size_t i = floor.size(); i-- > 0;) {
            const auto& [element, parent] = floor[i];
            const auto* answer = &answers[i * questions.size() / floor.size()];
            const States states(answer[0]);
            if (!states.isShowing()) continue;
            const auto control = found.insert(std::next(parent), {.name = nameIn(answer[1]),
                                                                  .role = roleIn(answer[2]),
                                                                  .isEnabled = states.isEnabled(),
                                                                  .place = extentsIn(answer[3]),
                                                                  .hasKeyboard = states.isFocused(),
                                                                  .bus = element.bus,
                                                                  .path = element.path});
            for (const auto& child : childrenIn(answer[4]))
                next.push_back({child, control});
        }
        floor = std::move(next);
    }
    return found;
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

std::vector<Control> Accessibility::shownBy(pid_t pid) const {
    std::vector<Control> found;
    for (const auto& application : children(bus_, {"org.a11y.atspi.Registry", rootPath})) {
        const auto owner =
            call(bus_, {"org.freedesktop.DBus", "/org/freedesktop/DBus"}, "org.freedesktop.DBus",
                 "GetConnectionUnixProcessID", g_variant_new("(s)", application.bus.c_str()));
        guint32 ownerPid = 0;
        if (owner) g_variant_get(owner.get(), "(u)", &ownerPid);
        if (pid_t(ownerPid) != pid) continue;
        for (const auto& window : children(bus_, application)) {
            auto shown = shownIn(bus_, window);
            std::erase_if(shown, [](const Control& control) { return control.bus.empty(); });
            for (auto& control : shown) {
                control.isWindow = &control == &shown.front() && !control.name.empty();
                found.push_back(std::move(control));
            }
        }
    }
    return found;
}

std::vector<Control> Accessibility::controls(pid_t pid) const {
    auto found = shownBy(pid);
    std::erase_if(found, [](const Control& control) { return control.name.empty(); });
    return found;
}

bool Accessibility::write(pid_t pid, const std::string& text, bool isAll) const {
    return std::ranges::any_of(shownBy(pid), [&](const Control& control) {
        if (control.role != "text") return false;
        auto* const words = isAll ? g_variant_new("(s)", text.c_str())
                                  : g_variant_new("(isi)", 0, text.c_str(), gint32(text.size()));
        const auto done = call(bus_, {control.bus, control.path}, "org.a11y.atspi.EditableText",
                               isAll ? "SetTextContents" : "InsertText", words);
        gboolean isDone = FALSE;
        if (done) g_variant_get(done.get(), "(b)", &isDone);
        return bool(isDone);
    });
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

Accessibility::~Accessibility() {
    if (listener_) g_dbus_connection_signal_unsubscribe(bus_.get(), listener_);
}

const std::vector<std::string>& Accessibility::announced() {
    if (!listener_) {
        call(bus_, {"org.a11y.atspi.Registry", "/org/a11y/atspi/registry"},
             "org.a11y.atspi.Registry", "RegisterEvent",
             g_variant_new("(sass)", "object:state-changed:showing", nullptr, ""));
        const auto take = [](GDBusConnection*, const char* sender, const char* path, const char*,
                             const char*, GVariant* arguments, gpointer self) {
            gint32 isOn = 0;
            g_variant_get_child(arguments, 1, "i", &isOn);
            if (isOn) static_cast<Accessibility*>(self)->notice(sender, path);
        };
        listener_ = g_dbus_connection_signal_subscribe(
            bus_.get(), nullptr, "org.a11y.atspi.Event.Object", "StateChanged", nullptr, "showing",
            G_DBUS_SIGNAL_FLAGS_NONE, take, this, nullptr);
    }
    while (g_main_context_iteration(nullptr, FALSE)) {
    }
    return announced_;
}

void Accessibility::notice(const std::string& bus, const std::string& path) {
    const Element element{bus, path};
    if (roleIn(call(bus_, element, accessible, "GetRoleName")) != "notification") return;
    announced_.push_back(nameIn(call(bus_, element, "org.freedesktop.DBus.Properties", "Get",
                                     g_variant_new("(ss)", accessible, "Name"))));
}

} // namespace corvane::desktop
