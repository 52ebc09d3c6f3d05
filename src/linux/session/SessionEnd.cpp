#include "linux/session/SessionEnd.h"

#include "linux/system/EventThread.h"
#include "platform/Bundles.h"

#include <glib-unix.h>

namespace corvane {

namespace {

constexpr auto sessionManager = "org.gnome.SessionManager";
constexpr auto clientInterface = "org.gnome.SessionManager.ClientPrivate";

} // namespace

std::string SessionEnd::takeStartupId() {
    auto id = gio::text(g_getenv("DESKTOP_AUTOSTART_ID"));
    g_unsetenv("DESKTOP_AUTOSTART_ID");
    return id;
}

SessionEnd::SessionEnd(EventThread& events, std::string startupId, Calls calls)
    : startupId_(std::move(startupId)), calls_(std::move(calls)) {
    for (const int number : {SIGTERM, SIGINT, SIGHUP})
        watchSignal(events, number);
    events.async([this, &events] { registerWithSessionManager(events); });
}

int SessionEnd::terminateNow(void* self) {
    static_cast<SessionEnd*>(self)->calls_.terminate();
    return G_SOURCE_CONTINUE;
}

void SessionEnd::watchSignal(EventThread& events, int number) {
    struct sigaction current{};
    sigaction(number, nullptr, &current);
    if (current.sa_handler == SIG_IGN) return;
    GSource* source = g_unix_signal_source_new(number);
    g_source_set_callback(source, terminateNow, this, nullptr);
    g_source_attach(source, events.context());
    g_source_unref(source);
}

/// GNOME's interface, which other desktops offer too.
void SessionEnd::registerWithSessionManager(EventThread& events) {
    events.call(
        {.name = sessionManager,
         .path = "/org/gnome/SessionManager",
         .interface = sessionManager,
         .method = "RegisterClient"},
        g_variant_new("(ss)", programIdentifier, startupId_.c_str()),
        [this, &events](GVariant* answer) {
            if (!answer || !g_variant_is_of_type(answer, G_VARIANT_TYPE("(o)"))) return;
            const char* path = nullptr;
            g_variant_get(answer, "(&o)", &path);
            follow(events, path);
        },
        G_DBUS_CALL_FLAGS_NO_AUTO_START);
}

void SessionEnd::follow(EventThread& events, const std::string& client) {
    events.listen(
        {.name = sessionManager, .path = client, .interface = clientInterface, .method = {}},
        [this, &events, client](std::string_view signal, GVariant*) {
            if (signal == "QueryEndSession") {
                // Other programs stay until all have agreed.
                calls_.prepare([this, &events, client] {
                    events.async([this, &events, client] { agree(events, client); });
                });
            }
            if (signal == "CancelEndSession") calls_.goOn();
            // The session waits until this process has left the bus.
            if (signal == "EndSession" || signal == "Stop") calls_.terminate();
        });
}

void SessionEnd::agree(EventThread& events, const std::string& client) {
    events.call({.name = sessionManager,
                 .path = client,
                 .interface = clientInterface,
                 .method = "EndSessionResponse"},
                g_variant_new("(bs)", TRUE, ""));
}

} // namespace corvane
