#include "desktop/DesktopTest.h"

#include <functional>
#include <string>
#include <vector>

namespace corvane::desktop {
namespace {

/// A resource added, a setting changed, a start and a finish: by the pointer, by actions, by keys.
class Hand : public DesktopTest {
protected:
    using Press = std::function<bool(const std::string& name, const std::string& inside)>;

    bool key(const std::string& keys) {
        desktop.run({"xdotool", "key", "--delay", "50", keys});
        return true;
    }
    void type(const std::string& text) { desktop.run({"xdotool", "type", text}); }
    /// Goes on from control to control until that one has the keyboard.
    bool tabTo(const std::string& name, const std::string& step = "Tab") {
        constexpr int most = 40;
        for (int i = 0; i < most; ++i) {
            if (desktop.focused() == name) return true;
            key(step);
        }
        return false;
    }
    bool getsKeyboard(const std::string& name) {
        return comesTrue([&] { return desktop.focused() == name; });
    }
    bool isSaid(const std::string& text) { return desktop.isAnnounced(text); }
    bool focusModeIsSet() {
        return comesTrue([&] {
            return readFile(desktop.preferencesFile()).find("CorvaneFocusMode") !=
                   std::string::npos;
        });
    }
    void seeStart() {
        EXPECT_TRUE(isSaid("Errand: Starting..."));
        EXPECT_TRUE(comesTrue([&] { return desktop.window("xterm").has_value(); }, 60));
        EXPECT_TRUE(isSaid("Errand: 1 resources running"));
        ASSERT_TRUE(comes("1 resources running"));
    }
    void seeFinish() {
        EXPECT_TRUE(isSaid("Errand: Closing resources..."));
        EXPECT_TRUE(comesTrue([&] { return !desktop.window("xterm").has_value(); }));
        ASSERT_TRUE(comes("Successfully closed 1 workspace applications!"));
        EXPECT_TRUE(isSaid("Successfully closed 1 workspace applications!"));
    }
    void goThroughErrand(const Press& press) {
        ASSERT_TRUE(press("Resources", "Errand"));
        ASSERT_TRUE(press("Add Resource", ""));
        ASSERT_TRUE(press("Terminal", ""));
        ASSERT_TRUE(press("Enter a name for this resource", ""));
        ASSERT_TRUE(getsKeyboard("Enter a name for this resource"));
        type("Shell\ttrue");
        ASSERT_TRUE(press("Add Resource", ""));
        EXPECT_TRUE(isSaved("\"Shell\""));
        ASSERT_TRUE(press("Settings", ""));
        ASSERT_TRUE(press("Focus Mode", ""));
        EXPECT_TRUE(focusModeIsSet());
        ASSERT_TRUE(press("Done", ""));

        ASSERT_TRUE(press("Start", "Errand"));
        seeStart();
        ASSERT_TRUE(press("Finish", ""));
        ASSERT_TRUE(press("Finish & Close", ""));
        seeFinish();
        ASSERT_TRUE(press("OK", ""));
        ASSERT_TRUE(comesTrue([&] { return desktop.middleOf("Start", "Errand").has_value(); }));
    }
};

TEST_F(Hand, everythingIsDoneByThePointer) {
    start({{"Other", "", "star", {}}});
    ASSERT_TRUE(isSaid(""));
    ASSERT_TRUE(desktop.press("New Workspace"));
    ASSERT_TRUE(comes("Create New Workspace"));
    type("Errand");
    ASSERT_TRUE(desktop.press("briefcase"));
    ASSERT_TRUE(desktop.press("Create"));
    EXPECT_TRUE(isSaved("\"briefcase\""));
    goThroughErrand(
        [&](const auto& name, const auto& inside) { return desktop.press(name, inside); });
    ASSERT_TRUE(desktop.press("Resources", "Errand"));
    ASSERT_TRUE(comesTrue([&] { return !desktop.shows("Add Resource"); }));
    ASSERT_TRUE(desktop.press("More", "Errand"));
    ASSERT_TRUE(desktop.press("Delete"));
    EXPECT_TRUE(answer("Are you sure you want to delete 'Errand'?", "Delete"));
    EXPECT_TRUE(isSaid("Removed 'Errand'"));
    EXPECT_EQ(readFile(desktop.workspacesFile()).find("Errand"), std::string::npos);
}

TEST_F(Hand, everythingIsDoneByTheActionsThatAssistiveProgramsOffer) {
    start({{"Errand", "", "star", {}}});
    ASSERT_TRUE(isSaid(""));
    goThroughErrand(
        [&](const auto& name, const auto& inside) { return desktop.assist(name, inside); });
    ASSERT_TRUE(desktop.assist("Separator"));
    for (int i = 0; i < 2; ++i)
        ASSERT_TRUE(desktop.assist("Remove"));
    EXPECT_TRUE(isSaid("Removed 'Separator"));
    EXPECT_TRUE(isSaid("Removed 'Shell'")) << "each of two, though they come at once";
    ASSERT_TRUE(desktop.act("SetFocus", "Search workspaces..."));
    ASSERT_TRUE(getsKeyboard("Search workspaces..."));
    type("zz");
    EXPECT_TRUE(isSaid("No workspaces match \"zz\""));
}

TEST_F(Hand, everythingIsDoneByTheKeyboard) {
    start({{"Other", "", "star", {}}});
    ASSERT_TRUE(isSaid(""));
    ASSERT_TRUE(comes("Other"));
    desktop.run({"wmctrl", "-F", "-a", "Corvane"});
    key("ctrl+n");
    ASSERT_TRUE(getsKeyboard("Enter workspace name"));
    type("Errand");
    key("Return");
    EXPECT_TRUE(isSaved("\"Errand\""));
    ASSERT_TRUE(getsKeyboard("Start"));
    ASSERT_TRUE(tabTo("Resources") && key("space"));
    ASSERT_TRUE(comes("Add Resource"));
    ASSERT_TRUE(tabTo("Add Resource") && key("Return"));
    ASSERT_TRUE(comes("Add New Resource"));
    ASSERT_TRUE(tabTo("Terminal") && key("space"));
    ASSERT_TRUE(tabTo("Enter a name for this resource"));
    type("Shell\ttrue");
    ASSERT_TRUE(tabTo("Add Resource") && key("Return"));
    EXPECT_TRUE(isSaved("\"Shell\""));
    key("ctrl+comma");
    ASSERT_TRUE(comes("Configure Corvane Workspace Manager"));
    ASSERT_TRUE(tabTo("Focus Mode") && key("space"));
    EXPECT_TRUE(focusModeIsSet());
    key("Escape");
    ASSERT_TRUE(getsKeyboard("Add Resource")) << "again";

    ASSERT_TRUE(tabTo("Start", "shift+Tab") && key("Return"));
    seeStart();
    desktop.run({"wmctrl", "-F", "-a", "Corvane"});
    ASSERT_TRUE(tabTo("Finish") && key("Return"));
    ASSERT_TRUE(getsKeyboard("Finish & Close") && key("Return"));
    seeFinish();
    key("Return");
    ASSERT_TRUE(getsKeyboard("Start"));
}

} // namespace
} // namespace corvane::desktop
