#pragma once

#include "machine/OwnWindows.h"
#include "machine/Program.h"
#include "world/World.h"

#include <cstdlib>
#include <optional>

#include <fcntl.h>

/// An X display of a test's own.
namespace corvane::machine {

/// The words that start the window manager which WINDOW_MANAGER names; openbox else.
inline std::vector<std::string> windowManager() {
    const char* chosen = std::getenv("WINDOW_MANAGER");
    return text::split(chosen && *chosen ? chosen : "openbox", ' ');
}

/// An X server and a session bus of its own, with a window manager.
struct XDisplay {
    void startServer(const std::string& screen) {
        // Where there is none, programs start one that stays.
        fs::remove(place("bus"));
        place("runtime/any");
        auto bus = world::busCommand(place("chosen"));
        bus.insert(bus.end(), {"--nopidfile", "--address=" + busAddress()});
        bus_.emplace(bus);
        ASSERT_TRUE(comesTrue([] { return fs::exists(place("bus")); }));
        int ends[2];
        ASSERT_EQ(pipe2(ends, 0), 0);
        std::vector<std::string> command{
            "Xvfb", "-noreset",  "-displayfd", std::to_string(ends[1]), "-screen", "0",
            screen, "-nolisten", "tcp"};
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
    /// A window that comes while the manager starts escapes it, so each try has a new one, and
    /// more time than the last, as a busy machine's manager is late.
    bool managesWindows() {
        const auto window = probe_->make();
        probe_->show(window);
        bool managed = false;
        looks_ *= 2;
        for (int look = 0; look < looks_ && !managed; ++look)
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
    int looks_ = 50;
};

} // namespace corvane::machine
