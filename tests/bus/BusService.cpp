#include "bus/BusService.h"

#include <stdexcept>

namespace corvane {

BusService::BusService(const std::string& address, const std::string& name,
                       const std::vector<Object>& objects, Answer answer)
    : context_(g_main_context_new(), g_main_context_unref),
      loop_(g_main_loop_new(context_.get(), FALSE), g_main_loop_unref), answer_(std::move(answer)) {
    constexpr auto flags = GDBusConnectionFlags(G_DBUS_CONNECTION_FLAGS_AUTHENTICATION_CLIENT |
                                                G_DBUS_CONNECTION_FLAGS_MESSAGE_BUS_CONNECTION);
    g_main_context_push_thread_default(context_.get());
    auto* bus =
        g_dbus_connection_new_for_address_sync(address.c_str(), flags, nullptr, nullptr, nullptr);
    if (!bus) throw std::runtime_error("no bus at " + address);
    bus_.reset(bus, g_object_unref);
    own(name, objects);
    g_main_context_pop_thread_default(context_.get());
    thread_ = std::thread([this] { g_main_loop_run(loop_.get()); });
}

BusService::~BusService() {
    g_dbus_connection_close_sync(bus_.get(), nullptr, nullptr);
    g_main_context_invoke(
        context_.get(),
        [](gpointer loop) -> gboolean {
            g_main_loop_quit(static_cast<GMainLoop*>(loop));
            return G_SOURCE_REMOVE;
        },
        loop_.get());
    thread_.join();
}

void BusService::own(const std::string& name, const std::vector<Object>& objects) {
    static constexpr GDBusInterfaceVTable functions{
        [](GDBusConnection*, const char* sender, const char*, const char*, const char* method,
           GVariant* parameters, GDBusMethodInvocation* invocation, gpointer data) {
            auto& self = *static_cast<BusService*>(data);
            const Call call{sender, method, parameters};
            self.note(call);
            g_dbus_method_invocation_return_value(invocation, self.answer_(call));
        },
        [](GDBusConnection*, const char* sender, const char*, const char*, const char* property,
           GError**, gpointer data) {
            const std::shared_ptr<GVariant> text(g_variant_ref_sink(g_variant_new_string(property)),
                                                 g_variant_unref);
            return static_cast<BusService*>(data)->answer_({sender, "Get", text.get()});
        },
        nullptr,
        {}};
    for (const auto& [path, xml] : objects) {
        const std::shared_ptr<GDBusNodeInfo> node(
            g_dbus_node_info_new_for_xml(("<node>" + xml + "</node>").c_str(), nullptr),
            g_dbus_node_info_unref);
        if (path_.empty()) {
            path_ = path;
            interface_ = node->interfaces[0]->name;
        }
        g_dbus_connection_register_object(bus_.get(), path.c_str(), node->interfaces[0], &functions,
                                          this, nullptr, nullptr);
    }
    constexpr guint32 replacing = 2;
    call("org.freedesktop.DBus", "/org/freedesktop/DBus", "org.freedesktop.DBus", "RequestName",
         g_variant_new("(su)", name.c_str(), replacing));
}

void BusService::note(const Call& call) {
    char* printed = g_variant_print(call.parameters, FALSE);
    const std::lock_guard lock(mutex_);
    calls_.push_back(call.method + " " + printed);
    g_free(printed);
}

std::vector<std::string> BusService::calls() const {
    const std::lock_guard lock(mutex_);
    return calls_;
}

void BusService::emit(const std::string& signal, GVariant* parameters) const {
    g_dbus_connection_emit_signal(bus_.get(), nullptr, path_.c_str(), interface_.c_str(),
                                  signal.c_str(), parameters, nullptr);
}

std::shared_ptr<GVariant> BusService::call(const std::string& name, const std::string& path,
                                           const std::string& interface, const std::string& method,
                                           GVariant* parameters) const {
    constexpr int timeoutInMilliseconds = 5000;
    const std::shared_ptr<GVariant> given(
        g_variant_ref_sink(parameters ? parameters : g_variant_new("()")), g_variant_unref);
    if (name.empty()) return nullptr;
    auto* answer = g_dbus_connection_call_sync(
        bus_.get(), name.c_str(), path.c_str(), interface.c_str(), method.c_str(), given.get(),
        nullptr, G_DBUS_CALL_FLAGS_NONE, timeoutInMilliseconds, nullptr, nullptr);
    return answer ? std::shared_ptr<GVariant>(answer, g_variant_unref) : nullptr;
}

} // namespace corvane
