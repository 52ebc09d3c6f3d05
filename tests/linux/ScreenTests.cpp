#include "layouts/RememberedDisplays.h"
#include "layouts/WindowCapture.h"
#include "linux/running/LaunchedApplications.h"
#include "linux/running/RunningApplications.h"
#include "linux/screen/LinuxAccessibility.h"
#include "linux/screen/LinuxDisplays.h"
#include "linux/screen/LinuxWindowList.h"
#include "linux/screen/SystemSettings.h"
#include "linux/windows/RecentWindows.h"
#include "machine/Program.h"
#include "simulated/SimulatedDesktop.h"
#include "windows/MemoryWindowSystem.h"

#include <cmath>
#include <list>
#include <sstream>

using namespace corvane;
using namespace corvane::machine;

namespace {

struct ScreenTest : testing::Test {
    ManagedWindow& show(const std::string& title, pid_t process = getpid()) {
        return system_.show({.window = {.process = process}, .title = title});
    }
    static AccessibilityWindow element(const ManagedWindow& window) {
        return {window.window.process, window.window.number};
    }
    /// Front to back: number of the owner's windows behind the title, layer, and frame.
    std::string all() {
        std::ostringstream text;
        const auto windows = list_.onScreenWindows();
        if (!windows) return "nothing told";
        for (const auto& each : *windows) {
            text << each.name.value_or("?") << " " << *each.layer << " " << *each.bounds->x << ","
                 << *each.bounds->y << " " << *each.bounds->width << "x" << *each.bounds->height
                 << (each.tilingWorkspace ? " on " + *each.tilingWorkspace : "")
                 << (each.ownerName ? "; " : " nobody's; ");
        }
        return text.str();
    }
    std::string state(const AccessibilityWindow& window) {
        const auto position = accessibility_.position(window);
        const auto size = accessibility_.size(window);
        const auto fullscreen = accessibility_.isFullscreen(window);
        if (!position || !size || !fullscreen) return "invalid";
        std::ostringstream text;
        text << position->x << "," << position->y << " " << size->width << "x" << size->height
             << (*fullscreen ? " fullscreen" : "");
        return text.str();
    }

    static constexpr FrameCodes took{};
    static constexpr FrameCodes tookNothing{Accessibility::cannotComplete,
                                            Accessibility::cannotComplete};
    MemoryWindowSystem system_;
    RecentWindows recent_{system_};
    InstalledApplications installed_;
    LaunchedApplications launched_;
    RunningApplications running_{installed_, recent_, launched_};
    LinuxAccessibility accessibility_{system_, running_};
    LinuxWindowList list_{recent_, running_};
    LinuxDisplays displays_{recent_};
};

TEST_F(ScreenTest, showsFrontToBackAndUpwardFromThePrimaryMonitor) {
    system_.screens = {{{{640, 400}, {800, 500}}, {{640, 424}, {800, 476}}},
                       {{{0, 300.5}, {640, 600}}, {{0, 300.5}, {640, 600}}}};
    show("desktop").kind = WindowKind::desktop;
    show("below").layer = WindowLayer::below;
    auto& window = show("sh\377dow");
    window.frame = {{650.25, 410}, {300, 200}};
    show("unseen").isMinimized = true;
    show("elsewhere").workspace = "2";
    show("nobody's", 0);
    show("above").layer = WindowLayer::above;
    show("dock").kind = WindowKind::dock;
    EXPECT_EQ(all(), "dock 20 -540,-300 300x200; above 3 -540,-300 300x200; "
                     "nobody's 0 -540,-300 300x200 nobody's; sh\uFFFDdow 0 10.25,10 300x200; "
                     "below -1 -540,-300 300x200; "
                     "desktop -2147483623 -540,-300 300x200; ");
    const auto screens = displays_.screens();
    ASSERT_EQ(screens.size(), 2u);
    EXPECT_EQ(screens[0].visibleFrame, (Rect{0, 0, 800, 476}));
    EXPECT_EQ(screens[1].frame, (Rect{-640, -0.5, 640, 600}));
    EXPECT_EQ(accessibility_.setFrame(element(system_.clients[2].window), {-500, 20, 310, 210}),
              took);
    EXPECT_EQ(system_.clients[2].window.frame.origin, (PixelPoint{140, 420}));
    system_.active = system_.clients[2].window.window.number;
    EXPECT_TRUE(comesTrue([&] { return displays_.mainScreen()->frame == screens[1].frame; }));
    system_.active.reset();
    EXPECT_TRUE(comesTrue([&] { return displays_.mainScreen()->frame == screens[0].frame; }));
    system_.serverHasStopped = true;
    comesToShow("nothing told", [this] { return all(); });
    EXPECT_TRUE(comesTrue([this] { return displays_.screens().empty(); }));
}

TEST_F(ScreenTest, hasTheWindowsOfAnApplicationFrontToBackUnseenOnesLast) {
    EXPECT_EQ(accessibility_.windows(getpid()), std::vector<AccessibilityWindow>{});
    const auto back = element(show("back"));
    auto& iconified = show("iconified");
    iconified.isMinimized = true;
    const auto last = element(iconified);
    const auto front = element(show("front"));
    show("palette").kind = WindowKind::other;
    show("a stranger's", 1);
    const std::vector<AccessibilityWindow> expected{front, back, last};
    EXPECT_TRUE(comesTrue([&] { return accessibility_.windows(getpid()) == expected; }));
    EXPECT_FALSE(accessibility_.windows(0)) << "whose process nobody can tell";
    EXPECT_FALSE(accessibility_.windows(-1));
    const AccessibilityWindow stranger{1, front.identifier};
    EXPECT_EQ(state(stranger), "invalid");
    constexpr FrameCodes isInvalid{Accessibility::invalidElement, Accessibility::invalidElement};
    EXPECT_EQ(accessibility_.setFrame(stranger, {1, 1, 2, 2}), isInvalid);
    EXPECT_EQ(accessibility_.setFullscreen(stranger, true), Accessibility::invalidElement);
    EXPECT_EQ(state(front), "100,100 300x200");
}

TEST_F(ScreenTest, changesAWindowAndSaysWhatCameOfIt) {
    const auto window = element(show("one"));
    EXPECT_EQ(accessibility_.setFrame(window, {20, 30, 640, 480}), took);
    EXPECT_EQ(state(window), "20,30 640x480");
    EXPECT_EQ(accessibility_.setFrame(window, {20, 30, std::nan(""), 1}), tookNothing);
    const auto setWorkspace = [&] { return accessibility_.setTilingWorkspace(window, "2: web"); };
    EXPECT_EQ(setWorkspace(), Accessibility::cannotComplete);
    system_.clients[0].window.isTiled = true;
    comesToShow("one 0 20,30 640x480 on 1; ", [this] { return all(); });
    EXPECT_EQ(accessibility_.setFrame(window, {1, 1, 2, 2}), tookNothing);
    EXPECT_EQ(setWorkspace(), Accessibility::success);
    comesToShow("one 0 20,30 640x480 on 2: web; ", [this] { return all(); });
    EXPECT_EQ(std::exchange(system_.clients[0].window.workspace, "1"), "2: web");
    system_.clients[0].window.isTiled = false;

    EXPECT_EQ(accessibility_.toggleFullscreen(window), Accessibility::success);
    EXPECT_EQ(state(window), "0,0 1440x900 fullscreen");
    EXPECT_EQ(accessibility_.setFrame(window, {1, 1, 2, 2}), tookNothing);
    EXPECT_EQ(accessibility_.zoom(window), Accessibility::success);
    EXPECT_EQ(state(window), "20,30 640x480");

    system_.managerHasStopped = true;
    EXPECT_FALSE(accessibility_.isProcessTrusted());
    EXPECT_EQ(accessibility_.setFullscreen(window, true), Accessibility::cannotComplete);
    system_.managerHasStopped = false;
    system_.fillScreen(system_.clients[0], true);
    EXPECT_EQ(accessibility_.zoom(window), Accessibility::success);
    EXPECT_EQ(state(window), "0,0 1440x900 fullscreen") << "it was only late";
    EXPECT_TRUE(accessibility_.isProcessTrusted());
    accessibility_.setFullscreen(window, false);
    system_.refusesFullscreen = true;
    for (const bool isMaximized : {true, false}) {
        EXPECT_EQ(accessibility_.zoom(window), Accessibility::success);
        EXPECT_EQ(system_.clients[0].window.isMaximized, isMaximized) << "the next best";
    }
}

TEST_F(ScreenTest, maximizesWhatFillsAWorkArea) {
    system_.screens[0].workArea = {{0, 0}, {1440, 860}};
    const auto window = element(show("one"));
    const auto& client = system_.clients[0].window;
    for (const double height : {860, 859, 860}) {
        EXPECT_EQ(accessibility_.setFrame(window, {0, 0, 1440, height}), took);
        EXPECT_EQ(client.frame.size, (PixelSize{1440, height}));
        EXPECT_EQ(client.isMaximized, height == 860);
    }
}

TEST_F(ScreenTest, asksALateSystemOnceMore) {
    struct Late : MemoryWindowSystem {
        int timesLate = 0;
        bool isReady(Deadline by) override {
            return timesLate-- <= 0 && MemoryWindowSystem::isReady(by);
        }
        WindowAnswer place(const WindowRef& window, const FrameWish& wish, Deadline by) override {
            return timesLate-- > 0 ? WindowAnswer::unanswered
                                   : MemoryWindowSystem::place(window, wish, by);
        }
    } late;
    const auto window = element(late.show({.window = {.process = getpid()}}));
    LinuxAccessibility accessibility(late, running_);
    for (const int times : {0, 1, 2}) {
        late.timesLate = times;
        EXPECT_EQ(accessibility.isProcessTrusted(), times < 2) << times;
        late.timesLate = times;
        EXPECT_EQ(accessibility.setFrame(window, {1, 2, 30, 40 + double(times)}),
                  times < 2 ? took : tookNothing);
    }
}

TEST_F(ScreenTest, saysWhatTheDesktopCanAndSwitchesOnWhatItMay) {
    struct Switchable : MemoryWindowSystem {
        std::string switchOn(Deadline) override {
            return std::exchange(whatToDoFirst, "") + " Done.";
        }
    } system;
    LinuxAccessibility accessibility(system, running_);
    const auto facts = [&] {
        const auto desktop = accessibility.desktop();
        return desktop.name + (desktop.tellsWindows ? " windows" : "") +
               (desktop.placesWindows ? " layouts" : "") + " " + desktop.whatToDoFirst;
    };
    EXPECT_EQ(facts(), "memory windows layouts ");
    system.whatToDoFirst = "Switch it on.";
    EXPECT_EQ(facts(), "memory windows Switch it on.");
    SimulatedDesktop desktop;
    for (const auto* said :
         {"Switch it on. Done.", "Nothing has to be allowed on this desktop: "
                                 "Corvane can save and restore window layouts."}) {
        SystemSettings(system, desktop.platform().alerts).open();
        EXPECT_EQ(desktop.shownAlerts.back().message, said);
    }
    system.serverHasStopped = true;
    EXPECT_EQ(facts(), "memory The desktop doesn't answer at the moment.");
}

TEST_F(ScreenTest, savingALayoutOfFiveApplicationsPutsTwoQuestions) {
    std::list<Program> programs;
    for (const auto* name : {"one", "two", "three", "four", "five"})
        show(name, programs.emplace_back(std::vector<std::string>{"sleep", "60"}).id())
            .hints.className = name;
    RecentWindows recent(system_, std::chrono::minutes(1));
    RunningApplications running(installed_, recent, launched_);
    LinuxWindowList list(recent, running);
    LinuxDisplays linuxDisplays(recent);
    LinuxAccessibility accessibility(recent, running);
    EXPECT_TRUE(accessibility.isProcessTrusted());
    const RememberedDisplays displays(linuxDisplays);
    const WindowCapture capture(list, displays, accessibility);
    std::size_t captured = 0;
    for (const auto& application : running.list())
        captured += capture.capture(application, "").size();
    EXPECT_EQ(captured, 5u);
    EXPECT_EQ(system_.questions, 2);
    // Putting them back shows no other workspace, so the monitors stay as they are.
    for (const auto& client : system_.clients) {
        const auto& window = client.window.window;
        EXPECT_EQ(accessibility.setFrame({window.process, window.number}, {8, 9, 300, 200}), took);
    }
    EXPECT_EQ(system_.questions, 7);
}

} // namespace
