#include "linux/windows/CompositorOnBus.h"

#include "linux/system/ProcessFacts.h"
#include "linux/windows/WaylandSession.h"

#include <algorithm>

namespace corvane {

CompositorOnBus::Values CompositorOnBus::call(const std::string& path, const std::string& method,
                                              GVariant* parameters, Deadline by,
                                              std::string* error) {
    return call(owner_, path, method, parameters, by, error);
}

CompositorOnBus::Values CompositorOnBus::call(const std::string& name, const std::string& path,
                                              const std::string& method, GVariant* parameters,
                                              Deadline by, std::string* error) {
    const auto dot = method.rfind('.');
    GError* failure = nullptr;
    Values values(g_dbus_connection_call_sync(bus_.get(), name.c_str(), path.c_str(),
                                              method.substr(0, dot).c_str(),
                                              method.substr(dot + 1).c_str(), parameters, nullptr,
                                              G_DBUS_CALL_FLAGS_NO_AUTO_START,
                                              std::max(millisecondsTo(by), 1), nullptr, &failure),
                  [](GVariant* value) {
                      if (value) g_variant_unref(value);
                  });
    if (failure && error) *error = gio::take(g_dbus_error_get_remote_error(failure));
    g_clear_error(&failure);
    return values;
}

std::optional<pid_t> CompositorOnBus::process(Deadline by) {
    if (!bus_ || g_dbus_connection_is_closed(bus_.get())) {
        bus_ = ownConnectionToSessionBus();
        // Another bus gives the same names to others.
        process_.reset();
    }
    if (!bus_) return std::nullopt;
    constexpr const char* daemon = "org.freedesktop.DBus";
    const std::string path = "/org/freedesktop/DBus";
    const auto named = call(daemon, path, "org.freedesktop.DBus.GetNameOwner",
                            g_variant_new("(s)", name_.c_str()), by);
    const char* owner = nullptr;
    if (!named) return std::nullopt;
    g_variant_get(named.get(), "(&s)", &owner);
    if (owner_ == owner && process_) return process_;
    owner_ = owner;
    process_.reset();
    const auto told = call(daemon, path, "org.freedesktop.DBus.GetConnectionUnixProcessID",
                           g_variant_new("(s)", owner), by);
    const auto listener = waylandCompositor();
    if (!told || !listener) return std::nullopt;
    guint32 number = 0;
    g_variant_get(told.get(), "(u)", &number);
    auto process = static_cast<pid_t>(number);
    if (processSpacesOf(process) != 1) process = 0;
    // Plasma starts it from a process that holds the display's socket for it.
    if (process == *listener || parentOf(process) == *listener) process_ = process;
    return process_;
}

} // namespace corvane
