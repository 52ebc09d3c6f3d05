#include "layouts/LayoutScene.h"
#include "layouts/WindowControl.h"

#include <gtest/gtest.h>

namespace corvane {
namespace {

class Control : public testing::Test {
protected:
    LayoutScene scene;
    SimulatedDesktop& desktop = scene.desktop;
    SimulatedScreen& screen = scene.screen;
    WindowControl control{screen, desktop.queue, scene.platform.scripts, screen};
    RunningApplication pad = scene.run("Pad", 7);
    WindowLayout record{"Pad", {10, 20, 640, 480}, false, false, {}};
};

TEST_F(Control, aRecordGoesToTheFirstWindowPositionBeforeSize) {
    scene.open(pad, 1, {});
    scene.open(pad, 2, {});
    control.applyWindowLayout(record, pad);
    record.frame = {-300.5, 0, 700, 500};
    control.applyWindowLayout(record, pad);
    EXPECT_EQ(scene.done(), "AXPosition 7/1 10,20\nAXSize 7/1 640,480\n"
                            "AXPosition 7/1 -300.5,0\nAXSize 7/1 700,500");
    EXPECT_EQ(scene.told(),
              "Applied layout for 'Pad' - Position: (10, 20), Size: (640, 480), Fullscreen: false\n"
              "Applied layout for 'Pad' - Position: (-300.5, 0), Size: (700, 500), Fullscreen: "
              "false");
    EXPECT_EQ(scene.elapsed(), 0);
}

TEST_F(Control, aLateWindowIsWaitedForWithFiveTriesHalfASecondApart) {
    const struct {
        double appearsAt;
        bool answers;
        int attempt; // 0: never
        double elapsed;
    } cases[]{{0, true, 1, 0},     {0.5, true, 2, 0.5}, {1.2, true, 4, 1.5},
              {2.0, true, 5, 2.0}, {2.1, true, 0, 2.0}, {0, false, 0, 2.0}};
    for (const auto& [appearsAt, answers, attempt, elapsed] : cases) {
        const double begin = scene.elapsed();
        screen.stack.clear();
        scene.open(pad, 1, {}).appearsAt = begin + appearsAt;
        if (!answers) screen.unanswering = {7};
        control.applyWindowLayout(record, pad);
        EXPECT_DOUBLE_EQ(scene.elapsed() - begin, elapsed) << appearsAt;

        std::string expected;
        for (int failed = 1; failed < (attempt > 0 ? attempt : 5); ++failed) {
            expected += "Attempt " + std::to_string(failed) +
                        " failed to get windows for 'Pad', retrying in 0.5s...\n";
        }
        if (attempt > 1) {
            expected += "Got windows for 'Pad' on attempt " + std::to_string(attempt) + "\n";
        }
        expected += attempt == 0 ? "Could not get windows for 'Pad' after retries"
                                 : "Applied layout for 'Pad' - Position: (10, 20), Size: (640, "
                                   "480), Fullscreen: false";
        EXPECT_EQ(scene.told(), expected);
        EXPECT_EQ(scene.done().empty(), attempt == 0);
    }
}

constexpr auto script =
    "script tell application \"Pad\" /     activate /     tell application \"System Events\" /     "
    "    tell process \"Pad\" /             try /                 click button 2 of window 1 /     "
    "        on error /                 -- Try keyboard shortcut as fallback /                 "
    "keystroke \"f\" using {control down, command down} /             end try /         end tell / "
    "    end tell / end tell\n";

/// The ways to fullscreen, each with what stands in the way of those before it.
TEST_F(Control, fullscreenIsTriedNativelyThenByScriptThenByTheMainScreensFrame) {
    const auto failed = [](std::optional<std::string> message) {
        return ScriptOutcome{.error = ScriptError{-1719, std::move(message), "{...}"}};
    };
    const std::string refused =
        "AXFullScreen failed for 'Pad' (-25205), trying alternative methods...\n";
    const std::string manual = "\nApplied manual fullscreen (non-native) for 'Pad'";
    const std::string frame = "AXPosition 7/1 1440,50\nAXSize 7/1 1920,1080\n";
    const struct {
        bool nativeWorks;
        std::optional<ScriptOutcome> script;
        bool hasMainScreen;
        std::string done;
        std::string told;
    } cases[]{
        {true, failed("unused"), true, "", "Set fullscreen mode for 'Pad' using AXFullScreen"},
        {false, ScriptOutcome{}, true, script,
         refused + "Set fullscreen mode for 'Pad' using AppleScript"},
        {false, failed("Not allowed."), true, script + frame,
         refused + "AppleScript method failed for 'Pad': Not allowed." + manual},
        {false, failed({}), true, script + frame,
         refused + "AppleScript method failed for 'Pad': Unknown error" + manual},
        {false, std::nullopt, true, script + frame,
         refused + "Applied manual fullscreen (non-native) for 'Pad'"},
        {false, failed("No."), false, script, refused + "AppleScript method failed for 'Pad': No."},
    };
    screen.displays.push_back({{1440, 50, 1920, 1080}, {}});
    record.isFullscreen = true;
    for (const auto& [nativeWorks, outcome, hasMainScreen, done, told] : cases) {
        screen.stack.clear();
        auto& window = scene.open(pad, 1, {});
        if (!nativeWorks) window.refusals = {{"AXFullScreen", -25205}};
        desktop.scriptOutcomes = {{"System Events", outcome}};
        screen.mainDisplay = hasMainScreen ? 1 : 2;
        control.applyWindowLayout(record, pad);
        EXPECT_EQ(scene.done() + "\n", "AXPosition 7/1 10,20\nAXSize 7/1 640,480\n"
                                       "AXFullScreen 7/1 true\n" +
                                           done);
        EXPECT_EQ(scene.told(),
                  "Attempting to set fullscreen for 'Pad'...\n" + told +
                      "\nApplied layout for 'Pad' - Position: (10, 20), Size: (640, 480), "
                      "Fullscreen: true");
    }
}

TEST_F(Control, aRefusedPositionOrSizeStopsNothing) {
    record.isFullscreen = true;
    scene.open(pad, 1, {}).refusals = {{"AXPosition", -25204}, {"AXSize", -25200}};
    control.applyWindowLayout(record, pad);
    EXPECT_EQ(scene.done(), "AXPosition 7/1 10,20\nAXSize 7/1 640,480\nAXFullScreen 7/1 true");
    EXPECT_TRUE(scene.told().starts_with("Failed to set position for 'Pad': -25204\n"
                                         "Failed to set size for 'Pad': -25200\n"));
    EXPECT_TRUE(screen.stack[0].isFullscreen);
    record.isFullscreen = false;
    control.applyWindowLayout(record, pad);
    EXPECT_TRUE(screen.stack[0].isFullscreen) << "nothing takes a window out of it";
}

} // namespace
} // namespace corvane
