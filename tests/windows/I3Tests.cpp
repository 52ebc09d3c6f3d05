#include "linux/windows/WindowSystems.h"
#include "windows/WindowSystemTest.h"

using namespace corvane;

/// What i3 has beside what its X server tells.
TEST(I3Test, leavesAloneWhatIsTiledOrPutAside) {
    const auto session = startSession("i3");
    const auto system = windowSystemHere();
    session->show({.title = "one", .size = {400, 300}});
    const auto all = [&] { return describedWindows(*system); };
    comesToShow("one active", all);
    const auto by = [] { return soon(); };
    const auto window = system->windows(by())->windows[0].window;
    const auto place = [&] {
        return answerText(system->place(window, {PixelPoint{60, 50}, PixelSize{320, 240}}, by()));
    };
    const auto tell = [](const std::string& words) {
        EXPECT_TRUE(machine::runs("i3-msg -s $I3SOCK '[title=one] " + words + "'")) << words;
    };
    EXPECT_EQ(place(), "done");
    comesToShow("60,50 320x240", [&] { return session->seen(window); });
    tell("floating disable");
    EXPECT_TRUE(comesTrue([&] { return system->window(window, by())->isTiled; }));
    const auto tiled = session->seen(window);
    EXPECT_EQ(place() + " " + session->seen(window), "refused " + tiled);
    tell("move scratchpad");
    comesToShow("one unseen minimized", [&] { return text::replacingAll(all(), " active", ""); });
    EXPECT_EQ(place(), "refused");
    EXPECT_EQ(answerText(system->activate(window, by())), "done");
    EXPECT_TRUE(comesTrue([&] { return system->window(window, by())->isOnScreen; })) << all();
}
