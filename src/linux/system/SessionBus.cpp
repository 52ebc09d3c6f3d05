#include "linux/system/SessionBus.h"

namespace corvane {

bool hasSessionBus() {
    const std::string socket = gio::text(g_get_user_runtime_dir()) + "/bus";
    return !gio::text(g_getenv("DBUS_SESSION_BUS_ADDRESS")).empty() ||
           g_file_test(socket.c_str(), G_FILE_TEST_EXISTS);
}

gio::Ref<GDBusConnection> sessionBus() {
    if (!hasSessionBus()) return nullptr;
    gio::Ref<GDBusConnection> bus(g_bus_get_sync(G_BUS_TYPE_SESSION, nullptr, nullptr));
    // GIO would end the program together with the bus.
    if (bus) g_dbus_connection_set_exit_on_close(bus.get(), FALSE);
    return bus;
}

gio::Ref<GDBusConnection> ownConnectionToSessionBus() {
    if (!hasSessionBus()) return nullptr;
    const gio::Chars address(g_dbus_address_get_for_bus_sync(G_BUS_TYPE_SESSION, nullptr, nullptr));
    if (!address) return nullptr;
    constexpr auto flags =
        static_cast<GDBusConnectionFlags>(G_DBUS_CONNECTION_FLAGS_AUTHENTICATION_CLIENT |
                                          G_DBUS_CONNECTION_FLAGS_MESSAGE_BUS_CONNECTION);
    return gio::Ref<GDBusConnection>(
        g_dbus_connection_new_for_address_sync(address.get(), flags, nullptr, nullptr, nullptr));
}

Result<void> callOnBus(GDBusConnection* bus, const BusCall& call, GVariant* parameters,
                       std::optional<std::chrono::milliseconds> wait) {
    constexpr std::chrono::milliseconds longest(5000);
    const auto timeout = static_cast<int>(wait.value_or(longest).count());
    GError* failure = nullptr;
    GVariant* answer = g_dbus_connection_call_sync(
        bus, call.name.c_str(), call.path.c_str(), call.interface.c_str(), call.method.c_str(),
        parameters, nullptr, G_DBUS_CALL_FLAGS_NONE, timeout, nullptr, &failure);
    if (!answer && wait && g_error_matches(failure, G_IO_ERROR, G_IO_ERROR_TIMED_OUT)) {
        g_clear_error(&failure);
        return {};
    }
    if (!answer) return Error{gio::takeMessage(failure)};
    g_variant_unref(answer);
    return {};
}

} // namespace corvane
