#include "desktop/DesktopTest.h"

namespace corvane::desktop {
namespace {

class Layouts : public DesktopTest {
protected:
    /// X, y, width and height of the editor's window, in that order.
    std::string place() {
        return desktop.run({"sh", "-c",
                            "xdotool getwindowgeometry --shell $(xdotool search "
                            "--onlyvisible --class mousepad | tail -n 1) | "
                            "grep -E 'X|Y|WIDTH|HEIGHT' | tr '\n' ' '"});
    }
    bool openEditor() {
        return desktop.press("Start") && opens("mousepad", "notes.txt") && comes("Running");
    }
};

TEST_F(Layouts, areSavedAsTheProgramEndsAndPutBackByTheNextStart) {
    writeFile(desktop.home("notes.txt"), "Notes\n");
    writeFile(desktop.preferencesFile(),
              "<plist version=\"1.0\"><dict><key>HasCompletedOnboarding</key><true/>"
              "<key>CorvaneEnableAccessibilityFeatures</key><true/>"
              "<key>CorvaneAutoSaveLayouts</key><true/></dict></plist>\n");
    start({{"Writing", "", "star", {{"notes.txt", "file", desktop.home("notes.txt")}}}});
    ASSERT_TRUE(openEditor());
    desktop.run({"wmctrl", "-r", "notes.txt", "-e", "0,417,163,533,391"});
    ASSERT_TRUE(
        comesTrue([&] { return place().find("WIDTH=533 HEIGHT=391") != std::string::npos; }));
    const auto chosen = place();
    EXPECT_EQ(closeWindow(), 0);
    EXPECT_NE(readFile(desktop.workspacesFile()).find("\"savedWindowLayouts\":[{\"appName\":"),
              std::string::npos);

    // The editor remembers its size by itself.
    desktop.run({"wmctrl", "-r", "notes.txt", "-e", "0,20,20,700,300"});
    ASSERT_TRUE(comesTrue([&] { return place() != chosen; }));
    desktop.run({"wmctrl", "-c", "notes.txt"});
    ASSERT_TRUE(comesTrue([&] { return !desktop.window("mousepad"); }));
    desktop.startCorvane();
    ASSERT_TRUE(openEditor());
    EXPECT_TRUE(comesTrue([&] { return place() == chosen; }, 15))
        << place() << " is not " << chosen;
    EXPECT_EQ(closeWindow(), 0);
}

} // namespace
} // namespace corvane::desktop
