#include "desktop/DesktopTest.h"
#include "desktop/harness/TrayHost.h"
#include "foundation/PropertyList.h"

#include <cmath>
#include <cstdio>
#include <sstream>
#include <utility>

namespace corvane::desktop {
namespace {

/// With four virtual desktops, and the user on any of them.
class SeveralDesktops : public DesktopTest {
protected:
    SeveralDesktops() {
        desktop.run({"wmctrl", "-n", "4"});
        writeFile(note.path, "A note\n");
    }
    /// The user goes there.
    bool goTo(const std::string& number) {
        desktop.run({"wmctrl", "-s", number});
        return comesTrue([&] { return here() == number; });
    }
    std::string here() {
        const auto number = desktop.run({"xdotool", "get_desktop"});
        return number.substr(0, number.find('\n'));
    }
    /// Whether a window of Corvane's with that title is on the screen and has the keyboard soon.
    testing::AssertionResult isInFront(const std::string& title) {
        const auto inFront = [&] {
            return desktop.run({"xdotool", "getactivewindow", "getwindowname"});
        };
        if (comesTrue(
                [&] { return desktop.window("corvane", title) && inFront().starts_with(title); }))
            return testing::AssertionSuccess();
        return testing::AssertionFailure() << "in front is " << inFront();
    }
    std::string seenPlace() {
        const auto place = placeOf("Corvane");
        std::ostringstream text;
        text << place.x << "," << place.y << " " << place.width << "x" << place.height;
        return text.str();
    }
    bool isMaximized() {
        const auto window = desktop.window("corvane");
        return window &&
               desktop.run({"xprop", "-id", window->id, "_NET_WM_STATE"}).find("_MAXIMIZED_VERT") !=
                   std::string::npos;
    }
    /// Of a window's content.
    Rect placeOf(const std::string& title) {
        const auto window = desktop.window("corvane", title);
        if (!window) return {};
        int x = 0, y = 0, width = 0, height = 0;
        constexpr auto numbers = R"(s/.*\(Absolute.*\|Width\|Height\): *//p)";
        const auto look = "xwininfo -id " + window->id + " | sed -n '" + numbers + "'";
        std::sscanf(desktop.run({"sh", "-c", look}).c_str(), "%d %d %d %d", &x, &y, &width,
                    &height);
        return {double(x), double(y), double(width), double(height)};
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
    const std::string summary = "Workspace Applications Closed";
};

TEST_F(SeveralDesktops, anAlertComesWhereTheUserIsAndTheWindowComesBackFromAnotherOne) {
    const TrayHost tray(desktop.busAddress());
    start({{"Notes", "", "star", {note}}});
    ASSERT_TRUE(tray.press("Notes     ▶"));
    ASSERT_TRUE(opens("mousepad", "note.txt"));
    ASSERT_TRUE(goTo("1"));
    ASSERT_TRUE(tray.press("Notes     ⏹"));
    EXPECT_TRUE(isInFront(summary));
    EXPECT_EQ(here(), "1");
    EXPECT_TRUE(isInTheMiddleOf({0, 0, 1440, 900}, summary));
    // It has the keyboard.
    desktop.run({"xdotool", "key", "Return"});
    EXPECT_TRUE(comesTrue([&] { return !desktop.shows("Successfully closed"); }));

    EXPECT_TRUE(tray.press("Show App Window"));
    EXPECT_TRUE(isInFront("Corvane"));
    ASSERT_TRUE(goTo("2"));
    EXPECT_EQ(desktop.start({desktop.corvaneProgram()})->waitForEnd(), 0);
    EXPECT_TRUE(isInFront("Corvane"));

    // Beside its window it comes over that.
    desktop.run({"wmctrl", "-r", "Corvane", "-e", "0,20,30,950,650"});
    ASSERT_TRUE(desktop.press("Start"));
    ASSERT_TRUE(opens("mousepad", "note.txt"));
    ASSERT_TRUE(tray.press("Notes     ⏹"));
    EXPECT_TRUE(isInFront(summary));
    EXPECT_TRUE(isInTheMiddleOf(placeOf("Corvane"), summary));
    ASSERT_TRUE(desktop.press("OK"));
    ASSERT_TRUE(tray.press("Quit Corvane"));
    EXPECT_EQ(desktop.corvane().waitForEnd(), 0);
}

TEST_F(SeveralDesktops, theWindowComesBackWhereItWasInsideTheScreen) {
    const auto looks = [&](const std::string& place) {
        desktop.startCorvane();
        const bool hasCome = comesTrue([&] { return seenPlace() == place; });
        EXPECT_TRUE(hasCome) << seenPlace() << " is not " << place;
    };
    start({{"Notes", "", "star", {note}}});
    ASSERT_TRUE(comes("Notes"));
    for (const auto* place : {"0,60,80,1010,700", "0,300,120,960,660"}) {
        desktop.run({"wmctrl", "-r", "Corvane", "-e", place});
        // Any look after the change is one of it.
        std::string before;
        ASSERT_TRUE(comesTrue([&] { return std::exchange(before, seenPlace()) == seenPlace(); }));
        for (int round = 0; round < 2; ++round) {
            EXPECT_EQ(closeWindow(), 0);
            looks(before);
        }
    }
    desktop.run({"wmctrl", "-r", "Corvane", "-b", "add,maximized_vert,maximized_horz"});
    ASSERT_TRUE(comesTrue([&] { return isMaximized(); }));
    EXPECT_EQ(closeWindow(), 0);
    desktop.startCorvane();
    EXPECT_TRUE(comesTrue([&] { return isMaximized(); }));
    EXPECT_EQ(closeWindow(), 0);

    // As if a monitor had gone, and smaller than it can be.
    writeFile(desktop.preferencesFile(),
              PropertyList{PropertyList::Dictionary{{"HasCompletedOnboarding", {true}},
                                                    {"MainWindowPlace", {"3000 -500 20 20"}}}}
                  .toBinary());
    desktop.startCorvane();
    ASSERT_TRUE(comes("Notes"));
    const auto place = placeOf("Corvane");
    EXPECT_EQ(place.width, 950);
    EXPECT_EQ(place.height, 650);
    EXPECT_TRUE(place.x >= 0 && place.x + place.width <= 1440 && place.y >= 0 && place.y < 100)
        << place.x << "," << place.y;
    EXPECT_EQ(closeWindow(), 0);
}

} // namespace
} // namespace corvane::desktop
