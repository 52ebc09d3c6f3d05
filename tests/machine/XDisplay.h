#pragma once

#include "foundation/Text.h"
#include "linux/windows/x11/X11WindowGeometry.h"
#include "machine/Program.h"

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <optional>

#include <fcntl.h>

/// An X display of a test's own.
namespace corvane::machine {

/// Windows of this process, which say what a test makes them say.
class OwnWindows {
public:
    OwnWindows() : connection_(xcb_connect(nullptr, nullptr)) {
        screen_ = xcb_setup_roots_iterator(xcb_get_setup(connection_)).data;
    }
    ~OwnWindows() { xcb_disconnect(connection_); }
    OwnWindows(const OwnWindows&) = delete;

    xcb_window_t make(const x11::Frame& frame = {0, 0, 90, 90}) {
        const auto window = xcb_generate_id(connection_);
        // A compositor shows no window that nothing was painted in.
        xcb_create_window(connection_, XCB_COPY_FROM_PARENT, window, screen_->root,
                          static_cast<std::int16_t>(frame.x), static_cast<std::int16_t>(frame.y),
                          static_cast<std::uint16_t>(frame.width),
                          static_cast<std::uint16_t>(frame.height), 0,
                          XCB_WINDOW_CLASS_INPUT_OUTPUT, XCB_COPY_FROM_PARENT, XCB_CW_BACK_PIXEL,
                          &screen_->white_pixel);
        return window;
    }
    xcb_atom_t atom(const std::string& name) {
        const x11::Reply<xcb_intern_atom_reply_t> reply(xcb_intern_atom_reply(
            connection_,
            xcb_intern_atom(connection_, 0, static_cast<std::uint16_t>(name.size()), name.data()),
            nullptr));
        return reply->atom;
    }
    void set(xcb_window_t window, const std::string& property, const std::string& bytes,
             std::uint8_t format = 8, xcb_atom_t type = XCB_ATOM_STRING) {
        xcb_change_property(connection_, XCB_PROP_MODE_REPLACE, window, atom(property), type,
                            format, static_cast<std::uint32_t>(bytes.size() * 8 / format),
                            bytes.data());
    }
    void setList(xcb_window_t window, const std::string& property,
                 const std::vector<std::uint32_t>& values, xcb_atom_t type = XCB_ATOM_CARDINAL) {
        set(window, property,
            {reinterpret_cast<const char*>(values.data()), values.size() * sizeof values[0]}, 32,
            type);
        xcb_flush(connection_);
    }
    void setAtom(xcb_window_t window, const std::string& property, const std::string& value) {
        setList(window, property, {atom(value)}, XCB_ATOM_ATOM);
    }
    void set(xcb_window_t window, const std::string& property, std::uint32_t value) {
        set(window, property, {reinterpret_cast<const char*>(&value), sizeof value}, 32);
    }
    void show(xcb_window_t window) {
        xcb_map_window(connection_, window);
        xcb_flush(connection_);
    }
    void close(xcb_window_t window) {
        xcb_destroy_window(connection_, window);
        xcb_flush(connection_);
    }
    void remove(xcb_window_t window, const std::string& property) {
        xcb_delete_property(connection_, window, atom(property));
    }
    xcb_window_t root() const { return screen_->root; }
    /// The windows that the window manager tells of, oldest first.
    std::vector<std::uint32_t> managed() {
        const x11::Reply<xcb_get_property_reply_t> reply(xcb_get_property_reply(
            connection_,
            xcb_get_property(connection_, 0, root(), atom("_NET_CLIENT_LIST"), XCB_ATOM_WINDOW, 0,
                             1024),
            nullptr));
        const auto* first = static_cast<const std::uint32_t*>(xcb_get_property_value(reply.get()));
        return {first, first + xcb_get_property_value_length(reply.get()) / sizeof *first};
    }

private:
    xcb_connection_t* connection_;
    xcb_screen_t* screen_;
};

/// The words that start the window manager which WINDOW_MANAGER names; openbox else.
inline std::vector<std::string> windowManager() {
    const char* chosen = std::getenv("WINDOW_MANAGER");
    return text::split(chosen && *chosen ? chosen : "openbox", ' ');
}

/// An X server and a session bus of its own, with a window manager.
class XDisplay {
public:
    /// With no number, at one that is free.
    void startServer(const std::string& screen, const std::string& number = "") {
        // Where there is none, programs start one that stays.
        std::filesystem::remove(place("bus"));
        place("runtime/any");
        bus_.emplace(std::vector<std::string>{"dbus-daemon", "--session", "--nofork", "--nopidfile",
                                              "--address=" + busAddress()});
        ASSERT_TRUE(comesTrue([] { return std::filesystem::exists(place("bus")); }));
        int ends[2];
        ASSERT_EQ(pipe2(ends, 0), 0);
        std::vector<std::string> command{
            "Xvfb", "-noreset",  "-displayfd", std::to_string(ends[1]), "-screen", "0",
            screen, "-nolisten", "tcp"};
        if (!number.empty()) command.insert(command.begin() + 1, number);
        server_.emplace(command);
        close(ends[1]);
        char answer[16] = {};
        ASSERT_GT(::read(ends[0], answer, sizeof answer - 1), 0);
        close(ends[0]);
        display_.emplace("DISPLAY", ":" + std::to_string(std::atoi(answer)));
    }
    void startManager(const std::vector<std::string>& command) {
        manager_.emplace(command);
        probe_.emplace();
        ASSERT_TRUE(comesTrue([this] { return managesWindows(); }));
    }
    bool windowsBecome(std::size_t count) {
        return comesTrue([&] { return probe_->managed().size() == count; });
    }
    /// Shows a window of this process and waits until it is managed.
    void show(xcb_window_t window) {
        probe_->show(window);
        EXPECT_TRUE(comesTrue([&] { return std::ranges::count(probe_->managed(), window) > 0; }));
    }

protected:
    static std::string busAddress() { return "unix:path=" + place("bus"); }
    /// A window that comes while the manager starts escapes it, so each try has a new one.
    bool managesWindows() {
        const auto window = probe_->make();
        probe_->show(window);
        bool managed = false;
        for (int look = 0; look < 50 && !managed; ++look)
            managed = !probe_->managed().empty();
        probe_->close(window);
        return managed;
    }

    std::optional<Program> bus_;
    ScopedVariable address_{"DBUS_SESSION_BUS_ADDRESS", busAddress()};
    ScopedVariable accessibilityBridge_{"NO_AT_BRIDGE", "1"};
    ScopedVariable settings_{"GSETTINGS_BACKEND", "memory"};
    std::optional<Program> server_;
    std::optional<ScopedVariable> display_;
    std::optional<Program> manager_;
    /// Stays, as the ids of its windows would be used again.
    std::optional<OwnWindows> probe_;
};

} // namespace corvane::machine
