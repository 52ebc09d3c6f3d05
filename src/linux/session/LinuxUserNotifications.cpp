#include "linux/session/LinuxUserNotifications.h"

#include "foundation/Text.h"
#include "linux/system/EventThread.h"
#include "platform/Bundles.h"
#include "platform/MainQueue.h"

namespace corvane {

namespace {

BusCall serverCall(const char* method) {
    return {.name = "org.freedesktop.Notifications",
            .path = "/org/freedesktop/Notifications",
            .interface = "org.freedesktop.Notifications",
            .method = method};
}

bool readsMarkup(GVariant* capabilities) {
    if (!g_variant_is_of_type(capabilities, G_VARIANT_TYPE("(as)"))) return false;
    GVariant* names = g_variant_get_child_value(capabilities, 0);
    const gio::Strings all(g_variant_dup_strv(names, nullptr));
    g_variant_unref(names);
    return g_strv_contains(all.get(), "body-markup");
}

std::string escaped(const std::string& plain) {
    const auto noAmpersand = text::replacingAll(plain, "&", "&amp;");
    return text::replacingAll(text::replacingAll(noAmpersand, "<", "&lt;"), ">", "&gt;");
}

void notify(EventThread& events, const UserNotification& notification, bool escape) {
    constexpr guint32 replacesNone = 0;
    constexpr gint32 asLongAsTheServerLikes = -1;
    const auto body = escape ? escaped(notification.body) : notification.body;
    GVariantBuilder hints;
    g_variant_builder_init(&hints, G_VARIANT_TYPE_VARDICT);
    g_variant_builder_add(&hints, "{sv}", "desktop-entry", g_variant_new_string(programIdentifier));
    g_variant_builder_add(&hints, "{sv}", "suppress-sound", g_variant_new_boolean(TRUE));
    events.call(serverCall("Notify"),
                g_variant_new("(susssasa{sv}i)", programName, replacesNone, programIdentifier,
                              notification.title.c_str(), body.c_str(), nullptr, &hints,
                              asLongAsTheServerLikes));
}

} // namespace

void LinuxUserNotifications::requestAuthorization(
    std::function<void(Result<void> granted)> handler) {
    mainQueue_.async([handler = std::move(handler)] { handler({}); });
}

void LinuxUserNotifications::add(const UserNotification& notification) {
    // Servers that read markup would take a name like "R&D <new>" for some. Which server there is
    // can change at any time, so each one is asked.
    events_.async([&events = events_, notification] {
        events.call(serverCall("GetCapabilities"), nullptr,
                    [&events, notification](GVariant* capabilities) {
                        if (capabilities) notify(events, notification, readsMarkup(capabilities));
                    });
    });
}

} // namespace corvane
