#include "linux/system/EventThread.h"

#include <utility>

namespace corvane {

struct EventThread::PendingCall {
    EventThread& thread;
    Answer answered;
};

EventThread::EventThread()
    : context_(g_main_context_new()), cancellable_(g_cancellable_new()),
      thread_([this] { run(); }) {}

EventThread::~EventThread() {
    async([this] {
        isEnding_ = true;
        g_cancellable_cancel(cancellable_.get());
    });
    thread_.join();
}

void EventThread::run() {
    g_main_context_push_thread_default(context_.get());
    while (!isEnding_ || pending_ > 0)
        g_main_context_iteration(context_.get(), TRUE);
    // What listens keeps the context, and what waits in the context keeps the bus.
    for (const guint subscription : subscriptions_)
        g_dbus_connection_signal_unsubscribe(bus_.get(), subscription);
    while (g_main_context_iteration(context_.get(), FALSE)) {
    }
    bus_.reset();
    g_main_context_pop_thread_default(context_.get());
}

void EventThread::async(std::function<void()> work) {
    GSource* source = g_idle_source_new();
    g_source_set_priority(source, G_PRIORITY_DEFAULT);
    attach(source, std::move(work));
}

void EventThread::after(std::chrono::milliseconds time, std::function<void()> work) {
    attach(g_timeout_source_new(static_cast<guint>(time.count())), std::move(work));
}

void EventThread::attach(GSource* source, std::function<void()> work) {
    using Work = std::function<void()>;
    g_source_set_callback(
        source,
        [](gpointer data) -> gboolean {
            (*static_cast<Work*>(data))();
            return G_SOURCE_REMOVE;
        },
        new Work(std::move(work)), [](gpointer data) { delete static_cast<Work*>(data); });
    g_source_attach(source, context_.get());
    g_source_unref(source);
}

void EventThread::withBus(std::function<void(GDBusConnection*)> use) {
    if (bus_ && !g_dbus_connection_is_closed(bus_.get())) return use(bus_.get());
    if (!hasSessionBus()) return use(nullptr);
    uses_.push_back(std::move(use));
    if (uses_.size() > 1) return;
    ++pending_;
    g_bus_get(
        G_BUS_TYPE_SESSION, cancellable_.get(),
        [](GObject*, GAsyncResult* result, gpointer self) {
            static_cast<EventThread*>(self)->connected(result);
        },
        this);
}

void EventThread::connected(GAsyncResult* result) {
    --pending_;
    bus_.reset(g_bus_get_finish(result, nullptr));
    const auto uses = std::exchange(uses_, {});
    // GIO would end the program together with the bus.
    if (bus_) g_dbus_connection_set_exit_on_close(bus_.get(), FALSE);
    for (const auto& use : uses)
        use(bus_.get());
}

void EventThread::call(const BusCall& call, GVariant* parameters, Answer answered,
                       GDBusCallFlags flags) {
    const std::shared_ptr<GVariant> held(parameters ? g_variant_ref_sink(parameters) : nullptr,
                                         [](GVariant* value) {
                                             if (value) g_variant_unref(value);
                                         });
    withBus([this, call, held, answered = std::move(answered), flags](GDBusConnection* bus) {
        if (bus) {
            callOn(bus, call, held.get(), answered, flags);
        } else if (answered && !isEnding_) {
            answered(nullptr);
        }
    });
}

void EventThread::listen(const BusCall& object, Heard heard) {
    withBus([this, object, heard = std::move(heard)](GDBusConnection* bus) {
        if (!bus || isEnding_) return;
        const GDBusSignalCallback came = [](GDBusConnection*, const char*, const char*, const char*,
                                            const char* signal, GVariant* parameters,
                                            gpointer data) {
            (*static_cast<Heard*>(data))(signal, parameters);
        };
        subscriptions_.push_back(g_dbus_connection_signal_subscribe(
            bus, object.name.c_str(), object.interface.c_str(), nullptr, object.path.c_str(),
            nullptr, G_DBUS_SIGNAL_FLAGS_NONE, came,
            new Heard([this, heard](auto signal, auto* values) {
                if (!isEnding_) heard(signal, values);
            }),
            [](gpointer data) { delete static_cast<Heard*>(data); }));
    });
}

void EventThread::callOn(GDBusConnection* bus, const BusCall& call, GVariant* parameters,
                         Answer answered, GDBusCallFlags flags) {
    constexpr int defaultTimeout = -1;
    ++pending_;
    g_dbus_connection_call(
        bus, call.name.c_str(), call.path.c_str(), call.interface.c_str(), call.method.c_str(),
        parameters, nullptr, flags, defaultTimeout, cancellable_.get(),
        [](GObject* connection, GAsyncResult* result, gpointer data) {
            const std::unique_ptr<PendingCall> pending(static_cast<PendingCall*>(data));
            --pending->thread.pending_;
            GVariant* answer =
                g_dbus_connection_call_finish(G_DBUS_CONNECTION(connection), result, nullptr);
            if (pending->answered && !pending->thread.isEnding_) pending->answered(answer);
            if (answer) g_variant_unref(answer);
        },
        new PendingCall{*this, std::move(answered)});
}

} // namespace corvane
