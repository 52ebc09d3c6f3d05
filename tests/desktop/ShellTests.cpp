#include "bus/DesktopServices.h"
#include "desktop/DesktopTest.h"
#include "desktop/harness/TrayHost.h"

#include <algorithm>
#include <csignal>
#include <filesystem>
#include <fstream>
#include <map>
#include <optional>
#include <sstream>
#include <thread>

namespace corvane::desktop {
namespace {

class Shell : public DesktopTest {
protected:
    void startWithOneNote(const std::string& name) {
        const auto note = desktop.home("Documents/note.txt");
        writeFile(note, "A note\n");
        start({{name, "", "star", {{"note.txt", "file", note}}}});
    }
    bool hasWindow() {
        return comesTrue([&] { return desktop.window("corvane").has_value(); });
    }
    /// Closes the main window, and sees that it goes and the program stays.
    bool closesAndStays() {
        desktop.act(Deed::close, "corvane", "Corvane");
        return comesTrue([&] { return !desktop.window("corvane"); }) &&
               desktop.corvane().isRunning();
    }
    bool isTold(const std::string& text) {
        return comesTrue([&] { return desktop.log().find(text) != std::string::npos; });
    }
    /// The middle of Corvane's icon in a panel.
    std::optional<std::pair<std::string, std::string>> placeOfIcon() {
        const std::string mark = "(\"corvane\" \"corvane\")  22x22+0+0  +";
        const auto tree = desktop.run({"xwininfo", "-root", "-tree"});
        const auto found = tree.find(mark);
        if (found == std::string::npos) return std::nullopt;
        std::istringstream numbers(tree.substr(found + mark.size()));
        int x = 0, y = 0;
        char plus = 0;
        numbers >> x >> plus >> y;
        constexpr int half = 11;
        return std::pair(std::to_string(x + half), std::to_string(y + half));
    }
    /// Clicks on that icon until its menu is the second window beside it.
    bool opensMenu() {
        return comesTrue([&] {
            const auto place = placeOfIcon();
            if (!place) return false;
            desktop.run({"xdotool", "mousemove", place->first, place->second, "click", "1"});
            return comesTrue([&] { return shownWindows() == 2; }, 2);
        });
    }
    /// Chooses the first item that can be chosen, and sees the main window come. The menu takes the
    /// keyboard a moment after it is seen; its first Return marks the item.
    bool choosesTheWindow() {
        return comesTrue([&] {
            if (desktop.window("corvane")) return true;
            if (shownWindows() == 2) desktop.run({"xdotool", "key", "Return"});
            return false;
        });
    }
    /// Of Corvane, its icon and its menu among them.
    long shownWindows() {
        const auto ids = desktop.run({"xdotool", "search", "--onlyvisible", "--class", "corvane"});
        return std::ranges::count(ids, '\n');
    }
    /// As a launcher does that reads a part of the desktop entry.
    std::optional<int> startByEntry(const std::string& part, std::vector<std::string> command) {
        constexpr auto script =
            R"(PATH=$(dirname "$0"):$PATH; exec $(sed -n "/^\[$1\]/,/^\[/s/^Exec=//p" "$2"))";
        command.insert(command.end(),
                       {"sh", "-c", script, desktop.corvaneProgram(), part, DESKTOP_ENTRY});
        return desktop.start(command)->waitForEnd();
    }
    /// Whether no thread of the program wakes up.
    bool sleeps(int seconds) {
        const auto before = wakeUps();
        std::this_thread::sleep_for(std::chrono::seconds(seconds));
        const auto after = wakeUps();
        // Helper threads may have ended meanwhile.
        return std::ranges::includes(before, after);
    }
    /// How often each thread of the program has waited for something and gone on.
    std::map<std::string, long> wakeUps() {
        std::map<std::string, long> counts;
        const auto tasks = "/proc/" + std::to_string(desktop.corvane().pid()) + "/task";
        for (const auto& task : std::filesystem::directory_iterator(tasks)) {
            std::ifstream status(task.path() / "status");
            for (std::string line; std::getline(status, line);) {
                if (line.starts_with("voluntary_ctxt_switches:"))
                    counts[task.path()] = std::stol(line.substr(line.find(':') + 1));
            }
        }
        return counts;
    }
    long allWakeUps() {
        long all = 0;
        for (const auto& [thread, count] : wakeUps())
            all += count;
        return all;
    }
};

TEST_F(Shell, theTrayStartsAndFinishesAWorkspaceAndLeadsBackToTheWindow) {
    const auto notifications = desktop.start({"dunst", "-print"});
    std::optional<TrayHost> tray(desktop.busAddress());
    startWithOneNote("R&D & Co <new_1>");
    ASSERT_TRUE(hasWindow());
    EXPECT_TRUE(comesTrue([&] {
        return tray->shownMenu() == "(Corvane Workspaces)|-|Show App Window|Help & Tips|-|"
                                    "R&D & Co <new_1>     ▶|-|[ ] Focus Mode|Quit All Apps|-|"
                                    "Quit Corvane";
    })) << tray->shownMenu();
    EXPECT_EQ(tray->toolTip(), "Corvane - Workspace Manager");
    EXPECT_TRUE(tray->hasPicture());
    EXPECT_TRUE(tray->isMenu());

    ASSERT_TRUE(tray->press("R&D"));
    EXPECT_TRUE(opens("mousepad", "note.txt"));
    EXPECT_TRUE(isTold("'Starting 'R&amp;D &amp; Co &lt;new_1&gt;'...'"));
    ASSERT_TRUE(closesAndStays());
    ASSERT_TRUE(tray->press("R&D & Co <new_1>     ⏹"));
    EXPECT_TRUE(comesTrue([&] { return desktop.processes("mousepad").empty(); }));
    EXPECT_TRUE(isTold("'Stopping 'R&amp;D &amp; Co &lt;new_1&gt;'...'"));
    EXPECT_TRUE(answer("Successfully closed 1 workspace applications!", "OK"));
    ASSERT_TRUE(tray->press("Show App Window"));
    EXPECT_TRUE(hasWindow());
    EXPECT_TRUE(comes("R&D & Co <new_1>"));

    // The panel starts again.
    tray.reset();
    tray.emplace(desktop.busAddress());
    ASSERT_TRUE(tray->press("Quit Corvane"));
    EXPECT_EQ(desktop.corvane().waitForEnd(), 0);
}

/// One tray takes the other's place, as when a panel is replaced or the session's own comes late.
TEST_F(Shell, theItemMovesBetweenTraysOfBothKinds) {
    const std::string name = "my__project R&D _Co\tTab";
    const std::string shown = "my__project R&D _Co Tab     ▶";
    std::unique_ptr<Process> panel;
    std::optional<TrayHost> host;
    const auto leadsBack = [&] {
        return comesTrue([&] { return host->press("Show App Window"); });
    };
    startWithOneNote(name);
    ASSERT_TRUE(hasWindow());
    for (int round = 0; round < 2; ++round) {
        host.reset();
        panel = desktop.start({"tint2"});
        ASSERT_TRUE(comesTrue([&] { return placeOfIcon().has_value(); }));
        ASSERT_TRUE(closesAndStays());
        ASSERT_TRUE(opensMenu());
        ASSERT_TRUE(choosesTheWindow());

        host.emplace(desktop.busAddress());
        ASSERT_TRUE(comesTrue([&] { return !host->menu().empty(); }));
        EXPECT_TRUE(comesTrue([&] { return !placeOfIcon(); })) << "one item is enough";
        panel.reset();
        EXPECT_NE(host->shownMenu().find(shown), std::string::npos) << host->shownMenu();
        ASSERT_TRUE(closesAndStays());
        EXPECT_TRUE(leadsBack());
        ASSERT_TRUE(hasWindow());
    }
    // A window that comes to the front a moment later takes the keyboard from the menu.
    EXPECT_TRUE(comesTrue([&] {
        if (!host->click(300, 300) || !comesTrue([&] { return shownWindows() == 2; }, 2))
            return false;
        desktop.run({"xdotool", "key", "Escape"});
        return comesTrue([&] { return shownWindows() == 1; }, 1);
    })) << "the menu comes beside the window, and goes";
    host.reset();
    EXPECT_EQ(closeWindow(), 0);
}

/// The bar that many have beside a compositor that brings none.
TEST_F(Shell, aBarOfItsUsersOwnIsATrayToo) {
    writeFile(desktop.home("bar"), R"({"height": 30, "modules-right": ["tray"]})");
    auto bar = desktop.start({"waybar", "-c", desktop.home("bar")});
    const auto items = [&] {
        const auto told =
            desktop.run({"gdbus", "call", "--session", "-d", "org.kde.StatusNotifierWatcher", "-o",
                         "/StatusNotifierWatcher", "-m", "org.freedesktop.DBus.Properties.Get",
                         "org.kde.StatusNotifierWatcher", "RegisteredStatusNotifierItems"});
        return told.starts_with("(<") ? std::to_string(std::ranges::count(told, '/')) : told;
    };
    startWithOneNote("Notes");
    ASSERT_TRUE(hasWindow());
    ASSERT_TRUE(comesTrue([&] { return items() == "1"; })) << items();
    ASSERT_TRUE(closesAndStays());
    EXPECT_EQ(items(), "1");
    EXPECT_EQ(desktop.start({desktop.corvaneProgram()})->waitForEnd(), 0);
    ASSERT_TRUE(hasWindow());
    bar.reset();
    EXPECT_EQ(closeWindow(), 0) << "with no tray the last window is the program";
}

TEST_F(Shell, itStartsAsTheSystemLooksAndASecondStartBringsItForward) {
    // Later than anyone waits for.
    const auto portal =
        settingsPortal(desktop.busAddress(), "(<<uint32 1>>,)", std::chrono::seconds(1));
    startWithOneNote("Notes");
    ASSERT_TRUE(hasWindow());
    EXPECT_TRUE(comes("Switch to Light Mode"));
    // A busy sway loses an X11 window now and then.
    std::unique_ptr<Process> other;
    ASSERT_TRUE(comesTrue(
        [&] {
            other = desktop.start({"xterm"});
            return comesTrue([&] { return desktop.window("xterm").has_value(); });
        },
        25));
    const auto isInFront = [&] { return desktop.screen().front() == "Corvane"; };
    const struct {
        std::string state;
        std::vector<std::string> prefix;
        const char* part = "Desktop Entry";
    } cases[]{
        {"covered", {}},
        {"minimized", {}, "Desktop Action show"},
        {"without a bus", {"env", "-u", "DBUS_SESSION_BUS_ADDRESS"}},
        {"without a runtime folder", {"env", "XDG_RUNTIME_DIR=/nonexistent"}},
    };
    for (const auto& [state, prefix, part] : cases) {
        SCOPED_TRACE(state);
        desktop.act(Deed::comeForward, "xterm");
        if (state == "minimized") desktop.act(Deed::minimize, "corvane");
        ASSERT_TRUE(comesTrue([&] { return !isInFront(); }));
        EXPECT_EQ(startByEntry(part, prefix), 0);
        EXPECT_TRUE(comesTrue(isInFront));
    }
    EXPECT_EQ(desktop.processes("corvane").size(), 1u);
    EXPECT_EQ(closeWindow(), 0);
}

TEST_F(Shell, aStartOnAnotherDisplaySaysThereWhereItRuns) {
    startWithOneNote("Notes");
    ASSERT_TRUE(hasWindow());
    std::string display;
    const auto server = desktop.startDisplay(display);
    const auto there = [&](std::vector<std::string> command) {
        command.insert(command.begin(), {"env", "DISPLAY=" + display});
        return command;
    };
    const auto second = desktop.start(there({desktop.corvaneProgram()}));
    EXPECT_TRUE(comesTrue([&] {
        return desktop.run(there({"xwininfo", "-root", "-tree"})).find("Corvane Is Running") !=
               std::string::npos;
    }));
    // Where no window manager gives it the keyboard, a key goes to nobody for some time.
    EXPECT_TRUE(comesTrue([&] {
        desktop.run(there({"xdotool", "key", "Return"}));
        return second->waitForEnd(0.1) == 1;
    }));
    EXPECT_EQ(closeWindow(), 0);
}

TEST_F(Shell, aFirstStartShowsTheTourAndTheNextDoesNot) {
    std::filesystem::remove(desktop.preferencesFile());
    startWithOneNote("Notes");
    ASSERT_TRUE(comes("Your workspace management companion"));
    desktop.corvane().signal(SIGTERM);
    EXPECT_EQ(desktop.corvane().waitForEnd(), 0);
    desktop.startCorvane();
    ASSERT_TRUE(comes("Your workspace management companion")) << "nobody has closed it";
    ASSERT_TRUE(desktop.press("Next"));
    EXPECT_TRUE(comes("2 of 6"));
    ASSERT_TRUE(desktop.press("Skip"));
    EXPECT_TRUE(comesTrue([&] { return !desktop.window("corvane", "Welcome to Corvane"); }));
    EXPECT_EQ(closeWindow(), 0);

    desktop.startCorvane();
    ASSERT_TRUE(comes("Notes"));
    EXPECT_FALSE(
        comesTrue([&] { return desktop.window("corvane", "Welcome to Corvane").has_value(); }, 3));
    EXPECT_EQ(closeWindow(), 0);
}

/// Also while a workspace runs: its mark moves for some seconds, and not where nobody sees it.
TEST_F(Shell, idleItSleeps) {
    startWithOneNote("Notes");
    ASSERT_TRUE(desktop.press("Start"));
    ASSERT_TRUE(comes("1 resources running"));
    // What comes with the start may come late, but only once.
    EXPECT_TRUE(comesTrue([&] { return sleeps(10); }, 40));
    const auto window = desktop.window("corvane")->id;
    for (const auto* act : {"windowminimize", "windowactivate", "windowminimize"})
        desktop.run({"xdotool", act, "--sync", window});
    const long before = allWakeUps();
    EXPECT_TRUE(comesTrue([&] { return sleeps(3); }, 40));
    EXPECT_LT(allWakeUps() - before, 60) << "the mark took four seconds with sixty in each";
    desktop.corvane().signal(SIGINT);
    EXPECT_EQ(desktop.corvane().waitForEnd(), 0);
}

} // namespace
} // namespace corvane::desktop
