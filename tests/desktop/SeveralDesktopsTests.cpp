#include "desktop/DesktopTest.h"
#include "desktop/harness/TrayHost.h"
#include "foundation/PropertyList.h"

#include <chrono>
#include <cmath>
#include <cstdio>
#include <thread>
#include <utility>

namespace corvane::desktop {
namespace {

/// With four virtual desktops, and the user on any of them.
class SeveralDesktops : public DesktopTest {
protected:
    SeveralDesktops() { writeFile(note.path, "A note\n"); }
    /// The user goes there, again where a window that still comes to the front takes him back.
    bool goTo(int number) {
        return comesTrue([&] {
            if (here() != number) desktop.screen().goTo(number);
            return here() == number;
        });
    }
    int here() { return desktop.screen().workspace(); }
    /// Whether a window of Corvane's with that title is on the screen and has the keyboard soon.
    testing::AssertionResult isInFront(const std::string& title) {
        const auto inFront = [&] { return desktop.screen().front(); };
        if (comesTrue(
                [&] { return desktop.window("corvane", title) && inFront().starts_with(title); }))
            return testing::AssertionSuccess();
        return testing::AssertionFailure() << "in front is " << inFront();
    }
    std::string lookOf(const std::string& title) {
        const auto window = desktop.window("corvane", title);
        return window ? desktop.screen().look(*window) : "";
    }
    bool isMaximized() { return lookOf("Corvane").ends_with(" maximized"); }
    Rect placeOf(const std::string& title) {
        Rect place;
        std::sscanf(lookOf(title).c_str(), "%lf,%lf %lfx%lf", &place.x, &place.y, &place.width,
                    &place.height);
        return place;
    }
    void move(const std::string& frame) {
        desktop.screen().place(desktop.window("corvane", "Corvane").value_or(Window{}), frame);
    }
    /// Whether its middle is there, but for half the height of a title bar.
    testing::AssertionResult isInTheMiddleOf(const Rect& place, const std::string& title) {
        constexpr double halfATitle = 30;
        const auto own = placeOf(title);
        const double x = own.x + own.width / 2 - place.x - place.width / 2;
        const double y = own.y + own.height / 2 - place.y - place.height / 2;
        if (own.width > 0 && std::abs(x) <= halfATitle && std::abs(y) <= halfATitle)
            return testing::AssertionSuccess();
        return testing::AssertionFailure() << title << " is off by " << x << "," << y;
    }

    const SceneResource note{"note.txt", "file", desktop.home("Documents/note.txt")};
    const Rect screen{0, 0, 1440, 900};
    const std::string summary = "Workspace Applications Closed";
};

TEST_F(SeveralDesktops, anAlertComesWhereTheUserIsAndTheWindowComesBackFromAnotherOne) {
    const TrayHost tray(desktop.busAddress());
    start({{"Notes", "", "star", {note}}});
    ASSERT_TRUE(tray.press("Notes     ▶"));
    ASSERT_TRUE(opens("mousepad", "note.txt"));
    ASSERT_TRUE(goTo(1));
    ASSERT_TRUE(tray.press("Notes     ⏹"));
    EXPECT_TRUE(isInFront(summary));
    EXPECT_EQ(here(), 1);
    EXPECT_TRUE(isInTheMiddleOf(screen, summary));
    // It has the keyboard.
    if (desktop.screen().hasHands()) desktop.run({"xdotool", "key", "Return"});
    ASSERT_TRUE(desktop.screen().hasHands() || desktop.press("OK"));
    EXPECT_TRUE(comesTrue([&] { return !desktop.shows("Successfully closed"); }));

    EXPECT_TRUE(tray.press("Show App Window"));
    EXPECT_TRUE(isInFront("Corvane"));
    ASSERT_TRUE(goTo(2));
    EXPECT_EQ(desktop.start({desktop.corvaneProgram()})->waitForEnd(), 0);
    EXPECT_TRUE(isInFront("Corvane"));

    // Beside its window it comes over that.
    move("20,30 950x650");
    ASSERT_TRUE(desktop.press("Start"));
    ASSERT_TRUE(opens("mousepad", "note.txt"));
    ASSERT_TRUE(tray.press("Notes     ⏹"));
    EXPECT_TRUE(isInFront(summary));
    EXPECT_TRUE(isInTheMiddleOf(desktop.screen().tiles() ? screen : placeOf("Corvane"), summary));
    ASSERT_TRUE(desktop.press("OK"));
    ASSERT_TRUE(tray.press("Quit Corvane"));
    EXPECT_EQ(desktop.corvane().waitForEnd(), 0);
}

TEST_F(SeveralDesktops, theWindowComesBackWhereItWasInsideTheScreen) {
    const auto looks = [&](const std::string& place) {
        desktop.startCorvane();
        const bool hasCome = comesTrue([&] { return lookOf("Corvane") == place; });
        EXPECT_TRUE(hasCome) << lookOf("Corvane") << " is not " << place;
    };
    start({{"Notes", "", "star", {note}}});
    ASSERT_TRUE(comes("Notes"));
    for (const auto* place : {"60,80 1010x700", "300,120 960x695"}) {
        std::string before;
        ASSERT_TRUE(comesTrue([&] { return (before = lookOf("Corvane")) != ""; }));
        // On X11 the decorations come on top of it. A window that has just come is put somewhere.
        ASSERT_TRUE(comesTrue([&] {
            const auto look = lookOf("Corvane");
            const bool isThere = desktop.screen().hasHands() ? look != before : look == place;
            if (!isThere) move(place);
            return isThere;
        })) << lookOf("Corvane");
        // Place and size may come one after the other.
        ASSERT_TRUE(comesTrue([&] {
            std::this_thread::sleep_for(std::chrono::milliseconds(300));
            return std::exchange(before, lookOf("Corvane")) == lookOf("Corvane");
        }));
        for (int round = 0; round < 2; ++round) {
            EXPECT_EQ(closeWindow(), 0);
            looks(before);
        }
    }
    if (!desktop.screen().tiles()) {
        // The program may be about to move it.
        ASSERT_TRUE(comesTrue([&] {
            desktop.act(Deed::maximize, "corvane");
            return isMaximized();
        }));
        EXPECT_EQ(closeWindow(), 0);
        desktop.startCorvane();
        EXPECT_TRUE(comesTrue([&] { return isMaximized(); }));
        EXPECT_EQ(closeWindow(), 0);
    }

    // As if a monitor had gone, and smaller than it can be.
    writeFile(desktop.preferencesFile(),
              PropertyList{PropertyList::Dictionary{{"HasCompletedOnboarding", {true}},
                                                    {"MainWindowPlace", {"3000 -500 20 20"}}}}
                  .toBinary());
    desktop.startCorvane();
    ASSERT_TRUE(comes("Notes") && comesTrue([&] { return placeOf("Corvane").width > 0; }));
    const auto place = placeOf("Corvane");
    // Decorations are around that.
    EXPECT_TRUE(place.width >= 950 && place.width < 970) << place.width;
    EXPECT_TRUE(place.height >= 650 && place.height < 700) << place.height;
    EXPECT_TRUE(place.x >= 0 && place.x + place.width <= 1440 && place.y >= 0 && place.y < 100)
        << place.x << "," << place.y;
    EXPECT_EQ(closeWindow(), 0);
}

} // namespace
} // namespace corvane::desktop
