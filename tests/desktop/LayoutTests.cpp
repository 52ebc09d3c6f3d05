#include "bus/DesktopServices.h"
#include "desktop/DesktopTest.h"
#include "desktop/harness/TrayHost.h"
#include "foundation/PropertyList.h"

#include <algorithm>
#include <csignal>
#include <cstdio>

namespace corvane::desktop {
namespace {

/// Prints "NAME 417,163 533x391" for each of the first workspace's records.
constexpr auto readRecords = R"(
import json, sys
for record in json.load(open(sys.argv[1]))[0].get('savedWindowLayouts', []):
    (x, y), (width, height) = record['frame']
    print(record['appName'], f'{x:g},{y:g} {width:g}x{height:g}',
          *['fullscreen'] * record['isFullscreen'])
)";

class Layouts : public DesktopTest {
protected:
    using Names = std::vector<std::string>;

    Layouts() {
        writeFile(notes.path, "Notes\n");
        // Draws its title bar by itself, and shadows where the window manager can show them.
        desktop.install("drawn", "Drawn",
                        "env GTK_CSD=1 mousepad --disable-server --name=Drawn --class=Drawn\n"
                        "StartupWMClass=Drawn");
    }
    /// Switches layouts on.
    void prefer(bool autoSave) {
        const PropertyList::Dictionary preferences{{"HasCompletedOnboarding", {true}},
                                                   {"CorvaneEnableAccessibilityFeatures", {true}},
                                                   {"CorvaneAutoSaveLayouts", {autoSave}}};
        writeFile(desktop.preferencesFile(), PropertyList{preferences}.toBinary());
    }
    bool startsAll(const Names& names) {
        const auto isOpen = [&](const auto& name) { return desktop.window(name).has_value(); };
        return desktop.press("Start") &&
               comesTrue([&] { return std::ranges::all_of(names, isOpen); }, 60) &&
               comes("Running");
    }
    bool finishesAll(const Names& names) {
        const auto isGone = [&](const auto& name) { return !desktop.window(name); };
        return desktop.press("Finish") && desktop.press("Finish & Close") &&
               answer("Successfully closed", "OK") &&
               comesTrue([&] { return std::ranges::all_of(names, isGone); });
    }
    bool closes(const std::string& name) {
        desktop.act(Deed::leaveFullScreen, name);
        desktop.act(Deed::close, name);
        return comesTrue([&] { return !desktop.window(name); });
    }
    std::string seen(const Names& names) {
        std::string all;
        for (const auto& name : names) {
            const auto window = desktop.window(name);
            all += name + " " + (window ? desktop.screen().look(*window) : "") + "\n";
        }
        return all;
    }
    std::string saved() {
        return desktop.run({"python3", "-c", readRecords, desktop.workspacesFile()});
    }
    bool savesInTheWindow() {
        return desktop.press("Save Layout") &&
               answer("The current window layout has been saved for 'Desk'.", "OK");
    }
    void signal(const std::string& program, int number) {
        for (const pid_t process : desktop.processes(program))
            kill(process, number);
    }
    /// Whether the windows look like that soon.
    testing::AssertionResult become(const Names& names, const std::string& look) {
        if (comesTrue([&] { return seen(names) == look; }, 30)) return testing::AssertionSuccess();
        return testing::AssertionFailure() << seen(names) << "is not\n" << look;
    }
    /// As a person does it with a window.
    void change(const std::string& name, Deed deed) {
        comesToLookOtherwise(name, [&] { desktop.act(deed, name); });
    }
    /// Some compositors tell of it before the program has followed.
    bool fillsScreen(const std::string& name) {
        desktop.act(Deed::fillScreen, name);
        return comesTrue([&] { return seen({name}) == name + fullscreen; });
    }
    void place(const std::string& name, const std::string& frame) {
        comesToLookOtherwise(name, [&] {
            if (const auto window = desktop.window(name)) desktop.screen().place(*window, frame);
        });
    }
    void comesToLookOtherwise(const std::string& name, const std::function<void()>& act) {
        const auto before = seen({name});
        act();
        // A program may follow in more than one step.
        std::string now;
        EXPECT_TRUE(comesTrue([&] {
            return std::exchange(now, seen({name})) == seen({name}) && now != before;
        })) << before;
    }

    /// The place of a window that fills it, whose height above the floor is taken for that below
    /// the ceiling. Where the window manager doesn't tell, it is the screen.
    std::string workArea() {
        int x = 0, y = 0, width = 1440, height = 900;
        std::sscanf(desktop.run({"xprop", "-root", "-notype", "_NET_WORKAREA"}).c_str(),
                    "_NET_WORKAREA = %d, %d, %d, %d", &x, &y, &width, &height);
        return std::to_string(x) + "," + std::to_string(900 - y - height) + " " +
               std::to_string(width) + "x" + std::to_string(height) +
               (height == 900 ? " maximized\n" : "\n");
    }

    const SceneResource notes{"notes.txt", "file", desktop.home("notes.txt")};
    const SceneResource drawn{"Drawn", "application", "/Applications/Drawn.app"};
    const std::string fullscreen = " 0,0 1440x900 fullscreen\n";
};

TEST_F(Layouts, savedInTheWindowComeBackToThePixel) {
    prefer(false);
    start({{"Desk", "", "star", {notes, drawn, {"Shell", "terminal", "true"}}}});
    const Names all{"Mousepad", "Drawn", "XTerm"};
    ASSERT_TRUE(startsAll(all));
    place("Mousepad", "417,163 533x391");
    place("Drawn", "60,310 611x405");
    place("XTerm", "700,81 467x333");
    // Programs that hang keep no one waiting.
    signal("mousepad", SIGSTOP);
    ASSERT_TRUE(savesInTheWindow());

    signal("mousepad", SIGCONT);
    const auto arranged = saved();
    EXPECT_EQ(seen(all), arranged);

    // What programs remember of their windows is wrong.
    place("Mousepad", "20,20 700x300");
    change("Drawn", Deed::maximize);
    ASSERT_TRUE(finishesAll(all));
    ASSERT_TRUE(startsAll(all));
    signal("xterm", SIGSTOP);
    EXPECT_TRUE(become(all, arranged));
    ASSERT_TRUE(savesInTheWindow());

    EXPECT_EQ(saved(), arranged);
    EXPECT_EQ(closeWindow(), 0);
}

TEST_F(Layouts, savedAtTheEndBringOneWindowBackFullscreenAndFillTheScreenWithTheOthers) {
    prefer(true);
    const Names all{"Mousepad", "Drawn"};
    const auto endsAndStartsAgain = [&](const std::string& look, bool bySignal) {
        if (bySignal) desktop.corvane().signal(SIGTERM);
        EXPECT_EQ(bySignal ? desktop.corvane().waitForEnd() : closeWindow(), 0);
        EXPECT_EQ(saved(), look);
        EXPECT_EQ(seen(all), look) << "they stay";
        EXPECT_TRUE(closes("Mousepad") && closes("Drawn"));
        desktop.startCorvane();
        return startsAll(all);
    };
    start({{"Desk", "", "star", {notes, drawn}}});
    ASSERT_TRUE(startsAll(all));
    place("Drawn", "60,310 611x405");
    ASSERT_TRUE(fillsScreen("Mousepad"));
    const auto look = "Mousepad" + fullscreen + seen({"Drawn"});
    ASSERT_TRUE(endsAndStartsAgain(look, false));
    EXPECT_TRUE(become(all, look));

    ASSERT_TRUE(fillsScreen("Drawn"));
    // Some have one full screen at a time.
    if (!seen({"Mousepad"}).ends_with("fullscreen\n")) return;
    ASSERT_TRUE(endsAndStartsAgain("Mousepad" + fullscreen + "Drawn" + fullscreen, true));
    EXPECT_TRUE(comes("'Mousepad' will be fullscreen, others will be maximized."));
    // A covered window may follow only once it is seen.
    desktop.act(Deed::comeForward, "Drawn");
    EXPECT_TRUE(become(all, "Mousepad" + fullscreen + "Drawn " + workArea()));
}

TEST_F(Layouts, savedMaximizedComeBackSoAndAFullScreenStays) {
    // At the bottom a window beside it would count as one that covers the screen.
    writeFile(desktop.home(".config/tint2/tint2rc"), "panel_items = T\n"
                                                     "panel_position = top center horizontal\n"
                                                     "panel_size = 100% 40\n");
    const auto panel = desktop.start({"tint2"});
    desktop.install("clock", "XClock", "xclock\nStartupWMClass=XClock");
    prefer(false);
    const Names all{"XClock", "Mousepad"};
    start({{"Desk", "", "star", {{"XClock", "application", "/Applications/XClock.app"}, notes}}});
    ASSERT_TRUE(startsAll(all));
    change("Mousepad", Deed::maximize);
    std::string maximized;
    ASSERT_TRUE(comesTrue([&] {
        return std::exchange(maximized, seen({"Mousepad"})) == seen({"Mousepad"}) &&
               maximized.ends_with(" maximized\n") &&
               maximized.find("1440x900") == std::string::npos;
    })) << maximized;
    ASSERT_TRUE(savesInTheWindow());
    EXPECT_TRUE(closes("Mousepad"));
    ASSERT_TRUE(fillsScreen("XClock"));
    desktop.corvane().signal(SIGTERM);
    EXPECT_EQ(desktop.corvane().waitForEnd(), 0);

    // Its window is behind the full screen; the records are followed in their order.
    const TrayHost tray(desktop.busAddress());
    desktop.startCorvane();
    ASSERT_TRUE(tray.press("Desk     ▶"));
    ASSERT_TRUE(opens("mousepad", "notes.txt"));
    EXPECT_TRUE(become(all, "XClock" + fullscreen + maximized));
}

/// A session that ends, and one whose end is called off, so that the user ends Corvane.
TEST_F(Layouts, savedBeforeOtherProgramsLeaveTheSession) {
    const auto session = sessionManager(desktop.busAddress());
    const auto answers = [&] {
        return std::ranges::count(session.calls(), "EndSessionResponse (true, '')");
    };
    const auto agrees = [&] {
        const auto before = answers();
        return comesTrue([&] {
            session.emit("QueryEndSession", g_variant_new("(u)", 0));
            return answers() > before;
        });
    };
    prefer(true);
    const Names all{"Mousepad", "Drawn"};
    start({{"Desk", "", "star", {notes, drawn}}});
    ASSERT_TRUE(startsAll(all));
    place("Drawn", "60,310 611x405");
    ASSERT_TRUE(agrees());
    const auto last = seen(all);
    EXPECT_EQ(saved(), last);
    EXPECT_TRUE(closes("Drawn"));
    session.emit("EndSession", nullptr);
    EXPECT_EQ(desktop.corvane().waitForEnd(), 0);
    EXPECT_EQ(saved(), last);

    place("Mousepad", "417,163 533x391");
    desktop.startCorvane();
    ASSERT_TRUE(startsAll(all));
    ASSERT_TRUE(become(all, last));
    ASSERT_TRUE(agrees());
    session.emit("CancelEndSession", nullptr);
    place("Mousepad", "317,163 533x391");
    EXPECT_EQ(closeWindow(), 0);
    EXPECT_EQ(saved(), seen(all));
}

TEST_F(Layouts, withoutAWindowManagerTheUserHearsWhatIsMissing) {
    start({{"Desk", "", "star", {notes}}});
    ASSERT_TRUE(comes("Desk"));
    desktop.screen().stopManager();
    ASSERT_TRUE(desktop.press("Settings"));
    ASSERT_TRUE(desktop.press("Window Layout Features"));
    ASSERT_TRUE(comes("Window layout features require Accessibility permission"));
    // Some leave the keyboard to nobody when they go.
    ASSERT_TRUE(desktop.act("Press", "Open System Preferences"));
    EXPECT_TRUE(comes("Start a window manager: without one, nothing places windows."));
}

using Sway = Layouts;

TEST_F(Sway, whatItTilesComesBackToItsWorkspace) {
    prefer(false);
    start({{"Desk", "", "star", {notes}}});
    // The second output shows the second workspace.
    for (const auto* words : {"create_output", "for_window [title=\"notes.txt\"] floating disable"})
        desktop.run({"swaymsg", words});
    ASSERT_TRUE(startsAll({"Mousepad"}));
    comesToLookOtherwise("Mousepad", [&] {
        desktop.run({"swaymsg", "[title=\"notes.txt\"] move container to workspace 2"});
    });
    const auto arranged = seen({"Mousepad"});
    EXPECT_NE(arranged.find("Mousepad 1440,0 "), arranged.npos) << arranged;
    ASSERT_TRUE(savesInTheWindow());
    EXPECT_EQ(saved(), arranged) << "it is no full screen";
    ASSERT_TRUE(finishesAll({"Mousepad"}));
    ASSERT_TRUE(startsAll({"Mousepad"}));
    EXPECT_TRUE(become({"Mousepad"}, arranged));
}

using Gnome = Layouts;

TEST_F(Gnome, theExtensionIsSwitchedOnWhereAPermissionIsAskedForAndALayoutSaved) {
    desktop.screen().stopManager();
    start({{"Desk", "", "star", {notes}}});
    ASSERT_TRUE(desktop.press("Start") && comes("Running"));
    ASSERT_TRUE(desktop.press("Settings"));
    EXPECT_TRUE(comes("GNOME (Wayland) · windows: no · layouts: no\n"
                      "Corvane's extension for GNOME Shell is off: switch on Window Layout "
                      "Features, or save a layout, and choose Open System Preferences."));
    ASSERT_TRUE(desktop.press("Window Layout Features"));
    ASSERT_TRUE(comes("Window layout features require Accessibility permission"));
    ASSERT_TRUE(desktop.press("Open System Preferences"));
    ASSERT_TRUE(comes("Corvane's extension for GNOME Shell is on: Corvane can see and place "
                      "windows now."));
    ASSERT_TRUE(desktop.press("OK"));
    ASSERT_TRUE(comes("GNOME (Wayland) · windows: yes · layouts: yes"));
    ASSERT_TRUE(desktop.press("Done"));
    place("Mousepad", "417,163 533x391");
    ASSERT_TRUE(become({"Mousepad"}, "Mousepad 417,163 533x391\n"));
    ASSERT_TRUE(savesInTheWindow());
    EXPECT_EQ(saved(), seen({"Mousepad"}));
    ASSERT_TRUE(finishesAll({"Mousepad"}));
    ASSERT_TRUE(startsAll({"Mousepad"}));
    EXPECT_TRUE(become({"Mousepad"}, "Mousepad 417,163 533x391\n"));
}

TEST_F(Layouts, aWindowThatComesLateGetsItsPlaceAllTheSame) {
    prefer(false);
    // Its wrapper ends before the window comes.
    writeFile(desktop.home("late"), "sh -c 'sleep 3; exec xeyes' &\nsleep 1\n");
    desktop.install("late", "XEyes", "sh " + desktop.home("late") + "\nStartupWMClass=XEyes");
    start({{"Desk", "", "star", {{"XEyes", "application", "/Applications/XEyes.app"}}}});
    ASSERT_TRUE(startsAll({"XEyes"}));
    place("XEyes", "417,163 533x391");
    ASSERT_TRUE(savesInTheWindow());

    const auto arranged = saved();
    ASSERT_TRUE(finishesAll({"XEyes"}));
    ASSERT_TRUE(startsAll({"XEyes"}));
    EXPECT_TRUE(become({"XEyes"}, arranged));
}

} // namespace
} // namespace corvane::desktop
