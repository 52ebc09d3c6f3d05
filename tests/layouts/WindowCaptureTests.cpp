#include "layouts/LayoutScene.h"
#include "layouts/ScreenInfo.h"
#include "layouts/WindowCapture.h"

#include <gtest/gtest.h>

namespace corvane {
namespace {

constexpr Rect whole{0, 0, 1440, 900};
constexpr Rect small{100, 100, 800, 600};

class Capture : public testing::Test {
protected:
    LayoutScene scene;
    SimulatedScreen& screen = scene.screen;
    WindowCapture capture{screen, screen, screen};
    RunningApplication pad = scene.run("Pad", 7);
    RunningApplication other = scene.run("Other", 8);
    RunningApplication backdrop = scene.run("Backdrop", 9);

    /// The numbers of the windows, joined by blanks; "absent" where there are none at all.
    std::string windowsOf(const RunningApplication& application) {
        const auto windows = capture.windowsForApplication(application);
        if (!windows) return "absent";
        std::vector<std::string> numbers;
        for (const auto& window : *windows)
            numbers.push_back(std::to_string(window.number.value_or(-1)));
        return text::joined(numbers, " ");
    }
};

TEST_F(Capture, windowsBelongByProcessOrByNameAndMustBeLargerThanFiftyByFifty) {
    scene.open(pad, 1, {0, 0, 50, 900});
    scene.open(pad, 2, {0, 0, 900, 50});
    scene.open(pad, 3, {0, 0, 50.5, 50.5});
    scene.open(other, 4, small);
    scene.open(other, 5, small).info.ownerName = "Pad";
    scene.open(other, 6, small).info.ownerName = "pad";
    scene.open(pad, 7, small).info.layer = 25;
    scene.open(pad, 8, small).info.bounds->width.reset();
    scene.open(pad, 9, small).info.bounds.reset();
    scene.open(pad, 10, small).info.bounds->x.reset();
    scene.open(backdrop, 11, whole).info.layer = -5;
    scene.open(backdrop, 12, small).info.ownerPID.reset();
    scene.open(pad, 13, small).isOnScreen = false;
    EXPECT_EQ(windowsOf(pad), "3 5 7 10");
    EXPECT_EQ(windowsOf(other), "4 5 6");
    screen.windowListAnswers = false;
    EXPECT_EQ(windowsOf(pad), "absent");
}

TEST_F(Capture, anApplicationWithoutWindowsGetsTheFirstThatMayStandForIt) {
    scene.open(other, 1, small);
    EXPECT_EQ(windowsOf(pad), "absent");
    scene.open(backdrop, 2, whole).info.layer = -5;
    scene.open(backdrop, 3, whole).info.layer = -6;
    scene.open(backdrop, 4, whole).info.layer = 0;
    EXPECT_EQ(windowsOf(pad), "2");
    EXPECT_EQ(scene.told(),
              "No regular windows found for Pad, checking 2 potential fullscreen windows\n"
              "Attributing potential fullscreen window to Pad (no other windows found)");
    EXPECT_EQ(windowsOf(backdrop), "2 3 4") << "its own, by process";
    // A window that may stand for it isn't taken by name any more.
    screen.stack[1].info.ownerName = "Pad";
    scene.open(other, 5, small).info.ownerName = "Pad";
    EXPECT_EQ(windowsOf(pad), "5");
    screen.stack[1].info.bounds->x.reset();
    screen.stack.pop_back();
    EXPECT_EQ(windowsOf(pad), "2");
}

TEST_F(Capture, ofRegularAndFullscreenWindowsOnlyTheRegularOnesAreRecorded) {
    const struct {
        std::vector<Rect> windows;
        std::string records;
        std::string told;
    } cases[]{
        {{small, {5, 5, 60, 60}}, "Pad 100,100 800x600; Pad 5,5 60x60", ""},
        {{whole, small, whole},
         "Pad 100,100 800x600",
         "Pad has both regular and fullscreen windows - saving only regular windows to avoid "
         "conflicts"},
        {{whole, {0, 25, 1440, 885}},
         "Pad 0,0 1440x900 fullscreen; Pad 0,25 1440x885 fullscreen",
         "Pad only has fullscreen windows - saving those"},
        {{}, "", ""},
    };
    for (const auto& [windows, records, told] : cases) {
        screen.stack.clear();
        for (const auto& frame : windows)
            scene.open(pad, std::ssize(screen.stack), frame);
        scene.diagnostics.clear();
        EXPECT_EQ(describedRecords(capture.capture(pad, "pad")), records);
        std::erase_if(scene.diagnostics,
                      [](const auto& line) { return line.find(" - saving ") == line.npos; });
        EXPECT_EQ(scene.told(), told);
    }
}

TEST_F(Capture, aRecordTellsItsWindowAndOneWithoutAFrameIsPassedOver) {
    screen.displays.push_back({{1440, 0, 1920, 1080}, {}});
    scene.open(pad, 1, small).info.bounds->y.reset();
    scene.open(other, 2, {1500.5, 100, 800, 600}).info = {
        .bounds = WindowBounds{1500.5, 100, 800, 600}, .ownerName = "Pad"};
    EXPECT_EQ(capture.capture(pad, "pad"),
              (std::vector<WindowLayout>{{"Pad", {1500.5, 100, 800, 600}, false, false, 1}}));
    EXPECT_EQ(scene.told(),
              "Processing app: Pad (PID: 7)\n"
              "Found 2 windows for Pad\n"
              "Not fullscreen: layer=0, frame=800x600 at (1500.5, 100)\n"
              "Not fullscreen: layer=0, frame=800x600 at (1500.5, 100)\n"
              "Saved window 'Untitled' for Pad: 800x600 at (1500.5, 100) - Fullscreen: false, "
              "Layer: -1, Owner PID: -1 vs App PID: 7");
    pad.localizedName.reset();
    scene.open(pad, 3, small);
    EXPECT_EQ(describedRecords(capture.capture(pad, "pad")), "pad 100,100 800x600")
        << "under the name that was looked for";
}

TEST_F(Capture, theScreenIsTheFirstThatSharesAnAreaAndDisplaysAreNotConverted) {
    // The second stands above the first: its AppKit origin is positive where the window list counts
    // down from 0.
    const std::vector<Display> screens{
        {{0, 0, 1440, 900}, {}}, {{1440, -180, 1920, 1080}, {}}, {{0, 900, 1000, 500}, {}}};
    const struct {
        Rect frame;
        std::int64_t index;
    } cases[]{{small, 0},
              {{1430, 0, 800, 600}, 0},
              {{1440, 0, 800, 600}, 1},
              {{2000, -400, 100, 300}, 1},
              {{0, -500, 1000, 500}, 0},
              {{0, 1000, 100, 100}, 2},
              {{9000, 9000, 100, 100}, 0}};
    for (const auto& [frame, index] : cases)
        EXPECT_EQ(screenIndexForFrame(frame, screens), index) << described("", frame, false);
    EXPECT_EQ(screenIndexForFrame(small, {}), 0);
}

TEST_F(Capture, aSavedRecordHoldsTheWindowAsFractionsOfItsScreen) {
    const std::vector<Display> screens{{{0, 0, 1000, 500}, {}}, {{1000, 0, 2000, 1000}, {}}};
    const Rect frame{1500, 250, 500, 100};
    const struct {
        std::optional<std::int64_t> screen;
        std::optional<ScreenInfo> info;
    } cases[]{{1, {{{1000, 0, 2000, 1000}, {0.75, 0.25, 0.25, 0.1}, 1, false}}},
              {{}, {{{0, 0, 1000, 500}, {1.5, 0.5, 0.5, 0.2}, 0, true}}},
              {2, {{{0, 0, 1000, 500}, {1.5, 0.5, 0.5, 0.2}, 2, false}}},
              {-1, {{{0, 0, 1000, 500}, {1.5, 0.5, 0.5, 0.2}, -1, false}}}};
    for (const auto& [index, info] : cases)
        EXPECT_EQ(makeScreenInfo({"Pad", frame, false, false, index}, screens), info);

    auto saved = makeSavedWindowLayout({"Pad", frame, true, true, 1}, {5}, screens);
    EXPECT_EQ(saved, (SavedWindowLayout{"Pad",
                                        {},
                                        frame,
                                        0,
                                        {5},
                                        true,
                                        {{1000, 0, 2000, 1000}},
                                        {{0.75, 0.25, 0.25, 0.1}},
                                        1,
                                        false}));
    // Nothing that can't be stored comes of a desktop without a display, or with a display of no
    // size.
    for (const auto& bad : {std::vector<Display>{}, {{{0, 0, 0, 500}, {}}}, {{{0, 0, 9, 0}, {}}}}) {
        saved = makeSavedWindowLayout({"Pad", frame, true, true, 1}, {5}, bad);
        EXPECT_EQ(saved, (SavedWindowLayout{"Pad", {}, frame, 0, {5}, true, {}, {}, {}, true}));
    }
}

} // namespace
} // namespace corvane
