#pragma once

#include "bus/BusService.h"

#include <chrono>

/// What a desktop's session has on its bus.
namespace corvane {

/// Answers how the user likes things to look, after that time.
inline BusService settingsPortal(const std::string& address, const char* answer,
                                 std::chrono::milliseconds delay = {}) {
    return {address,
            "org.freedesktop.portal.Desktop",
            {{"/org/freedesktop/portal/desktop",
              "<interface name='org.freedesktop.portal.Settings'><method name='Read'>"
              "<arg type='s' direction='in'/><arg type='s' direction='in'/>"
              "<arg type='v' direction='out'/></method></interface>"}},
            [answer, delay](const BusService::Call&) {
                std::this_thread::sleep_for(delay);
                return g_variant_new_parsed(answer);
            }};
}

/// A session manager, to which this program is "/Client1"; it emits as that.
inline BusService sessionManager(const std::string& address) {
    return {address,
            "org.gnome.SessionManager",
            {{"/Client1", "<interface name='org.gnome.SessionManager.ClientPrivate'>"
                          "<method name='EndSessionResponse'><arg type='b' direction='in'/>"
                          "<arg type='s' direction='in'/></method></interface>"},
             {"/org/gnome/SessionManager",
              "<interface name='org.gnome.SessionManager'><method name='RegisterClient'>"
              "<arg type='s' direction='in'/><arg type='s' direction='in'/>"
              "<arg type='o' direction='out'/></method></interface>"}},
            [](const BusService::Call& call) -> GVariant* {
                if (call.method != "RegisterClient") return nullptr;
                const char* who = nullptr;
                g_variant_get(call.parameters, "(&s&s)", &who, nullptr);
                const bool isCorvane = who == std::string("app.corvane.Corvane");
                return g_variant_new("(o)", isCorvane ? "/Client1" : "/Other");
            }};
}

} // namespace corvane
