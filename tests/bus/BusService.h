#pragma once

#include <functional>
#include <memory>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

#include <gio/gio.h>

namespace corvane {

/// A session bus of its own, which the environment names as long as it lives.
class TestBus {
public:
    TestBus() { g_test_dbus_up(bus_); }
    ~TestBus() {
        g_test_dbus_down(bus_);
        g_object_unref(bus_);
    }
    TestBus(const TestBus&) = delete;
    std::string address() const { return g_test_dbus_get_bus_address(bus_); }

private:
    GTestDBus* bus_ = g_test_dbus_new(G_TEST_DBUS_NONE);
};

/// A service on a session bus that a test plays. It answers on a thread of its own, and keeps what
/// it was asked.
class BusService {
public:
    struct Object {
        std::string path;
        /// One interface, as introspection data.
        std::string xml;
    };
    struct Call {
        std::string sender;
        /// A method, or "Get" for a property, with its name as text.
        std::string method;
        GVariant* parameters;
    };
    /// Null answers a method with nothing.
    using Answer = std::function<GVariant*(const Call& call)>;

    /// Owns the name when it returns.
    BusService(const std::string& address, const std::string& name,
               const std::vector<Object>& objects, Answer answer);
    ~BusService();
    BusService(const BusService&) = delete;

    /// "Method ('text', 1)" for each call so far.
    std::vector<std::string> calls() const;
    /// From the first object.
    void emit(const std::string& signal, GVariant* parameters) const;
    /// Calls somebody else; null for an error, and where nobody has been named yet.
    std::shared_ptr<GVariant> call(const std::string& name, const std::string& path,
                                   const std::string& interface, const std::string& method,
                                   GVariant* parameters) const;

private:
    void own(const std::string& name, const std::vector<Object>& objects);
    void note(const Call& call);

    std::shared_ptr<GMainContext> context_;
    std::shared_ptr<GMainLoop> loop_;
    std::shared_ptr<GDBusConnection> bus_;
    std::string path_;
    std::string interface_;
    Answer answer_;
    mutable std::mutex mutex_;
    std::vector<std::string> calls_;
    std::thread thread_;
};

} // namespace corvane
