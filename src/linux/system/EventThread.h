#pragma once

#include "linux/system/Gio.h"
#include "linux/system/SessionBus.h"

#include <chrono>
#include <functional>
#include <string_view>
#include <thread>
#include <vector>

namespace corvane {

/// One thread for what comes from outside in its own time: answers of the session bus, signals,
/// other starts of the program. It sleeps while nothing comes.
class EventThread {
public:
    EventThread();
    /// Cancels the calls that aren't answered yet, and waits for the piece of work that runs.
    ~EventThread();
    EventThread(const EventThread&) = delete;

    /// Runs `work` there, after what was asked for before. Any thread.
    void async(std::function<void()> work);
    /// The same once that time has passed; not at all where the thread ends before. Any thread.
    void after(std::chrono::milliseconds time, std::function<void()> work);
    /// Where sources of events are attached.
    GMainContext* context() const { return context_.get(); }

    // On that thread only. What is handed over is called there, and not any more when the thread
    // has begun to end.

    using Answer = std::function<void(GVariant*)>;
    /// Calls on the session bus, and hands over the answer once it comes: null for an error and
    /// where there is no bus. Takes over floating `parameters`.
    void call(const BusCall& call, GVariant* parameters, Answer answered = {},
              GDBusCallFlags flags = G_DBUS_CALL_FLAGS_NONE);
    using Heard = std::function<void(std::string_view signal, GVariant* parameters)>;
    /// Listens to all signals of one interface of one object, from now on.
    void listen(const BusCall& object, Heard heard);

private:
    struct PendingCall;
    void attach(GSource* source, std::function<void()> work);
    /// Null where there is no bus.
    void withBus(std::function<void(GDBusConnection*)> use);
    void run();
    void connected(GAsyncResult* result);
    void callOn(GDBusConnection* bus, const BusCall& call, GVariant* parameters, Answer answered,
                GDBusCallFlags flags);

    struct UnrefContext {
        void operator()(GMainContext* context) const { g_main_context_unref(context); }
    };
    std::unique_ptr<GMainContext, UnrefContext> context_;
    gio::Ref<GCancellable> cancellable_;
    gio::Ref<GDBusConnection> bus_;
    /// What waits for the bus.
    std::vector<std::function<void(GDBusConnection*)>> uses_;
    std::vector<guint> subscriptions_;
    bool isEnding_ = false;
    int pending_ = 0;
    std::thread thread_;
};

} // namespace corvane
