#include "qt/Interface.h"

namespace corvane {
namespace {

TEST_F(Views, aHeldKeyPressesOnce) {
    open({workspace("Work", {note()})});
    for (const auto held : {Qt::Key_Space, Qt::Key_Return, Qt::Key_Enter}) {
        ASSERT_TRUE(reach("note"));
        hold(held);
        EXPECT_EQ(desktop.logged("open"), "open file:///note.txt");
        EXPECT_EQ(store().runningResources->begin()->second.size(), 1u);
        hold(held);
        EXPECT_TRUE(store().runningResources->begin()->second.empty());
        desktop.log.clear();

        ASSERT_TRUE(press("Settings"));
        ASSERT_TRUE(reach("Auto-Save Layouts") || reach("Focus Mode"));
        const bool was = store().focusMode;
        hold(held);
        EXPECT_NE(store().focusMode, was);
        ASSERT_TRUE(reach("Done"));
        hold(held);
        EXPECT_FALSE(shows("Configure Corvane Workspace Manager"));
    }
    ASSERT_TRUE(press("Start"));
    runFor(2);
    for (const auto held : {Qt::Key_Space, Qt::Key_Return}) {
        ASSERT_TRUE(reach("Finish"));
        hold(held);
        EXPECT_EQ(focused(), "Finish & Close");
        key(Qt::Key_Escape);
        EXPECT_EQ(focused(), "Finish") << "the keyboard goes back";
    }
    hold(Qt::Key_Return);
    hold(Qt::Key_Return);
    runFor(2);
    EXPECT_EQ(focused(), "Finish") << "and stays with the button";
}

TEST_F(Views, assistiveProgramsActByActions) {
    open({workspace("Work", {note()}), workspace("Home")});
    // A screen reader that is started later than the program. The steps name its action and the
    // control, what that can do, and what is then shown.
    QAccessible::setActive(false);
    QAccessible::setActive(true);
    const std::tuple<const char*, const char*, const char*, const char*, const char*> steps[]{
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
        {"Press", "Starting...", "", "", "Starting..."}};
    for (const auto& [action, name, inside, actions, shown] : steps) {
        EXPECT_EQ(act(action, name, inside), actions) << name;
        EXPECT_TRUE(comes(shown)) << name << " in " << this->shown();
    }
    EXPECT_EQ(desktop.logged("open"), "open file:///note.txt");
    EXPECT_TRUE(store().focusMode && !store().showLayoutSavedAlert);
    EXPECT_EQ(store().fullscreenPriority.get(), "last");
    runFor(2);
    EXPECT_EQ(act("Press", "Finish"), "Press SetFocus");
    EXPECT_EQ(act("Press", "Finish & Close"), "Press SetFocus");
    EXPECT_TRUE(comes("Closing resources..."));
    EXPECT_EQ(desktop.logged("alert"), "alert No Applications to Quit");
}

TEST_F(Views, aNarrowWindowCutsNothing) {
    open({workspace("Work", {note()}), workspace("Home")});
    store().enableAccessibilityFeatures = true;
    ASSERT_TRUE(press("Start", "Work"));
    runFor(2);
    for (const auto& [width, height] : {std::pair(480, 500), {640, 500}, {930, 500}, {1600, 900}}) {
        resize(width, height);
        EXPECT_EQ(cut(), "") << width;
        EXPECT_TRUE(shows("Save Layout"));
    }
    resize(480, 500);
    for (const auto& [opens, last] : {std::pair("New Workspace", "Cancel"), {"Settings", "Done"}}) {
        ASSERT_TRUE(press(opens));
        EXPECT_EQ(cut(), "") << opens;
        EXPECT_TRUE(reach(last));
        key(Qt::Key_Return);
    }
    act("Press", "Resources", "Home");
    settle();
    EXPECT_EQ(cut(), "");
    ASSERT_TRUE(act("Press", "Add Resource", "Home") != "none");
    EXPECT_EQ(cut(), "");
    EXPECT_TRUE(reach("Cancel"));
}

TEST_F(Views, keysReachWhatIsUsedMost) {
    open({workspace("Work", {note()}), workspace("Home")});
    EXPECT_EQ(shown(),
              "Corvane|Workspace Manager|Search workspaces...|Switch to Dark Mode|Focus Mode|"
              "New Workspace|Settings|Workspaces|Work|Work|What has to be done|Start|Resources|"
              "More|note|Home|Home|Start|Resources|More|No resources configured")
        << "screen readers read as the eye does";
    key(Qt::Key_F, Qt::ControlModifier);
    EXPECT_EQ(focused(), "Search workspaces...");
    type("wo");
    EXPECT_FALSE(shows("Home"));
    key(Qt::Key_Escape);
    EXPECT_TRUE(shows("Home"));
    key(Qt::Key_Comma, Qt::ControlModifier);
    EXPECT_TRUE(shows("Configure Corvane Workspace Manager"));
    key(Qt::Key_N, Qt::ControlModifier);
    EXPECT_FALSE(shows("Create New Workspace")) << "not under another sheet";
    key(Qt::Key_Escape);
    key(Qt::Key_N, Qt::ControlModifier);
    EXPECT_EQ(focused(), "Enter workspace name");
    type("Last");
    key(Qt::Key_Return);
    runFor(0);
    EXPECT_EQ(focused() + " " + focusedDescription(), "Start Last");
    desktop.alertAnswers["Delete Workspace"].button = AlertResponse::firstButton;
    ASSERT_TRUE(press("More", "Work") && press("Delete"));
    EXPECT_TRUE(comes("Removed 'Work'"));
    EXPECT_EQ(store().workspaces->size(), 2u);
    key(Qt::Key_Z, Qt::ControlModifier);
    runFor(0);
    EXPECT_TRUE(shows("Work"));
    EXPECT_EQ(store().workspaces->front().name, "Work");
}

TEST_F(Views, theKeyboardReachesEveryControlInOrderThroughALongListAndBack) {
    std::vector<Workspace> many;
    std::string names;
    for (char name = 'a'; name <= 'z'; ++name) {
        many.push_back(workspace({name}, {note()}));
        names += name;
    }
    open(many);
    const auto reached = [&](Qt::Key key, const char* control, int times) {
        std::string cards;
        for (int i = 0; i < times; ++i) {
            this->key(key);
            if (focused() == control) cards += focusedDescription();
        }
        return cards;
    };
    std::string order;
    for (int i = 0; i < 9; ++i) {
        key(Qt::Key_Tab);
        order += focused() + "|";
    }
    EXPECT_EQ(order, "Search workspaces...|Switch to Dark Mode|Focus Mode|New Workspace|Settings|"
                     "Start|Resources|More|note|");
    EXPECT_EQ(reached(Qt::Key_Tab, "Start", 25 * 4), names.substr(1));
    const auto back = reached(Qt::Key_Backtab, "More", 26 * 4 - 1);
    EXPECT_EQ(std::string(back.rbegin(), back.rend()), names);
}

} // namespace
} // namespace corvane
