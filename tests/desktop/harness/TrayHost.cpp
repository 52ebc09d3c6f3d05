#include "desktop/harness/TrayHost.h"

#include "desktop/harness/Process.h"
#include "foundation/Text.h"

namespace corvane::desktop {

namespace {

using Variant = std::shared_ptr<GVariant>;

constexpr auto xml = "<interface name='org.kde.StatusNotifierWatcher'>"
                     "<method name='RegisterStatusNotifierItem'><arg type='s' direction='in'/>"
                     "</method><property name='IsStatusNotifierHostRegistered' type='b' "
                     "access='read'/></interface>";
constexpr auto menuPath = "/MenuBar";
constexpr auto menuInterface = "com.canonical.dbusmenu";

Variant owned(GVariant* value) {
    return Variant(value, g_variant_unref);
}

/// A label has underscores before letters of the keyboard, and two for one that is shown.
std::string shownLabel(const std::string& label) {
    std::string shown;
    for (std::size_t i = 0; i < label.size(); ++i) {
        if (label[i] == '_' && ++i == label.size()) break;
        shown += label[i];
    }
    return shown;
}

TrayMenuItem readItem(GVariant* item) {
    TrayMenuItem result;
    GVariant* found = nullptr;
    g_variant_get(item, "(i@a{sv}@av)", &result.id, &found, nullptr);
    const auto properties = owned(found);
    const char* text = nullptr;
    if (g_variant_lookup(found, "label", "&s", &text)) result.label = shownLabel(text);
    if (g_variant_lookup(found, "type", "&s", &text) && text == std::string_view("separator")) {
        result.label = "-";
    }
    gboolean isEnabled = true;
    g_variant_lookup(found, "enabled", "b", &isEnabled);
    result.isEnabled = isEnabled;
    gint32 state = 0;
    if (g_variant_lookup(found, "toggle-state", "i", &state)) result.state = state == 1;
    return result;
}

} // namespace

TrayHost::TrayHost(const std::string& busAddress)
    : watcher_(busAddress, "org.kde.StatusNotifierWatcher", {{"/StatusNotifierWatcher", xml}},
               [this](const BusService::Call& call) -> GVariant* {
                   if (call.method == "Get") return g_variant_new_boolean(true);
                   const std::lock_guard lock(mutex_);
                   item_ = call.sender;
                   return nullptr;
               }) {}

std::string TrayHost::item() const {
    const std::lock_guard lock(mutex_);
    return item_;
}

std::vector<TrayMenuItem> TrayHost::menu() const {
    constexpr int wholeDepth = -1;
    std::vector<TrayMenuItem> items;
    if (item().empty()) return items;
    const auto answer = watcher_.call(item(), menuPath, menuInterface, "GetLayout",
                                      g_variant_new("(iias)", 0, wholeDepth, nullptr));
    if (!answer) return items;
    GVariant* children = nullptr;
    g_variant_get(answer.get(), "(u(i@a{sv}@av))", nullptr, nullptr, nullptr, &children);
    const auto all = owned(children);
    for (gsize i = 0; i < g_variant_n_children(children); ++i) {
        GVariant* child = nullptr;
        g_variant_get_child(children, i, "v", &child);
        items.push_back(readItem(owned(child).get()));
    }
    return items;
}

std::string TrayHost::shownMenu() const {
    std::vector<std::string> lines;
    for (const auto& item : menu()) {
        const std::string state = item.state ? (*item.state ? "[x] " : "[ ] ") : "";
        const bool isPlain = item.isEnabled || item.label == "-";
        lines.push_back(state + (isPlain ? item.label : "(" + item.label + ")"));
    }
    return text::joined(lines, "|");
}

bool TrayHost::press(const std::string& label) const {
    std::optional<int> id;
    comesTrue([&] {
        for (const auto& item : menu()) {
            if (item.label.starts_with(label) && item.isEnabled) id = item.id;
        }
        return id.has_value();
    });
    return id && watcher_.call(item(), menuPath, menuInterface, "Event",
                               g_variant_new("(isvu)", *id, "clicked", g_variant_new_int32(0), 0));
}

std::shared_ptr<GVariant> TrayHost::property(const std::string& name) const {
    const auto answer =
        watcher_.call(item(), "/StatusNotifierItem", "org.freedesktop.DBus.Properties", "Get",
                      g_variant_new("(ss)", "org.kde.StatusNotifierItem", name.c_str()));
    if (!answer) return nullptr;
    GVariant* value = nullptr;
    g_variant_get(answer.get(), "(v)", &value);
    return owned(value);
}

bool TrayHost::click(int x, int y) const {
    return watcher_.call(item(), "/StatusNotifierItem", "org.kde.StatusNotifierItem", "Activate",
                         g_variant_new("(ii)", x, y)) != nullptr;
}

bool TrayHost::isMenu() const {
    const auto value = property("ItemIsMenu");
    return value && g_variant_get_boolean(value.get());
}

std::string TrayHost::toolTip() const {
    const auto value = property("ToolTip");
    const char* title = "";
    if (value) g_variant_get(value.get(), "(&s@a(iiay)&s&s)", nullptr, nullptr, &title, nullptr);
    return title;
}

bool TrayHost::hasPicture() const {
    const auto value = property("IconPixmap");
    for (gsize i = 0; value && i < g_variant_n_children(value.get()); ++i) {
        gint32 width = 0;
        g_variant_get_child(value.get(), i, "(ii@ay)", &width, nullptr, nullptr);
        if (width == 22) return true;
    }
    return false;
}

} // namespace corvane::desktop
