#include "desktop/DesktopTest.h"

#include <string>
#include <vector>

namespace corvane::desktop {
namespace {

/// From a start to a finish, without a pointer.
class Hand : public DesktopTest {
protected:
    bool key(const std::string& keys) {
        desktop.run({"xdotool", "key", "--delay", "50", keys});
        return true;
    }
    /// Goes on from control to control until that one has the keyboard.
    bool tabTo(const std::string& name) {
        constexpr int most = 40;
        for (int i = 0; i < most; ++i) {
            if (desktop.focused() == name) return true;
            key("Tab");
        }
        return false;
    }
    bool getsKeyboard(const std::string& name) {
        return comesTrue([&] { return desktop.focused() == name; });
    }
    bool isSaved(const std::string& text) {
        return comesTrue(
            [&] { return readFile(desktop.workspacesFile()).find(text) != std::string::npos; });
    }
    bool terminalOpens() {
        return comesTrue([&] { return desktop.window("xterm").has_value(); }, 60);
    }
    bool terminalGoes() {
        return comesTrue([&] { return !desktop.window("xterm").has_value(); });
    }
};

TEST_F(Hand, everythingIsDoneByTheActionsThatAssistiveProgramsOffer) {
    start({{"Errand", "", "star", {}}});
    ASSERT_TRUE(desktop.act("Press", "Resources", "Errand"));
    ASSERT_TRUE(desktop.act("Press", "Add Resource"));
    ASSERT_TRUE(desktop.act("Press", "Terminal"));
    for (const auto& [field, text] : {std::pair("Enter a name for this resource", "Shell"),
                                      std::pair("Terminal Command", "true")}) {
        ASSERT_TRUE(desktop.act("SetFocus", field)) << field;
        ASSERT_TRUE(getsKeyboard(field));
        desktop.run({"xdotool", "type", text});
    }
    ASSERT_TRUE(desktop.act("Press", "Add Resource"));
    EXPECT_TRUE(isSaved("\"Shell\""));
    ASSERT_TRUE(desktop.act("Press", "Settings"));
    ASSERT_TRUE(desktop.act("Toggle", "Focus Mode"));
    ASSERT_TRUE(desktop.act("Press", "Done"));
    EXPECT_TRUE(comes("Focus Mode"));

    ASSERT_TRUE(desktop.act("Press", "Start"));
    EXPECT_TRUE(terminalOpens());
    ASSERT_TRUE(comes("1 resources running"));
    ASSERT_TRUE(desktop.act("Press", "Finish"));
    ASSERT_TRUE(desktop.act("Press", "Finish & Close"));
    EXPECT_TRUE(terminalGoes());
    ASSERT_TRUE(comes("Successfully closed 1 workspace applications!"));
    ASSERT_TRUE(desktop.act("Press", "OK"));
    EXPECT_TRUE(comes("Start"));
}

TEST_F(Hand, everythingIsDoneByTheKeyboard) {
    start({{"Other", "", "star", {}}});
    ASSERT_TRUE(comes("Other"));
    desktop.run({"wmctrl", "-F", "-a", "Corvane"});
    key("ctrl+n");
    ASSERT_TRUE(getsKeyboard("Enter workspace name"));
    desktop.run({"xdotool", "type", "Errand"});
    key("Return");
    EXPECT_TRUE(isSaved("\"Errand\""));
    ASSERT_TRUE(getsKeyboard("Start"));
    ASSERT_TRUE(tabTo("Resources") && key("space"));
    ASSERT_TRUE(comes("Add Resource"));
    ASSERT_TRUE(tabTo("Add Resource") && key("Return"));
    ASSERT_TRUE(comes("Add New Resource"));
    ASSERT_TRUE(tabTo("Terminal") && key("space"));
    ASSERT_TRUE(tabTo("Enter a name for this resource"));
    desktop.run({"xdotool", "type", "Shell\ttrue"});
    ASSERT_TRUE(tabTo("Add Resource") && key("Return"));
    EXPECT_TRUE(isSaved("\"Shell\""));

    ASSERT_TRUE(tabTo("Launch Shell") && key("Return"));
    EXPECT_TRUE(terminalOpens());
    desktop.run({"wmctrl", "-F", "-a", "Corvane"});
    ASSERT_TRUE(tabTo("Stop Shell") && key("Return"));
    EXPECT_TRUE(terminalGoes());
}

} // namespace
} // namespace corvane::desktop
