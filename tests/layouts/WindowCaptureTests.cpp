#include "layouts/FullscreenDetection.h"
#include "layouts/LayoutTest.h"
#include "layouts/ScreenInfo.h"
#include "layouts/WindowCapture.h"

#include <cmath>

using namespace corvane;

namespace {

struct Fullscreen : LayoutTest {
    bool verdict(const WindowInfo& window) {
        return FullscreenDetection(screen, screen).isWindowFullscreen(window);
    }
};

constexpr std::optional<std::int64_t> none;

TEST_F(Fullscreen, boundsAndLayerDecideByThreeRulesWithAnyDisplay) {
    const std::tuple<Rect, std::optional<std::int64_t>, bool> cases[]{
        {{0, 0, 1440, 900}, 0, true},        {{0, 0, 1440, 900}, none, true},
        {{-1920, -80, 1440, 900}, 0, true},

        {{0, 25, 1440, 885}, none, true},    {{300, 200, 1411.2, 882}, 0, true},
        {{300, 200, 1411.1, 882}, 0, false}, {{300, 200, 1411.2, 881.9}, 0, false},
        {{300, 200, 1440, 900}, 1000, true}, {{300, 200, 1440, 900}, 2000, true},
        {{300, 200, 1440, 900}, 25, false},  {{0, 0, 1368, 855}, 0, true},
        {{0, 0, 1367.9, 855}, 0, false},     {{0, 0, 1368, 854.9}, 0, false},
        {{0, 25, 1380, 860}, 0, false},      {{0, 0, 1383, 864}, 25, true},
        {{1, 0, 1383, 864}, 25, false},      {{0, 0, 1440, 900}, -20, true},
        {{0, 1, 1440, 900}, -20, false},     {{1440, 0, 800, 1280}, 0, true},
        {{0, 0, 800, 1280}, 0, true},        {{200, 200, 1300, 1270}, 0, true},
        {{200, 200, 1400, 881}, 0, false}};
    screen.displays.push_back({{1440, 0, 800, 1280}, {}});
    for (const auto& [frame, layer, expected] : cases) {
        auto window = windowInfo(7, 3, "Pad", frame);
        window.layer = layer;
        EXPECT_EQ(verdict(window), expected) << describedFrame(frame);
    }
    const auto window = windowInfo(7, 3, "Pad", {0, 0, 1440, 900});
    for (const auto part :
         {&WindowBounds::x, &WindowBounds::y, &WindowBounds::width, &WindowBounds::height}) {
        auto torn = window;
        ((*torn.bounds).*part).reset();
        EXPECT_FALSE(verdict(torn));
    }
    EXPECT_FALSE(verdict({}));
    screen.displays.clear();
    EXPECT_FALSE(verdict(window));
}

TEST_F(Fullscreen, accessibilityDecidesAboutWindowsThatTheRulesTurnDown) {
    const Rect place{100, 100, 1000, 700};
    auto window = windowInfo(7, 3, "Pad", place);
    // What each of the application's windows says: "yes", "no", or what can't be read of it.
    const auto verdictWith = [&](std::string_view says, const Rect& frame) {
        screen.stack.clear();
        for (const auto& word : text::words(says)) {
            screen.stack.push_back({.info = windowInfo(7, std::ssize(screen.stack), "Pad", frame),
                                    .isFullscreen = word != "no",
                                    .refusals = {{word, -25205}}});
        }
        return verdict(window);
    };
    for (const auto* says : {"", "no", "AXSize", "AXPosition", "AXFullScreen"})
        EXPECT_FALSE(verdictWith(says, place)) << says;
    for (const auto* says : {"yes", "no yes", "AXSize yes"})
        EXPECT_TRUE(verdictWith(says, place)) << says;
    for (auto value : {&Rect::x, &Rect::y, &Rect::width, &Rect::height}) {
        for (const double offset : {-5.1, -5.0, 5.0, 5.1}) {
            auto moved = place;
            moved.*value += offset;
            EXPECT_EQ(verdictWith("yes", moved), std::abs(offset) == 5);
        }
    }
    for (const std::int64_t layer : {-2, 3}) {
        window.layer = layer;
        EXPECT_TRUE(verdictWith("yes", place)) << "in layer " << layer;
    }
    window = windowInfo(7, 3, "Pad", {0, 0, 1440, 900});
    window.tilingWorkspace = "2";
    EXPECT_FALSE(verdictWith("no", {0, 0, 1440, 900})) << "tiled, it may be as large";
    EXPECT_TRUE(verdictWith("yes", {0, 0, 1440, 900}));
    window = windowInfo(7, 3, "Pad", place);
    window.number.reset();
    EXPECT_FALSE(verdictWith("yes", place));
    window.number = 3;
    window.ownerPID.reset();
    EXPECT_FALSE(verdictWith("yes", place));
}

TEST_F(Fullscreen, aWindowBelowAllMayStandForOneIfItCoversTheMainScreenNearTheOrigin) {
    const std::tuple<std::int64_t, Rect, bool> cases[]{
        {-1, {0, 0, 1440, 900}, true},        {0, {0, 0, 1440, 900}, false},
        {-1, {49.9, -49.9, 1440, 900}, true}, {-1, {-50, 0, 1440, 900}, false},
        {-1, {0, -50, 1440, 900}, false},     {-1, {0, 0, 1439.9, 900}, false},
        {-1, {0, 0, 1440, 899.9}, false},     {-1, {0, 0, 2000, 1000}, true}};
    const auto ask = [&](std::int64_t layer, const Rect& f) {
        return FullscreenDetection(screen, screen)
            .isPotentialFullscreenWindow(layer, f.width, f.height, f.x, f.y);
    };
    screen.displays.insert(screen.displays.begin(), Display{{0, 0, 3840, 2160}, {}});
    screen.mainDisplay = 1;
    for (const auto& [layer, frame, verdict] : cases)
        EXPECT_EQ(ask(layer, frame), verdict) << layer << " " << describedFrame(frame);
    screen.displays.clear();
    EXPECT_TRUE(ask(-1, {0, 0, 1920, 1080}));
    EXPECT_FALSE(ask(-1, {0, 0, 1919, 1080}) || ask(-1, {0, 0, 1920, 1079}));
}

constexpr Rect whole{0, 0, 1440, 900};
constexpr Rect part{100, 100, 800, 600};

struct Capture : LayoutTest {
    WindowCapture capture{screen, screen, screen};
    RunningApplication backdrop = run("Backdrop", 9);

    /// The numbers of the windows, each with a blank behind; "absent" where there are none at all.
    std::string windowsOf(const RunningApplication& application) {
        const auto windows = capture.windowsForApplication(application);
        std::string numbers = windows ? "" : "absent";
        for (const auto& window : windows.value_or(std::vector<WindowInfo>()))
            numbers += std::to_string(*window.number) + " ";
        return numbers;
    }
};

TEST_F(Capture, windowsBelongByProcessOrByNameAndMustBeLargerThanFiftyByFifty) {
    open(pad, 1, {0, 0, 50, 900});
    open(pad, 2, {0, 0, 900, 50});
    open(pad, 3, {0, 0, 50.5, 50.5});
    open(mail, 4, part);
    open(mail, 5, part).info.ownerName = "Pad";
    open(mail, 6, part).info.ownerName = "pad";
    open(pad, 7, part).info.layer = 25;
    open(pad, 8, part).info.bounds->width.reset();
    open(pad, 9, part).info.bounds.reset();
    open(pad, 10, part).info.bounds->x.reset();
    open(backdrop, 11, whole).info.layer = -5;
    open(pad, 12, part).isOnScreen = false;
    EXPECT_EQ(windowsOf(pad), "3 5 7 10 ");
    EXPECT_EQ(windowsOf(mail), "4 5 6 ");
    screen.windowListAnswers = false;
    EXPECT_EQ(windowsOf(pad), "absent");
}

TEST_F(Capture, anApplicationWithoutWindowsGetsTheFirstThatMayStandForIt) {
    open(mail, 1, whole).info.layer.reset();
    EXPECT_EQ(windowsOf(pad), "absent");
    for (const int number : {2, 3}) {
        open(backdrop, number, whole).info.layer = -5;
        screen.stack.back().info.bounds->x.reset();
        screen.stack.back().info.bounds->y.reset();
        screen.stack.back().info.ownerName = "Pad";
    }
    EXPECT_EQ(windowsOf(pad), "2 ") << "not by its name";
    EXPECT_EQ(windowsOf(backdrop), "2 3 ") << "its own, by process";
    open(mail, 4, part).info.ownerName = "Pad";
    EXPECT_EQ(windowsOf(pad), "4 ");
}

TEST_F(Capture, ofRegularAndFullscreenWindowsOnlyTheRegularOnesAreRecorded) {
    const std::pair<std::vector<Rect>, const char*> cases[]{
        {{part, {5, 5, 60, 60}}, "Pad 800x600 at (100, 100); Pad 60x60 at (5, 5)"},
        {{whole, part, whole}, "Pad 800x600 at (100, 100)"},
        {{whole, {0, 25, 1440, 885}},
         "Pad 1440x900 at (0, 0) fullscreen; Pad 1440x885 at (0, 25) fullscreen"},
        {{}, ""}};
    for (const auto& [windows, records] : cases) {
        screen.stack.clear();
        for (const auto& frame : windows)
            open(pad, std::ssize(screen.stack), frame);
        EXPECT_EQ(describedRecords(capture.capture(pad, "pad")), records);
    }
}

TEST_F(Capture, aRecordTellsItsWindowAndOneWithoutAFrameIsPassedOver) {
    screen.displays.push_back({{1440, 0, 1920, 1080}, {}});
    open(pad, 1, part).info.bounds->y.reset();
    open(mail, 2, {}).info = {.bounds = WindowBounds{1500.5, 100, 800, 600},
                              .ownerName = "Pad",
                              .tilingWorkspace = "2: web"};
    const WindowLayout expected{"Pad", {1500.5, 100, 800, 600}, false, false, 1, "2: web"};
    EXPECT_EQ(capture.capture(pad, "pad"), std::vector{expected});
    mail.localizedName.reset();
    open(backdrop, 3, part).info.ownerPID = 8;
    EXPECT_EQ(describedRecords(capture.capture(mail, "looked for")),
              "looked for 800x600 at (100, 100)");
}

TEST_F(Capture, theScreenIsTheFirstThatSharesAnAreaAndNothingIsConverted) {
    const std::vector<Display> screens{
        {whole, {}}, {{1440, -180, 1920, 1080}, {}}, {{0, 900, 1000, 500}, {}}};
    const std::tuple<double, double, int> cases[]{
        {1430, 0, 0}, {1440, 0, 1}, {1340, -150, 0}, {2000, -250, 1}, {2000, -280, 0},
        {0, 900, 2},  {0, -500, 0}, {0, 1000, 2},    {9000, 9000, 0},
    };
    for (const auto& [x, y, index] : cases) {
        const Rect frame{x, y, 100, 100};
        EXPECT_EQ(screenIndexForFrame(frame, screens), index) << x << "," << y;
    }
    EXPECT_EQ(screenIndexForFrame(part, {}), 0);
}

TEST_F(Capture, aSavedRecordHoldsTheWindowAsFractionsOfItsScreen) {
    const std::vector<Display> screens{{{0, 0, 1000, 500}, {}}, {{1000, 0, 2000, 1000}, {}}};
    WindowLayout layout{"Pad", {1500, 250, 500, 100}, true, true, 1, "2"};
    const auto saved = makeSavedWindowLayout(layout, {5}, screens);
    const SavedWindowLayout expected{
        "Pad", {},    layout.frame, 0, {5}, true, screens[1].frame, Rect{0.75, 0.25, 0.25, 0.1},
        1,     false, "2"};
    EXPECT_EQ(saved, expected);
    for (const auto index : {0, 2, -1}) {
        layout.screen = index;
        const ScreenInfo info{screens[0].frame, {1.5, 0.5, 0.5, 0.2}, index, index == 0};
        EXPECT_EQ(makeScreenInfo(layout, screens), info);
    }
    // What can't be divided can't be stored.
    const SavedWindowLayout bare{"Pad", {}, layout.frame, 0, {5}, true, {}, {}, {}, true, "2"};
    for (const auto& bad : {std::vector<Display>{}, {{{0, 0, 0, 500}, {}}}, {{{0, 0, 9, 0}, {}}}})
        EXPECT_EQ(makeSavedWindowLayout(layout, {5}, bad), bare);
}

} // namespace
