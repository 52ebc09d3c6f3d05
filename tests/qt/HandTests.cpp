#include "qt/Views.h"

#include <QAccessible>

namespace corvane {
namespace {

TEST_F(Views, aHeldKeyPressesOnce) {
    interface.open({workspace("Work", {note()})});
    for (const auto key : {Qt::Key_Space, Qt::Key_Return, Qt::Key_Enter}) {
        ASSERT_TRUE(interface.reach("note"));
        interface.hold(key);
        EXPECT_EQ(interface.desktop.logged("open"), "open file:///note.txt");
        EXPECT_EQ(interface.store().runningResources->begin()->second.size(), 1u);
        interface.hold(key);
        EXPECT_TRUE(interface.store().runningResources->begin()->second.empty());
        interface.desktop.log.clear();

        ASSERT_TRUE(interface.press("Settings"));
        ASSERT_TRUE(interface.reach("Auto-Save Layouts") || interface.reach("Focus Mode"));
        const bool was = interface.store().focusMode;
        interface.hold(key);
        EXPECT_NE(interface.store().focusMode, was);
        ASSERT_TRUE(interface.reach("Done"));
        interface.hold(key);
        EXPECT_FALSE(interface.shows("Configure Corvane Workspace Manager"));
    }
    ASSERT_TRUE(interface.press("Start"));
    interface.runFor(2);
    for (const auto key : {Qt::Key_Space, Qt::Key_Return}) {
        ASSERT_TRUE(interface.reach("Finish"));
        interface.hold(key);
        EXPECT_EQ(interface.focused(), "Finish & Close");
        interface.key(Qt::Key_Escape);
        EXPECT_EQ(interface.focused(), "Finish") << "the keyboard goes back";
    }
    interface.hold(Qt::Key_Return);
    interface.hold(Qt::Key_Return);
    interface.runFor(2);
    EXPECT_EQ(interface.focused(), "Finish") << "and stays with the button";
}

TEST_F(Views, assistiveProgramsActByActions) {
    auto& store =
        (interface.open({workspace("Work", {note()}), workspace("Home")}), interface.store());
    // A screen reader that is started later than the program.
    QAccessible::setActive(false);
    QAccessible::setActive(true);
    const struct {
        const char* action;
        const char* name;
        const char* inside;
        /// What the control can do, and what is then shown.
        const char* actions;
        const char* shown;
    } steps[]{
        {"Press", "note", "", "Press SetFocus", "note"},
        {"Press", "Resources", "Home", "Press SetFocus", "No resources yet"},
        {"Press", "Resources", "Home", "Press SetFocus", "No resources configured"},
        {"Toggle", "Focus Mode", "", "Press Toggle SetFocus", "Focus Mode"},
        {"ShowMenu", "More", "Home", "Press ShowMenu SetFocus", "Duplicate"},
        {"Press", "Duplicate", "", "Press SetFocus", "Home Copy"},
        {"Press", "Settings", "", "Press SetFocus", "Configure Corvane Workspace Manager"},
        {"Toggle", "Window Layout Saved", "", "Press Toggle SetFocus", "Done"},
        {"ShowMenu", "Fullscreen Priority", "Settings", "Press ShowMenu SetFocus", "Last App"},
        {"Press", "Last App", "", "Press Toggle SetFocus", "Done"},
        {"Press", "Auto-Save Layouts", "Settings", "", "Done"},
        {"Press", "Done", "", "Press SetFocus", "Work"},
        {"Press", "New Workspace", "", "Press SetFocus", "Create New Workspace"},
        {"Press", "music note", "", "Press Toggle SetFocus", "Create"},
        {"Press", "Create", "", "", "Create"},
        {"Press", "Cancel", "", "Press SetFocus", "Work"},
        {"Press", "Start", "Work", "Press SetFocus", "Starting..."},
        {"Press", "Starting...", "", "", "Starting..."},
    };
    for (const auto& [action, name, inside, actions, shown] : steps) {
        EXPECT_EQ(interface.act(action, name, inside), actions) << name;
        EXPECT_TRUE(interface.comes(shown)) << name << " in " << interface.shown();
    }
    EXPECT_EQ(interface.desktop.logged("open"), "open file:///note.txt");
    EXPECT_TRUE(store.focusMode);
    EXPECT_FALSE(store.showLayoutSavedAlert);
    EXPECT_EQ(store.fullscreenPriority.get(), "last");
    interface.runFor(2);
    EXPECT_EQ(interface.act("Press", "Finish"), "Press SetFocus");
    EXPECT_EQ(interface.act("Press", "Finish & Close"), "Press SetFocus");
    EXPECT_TRUE(interface.comes("Closing resources..."));
    EXPECT_EQ(interface.desktop.logged("alert"), "alert No Applications to Quit");
}

TEST_F(Views, aNarrowWindowCutsNothing) {
    interface.open({workspace("Work", {note()}), workspace("Home")});
    interface.store().enableAccessibilityFeatures = true;
    ASSERT_TRUE(interface.press("Start", "Work"));
    interface.runFor(2);
    for (const auto& [width, height] : {std::pair(480, 500), {640, 500}, {930, 500}, {1600, 900}}) {
        interface.resize(width, height);
        EXPECT_EQ(interface.cut(), "") << width;
        EXPECT_TRUE(interface.shows("Save Layout"));
    }
    interface.resize(480, 500);
    for (const auto& [opens, last] : {std::pair("New Workspace", "Cancel"), {"Settings", "Done"}}) {
        ASSERT_TRUE(interface.press(opens));
        EXPECT_EQ(interface.cut(), "") << opens;
        EXPECT_TRUE(interface.reach(last));
        interface.key(Qt::Key_Return);
    }
    interface.act("Press", "Resources", "Home");
    interface.settle();
    EXPECT_EQ(interface.cut(), "");
    ASSERT_TRUE(interface.act("Press", "Add Resource", "Home") != "none");
    EXPECT_EQ(interface.cut(), "");
    EXPECT_TRUE(interface.reach("Cancel"));
}

TEST_F(Views, keysReachWhatIsUsedMost) {
    interface.open({workspace("Work", {note()}), workspace("Home")});
    EXPECT_EQ(interface.shown(),
              "Corvane|Workspace Manager|Search workspaces...|Switch to Dark Mode|Focus Mode|"
              "New Workspace|Settings|Workspaces|Work|Work|What has to be done|Start|Resources|"
              "More|note|Home|Home|Start|Resources|More|No resources configured")
        << "screen readers read as the eye does";
    interface.key(Qt::Key_F, Qt::ControlModifier);
    EXPECT_EQ(interface.focused(), "Search workspaces...");
    interface.type("wo");
    EXPECT_FALSE(interface.shows("Home"));
    interface.key(Qt::Key_Escape);
    EXPECT_TRUE(interface.shows("Home"));
    interface.key(Qt::Key_Comma, Qt::ControlModifier);
    EXPECT_TRUE(interface.shows("Configure Corvane Workspace Manager"));
    interface.key(Qt::Key_N, Qt::ControlModifier);
    EXPECT_FALSE(interface.shows("Create New Workspace")) << "not under another sheet";
    interface.key(Qt::Key_Escape);
    interface.key(Qt::Key_N, Qt::ControlModifier);
    EXPECT_EQ(interface.focused(), "Enter workspace name");
    interface.type("Last");
    interface.key(Qt::Key_Return);
    interface.runFor(0);
    EXPECT_EQ(interface.focused() + " " + interface.focusedDescription(), "Start Last");
    interface.desktop.alertAnswers["Delete Workspace"].button = AlertResponse::firstButton;
    ASSERT_TRUE(interface.press("More", "Work"));
    ASSERT_TRUE(interface.press("Delete"));
    EXPECT_TRUE(interface.comes("Removed 'Work'"));
    EXPECT_EQ(interface.store().workspaces->size(), 2u);
    interface.key(Qt::Key_Z, Qt::ControlModifier);
    interface.runFor(0);
    EXPECT_TRUE(interface.shows("Work"));
    EXPECT_EQ(interface.store().workspaces->front().name, "Work");
}

TEST_F(Views, theKeyboardReachesEveryControlInOrderThroughALongListAndBack) {
    std::vector<Workspace> many;
    std::string names;
    for (char name = 'a'; name <= 'z'; ++name) {
        many.push_back(workspace({name}, {note()}));
        names += name;
    }
    interface.open(many);
    const auto reached = [&](Qt::Key key, const char* control, int times) {
        std::string cards;
        for (int i = 0; i < times; ++i) {
            interface.key(key);
            if (interface.focused() == control) cards += interface.focusedDescription();
        }
        return cards;
    };
    std::string order;
    for (int i = 0; i < 9; ++i) {
        interface.key(Qt::Key_Tab);
        order += interface.focused() + "|";
    }
    EXPECT_EQ(order, "Search workspaces...|Switch to Dark Mode|Focus Mode|New Workspace|Settings|"
                     "Start|Resources|More|note|");
    EXPECT_EQ(reached(Qt::Key_Tab, "Start", 25 * 4), names.substr(1));
    const auto back = reached(Qt::Key_Backtab, "More", 26 * 4 - 1);
    EXPECT_EQ(std::string(back.rbegin(), back.rend()), names);
}

} // namespace
} // namespace corvane
