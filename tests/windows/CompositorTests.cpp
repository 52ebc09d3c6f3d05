#include "linux/system/ProcessFacts.h"
#include "linux/windows/WindowSystems.h"
#include "windows/WindowSystemTest.h"

using namespace corvane;

/// What only compositors of Wayland can get wrong.
namespace {

class CompositorTest : public WindowSystemTest {};

std::vector<SessionKind> compositors() {
    auto kinds = sessionsOfThisMachine();
    std::erase_if(kinds, [](const SessionKind& kind) {
        return kind.name != "sway" && kind.name != "kwin" && kind.name != "gnome";
    });
    return kinds;
}

INSTANTIATE_TEST_SUITE_P(On, CompositorTest, testing::ValuesIn(compositors()),
                         [](const auto& kind) { return kind.param.name; });

TEST_P(CompositorTest, isNoHalfOfTheTruthThroughItsXServer) {
    session_->showOthers();
    std::optional<WindowsNow> all;
    ASSERT_TRUE(comesTrue([&] { return (all = now()) && all->windows.size() == 2; }));
    for (const auto* display : {"", "wayland-elsewhere"}) {
        SCOPED_TRACE(display);
        const machine::ScopedVariable variable("WAYLAND_DISPLAY", display);
        const auto blind = windowSystemHere();
        const auto by = Clock::now() + std::chrono::seconds(3);
        EXPECT_FALSE(blind->isReady(by));
        EXPECT_FALSE(blind->windows(by));
        EXPECT_FALSE(blind->monitors(by));
        const auto can = blind->abilities(by);
        EXPECT_FALSE(can.placesWindows || can.tellsProcesses);
        EXPECT_NE(can.whatToDoFirst, "");
        for (const auto& each : all->windows) {
            EXPECT_FALSE(blind->window(each.window, by));
            EXPECT_EQ(answerText(blind->askToClose(std::array{each.window}, by)), "unanswered");
        }
    }
}

TEST_P(CompositorTest, tellsNoOtherProcessThanAWindowsOwn) {
    for (const auto& [title, maker] : session_->showConfined()) {
        const auto confined =
            listed([&, name = title](const ManagedWindow& window) { return window.title == name; });
        ASSERT_EQ(confined.title, title);
        const auto process = confined.window.process;
        EXPECT_TRUE(process == 0 || parentOf(process) == maker) << title << ": " << process;
        EXPECT_EQ(answerText(system_.askToClose(std::array{confined.window}, soon())), "done");
    }
    comesToShow("", [this] { return all(); });
}

TEST_P(CompositorTest, givesPartsOfPixelsBackAsItTellsThem) {
    const auto window = shown({.title = "one", .size = {400, 300}}).window;
    waitUntilItStands(window);
    system_.place(window, {PixelPoint{100.5, 90.25}, PixelSize{401.333, 303.667}}, soon());
    const auto told = system_.window(window, soon())->frame;
    EXPECT_NEAR(told.origin.x, 100.5, 0.5);
    EXPECT_NEAR(told.size.width, 401.333, 1);
    ASSERT_EQ(placed(window, {{300, 200}, {500, 400}}), "300,200 500x400");
    EXPECT_EQ(placed(window, told), frameText(told));
}

TEST_P(CompositorTest, placesOnAPrimaryMonitorOfAnotherScaleToThePixel) {
    session_->addSecondMonitor(1.5);
    const std::string second = "1440,0 960x600", first = "0,0 1440x900";
    const bool hasPrimary = GetParam().name != "sway";
    comesToShow(hasPrimary ? second + ' ' + first : first + ' ' + second, [this] {
        std::vector<std::string> frames;
        for (const auto& each : system_.monitors(soon()).value_or(std::vector<Monitor>()))
            frames.push_back(frameText(each.frame));
        return text::joined(frames, " ");
    });
    const auto window = shown({.title = "one", .size = {400, 300}}).window;
    waitUntilItStands(window);
    for (const PixelPoint& origin : {PixelPoint{90, 80}, PixelPoint{1500, 100}}) {
        const FrameWish wish{origin, PixelSize{655, 477}};
        EXPECT_EQ(answerText(system_.place(window, wish, soon())), "done");
        // Clients have whole pixels of the monitor's, and have them after the compositor's answer.
        waitUntilItStands(window);
        const auto told = system_.window(window, soon())->frame;
        EXPECT_EQ(told.origin, origin);
        EXPECT_NEAR(told.size.width, 655, 1);
        EXPECT_NEAR(told.size.height, 477, 1);
        system_.place(window, {PixelPoint{1600, 200}, PixelSize{400, 300}}, soon());
        // Qt 6.4 may take a size without a word.
        comesToShow(frameText(told), [&] { return placed(window, told); });
    }
    session_->act(window, ByHand::fillScreen);
    comesToShow(second, [&] { return frameOf(window); });
}

} // namespace
