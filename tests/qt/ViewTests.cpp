#include "qt/Views.h"

#include <QQuickItem>
#include <QTest>
#include <cmath>
#include <functional>
#include <map>

#include <gtest/gtest.h>

namespace corvane {
namespace {

TEST_F(Views, aStartGoesThroughItsStates) {
    interface.open({workspace("Work", {note()}), workspace("Home")});
    EXPECT_TRUE(interface.shows("What has to be done"));
    ASSERT_TRUE(interface.press("Start", "Work"));
    EXPECT_TRUE(interface.shows("Starting..."));
    EXPECT_FALSE(interface.isEnabled("Starting..."));
    EXPECT_TRUE(interface.press("Starting..."));

    interface.runFor(0.6);
    EXPECT_EQ(interface.desktop.logged("open"), "open file:///note.txt");
    EXPECT_TRUE(interface.shows("Running"));
    EXPECT_TRUE(interface.shows("Starting..."));
    interface.runFor(1.0);
    EXPECT_TRUE(interface.shows("1 resources running"));
    EXPECT_FALSE(interface.press("Start", "Work"));
}

TEST_F(Views, aRunningWorkspaceSavesItsLayoutAndIsFinishedWhenTheUserSaysSo) {
    auto& desktop = interface.desktop;
    desktop.install({.path = "/Applications/Pad.app", .displayName = "Pad"});
    desktop.running.push_back({.processIdentifier = 7, .localizedName = "Pad"});
    desktop.screen.stack.push_back({.info = windowInfo(7, 1, "Pad", {10, 20, 800, 600})});
    desktop.quitBehaviours[7] = QuitBehaviour::asks;
    desktop.alertAnswers["Layout Saved"].checkboxIsOn = true;
    interface.open(
        {workspace("Work", {makeResource("Pad", "/Applications/Pad.app", ResourceType::application,
                                         interface.platform.bundles)})});
    auto& store = interface.store();
    store.enableAccessibilityFeatures = true;
    ASSERT_TRUE(interface.press("Start"));
    interface.runFor(2);
    for (int i = 0; i < 2; ++i) {
        ASSERT_TRUE(interface.press("Save Layout"));
        interface.runFor(1);
        EXPECT_EQ(desktop.logged("alert"), "alert Layout Saved");
    }
    EXPECT_TRUE(store.workspaces->front().hasLayoutSaved);
    EXPECT_FALSE(store.showLayoutSavedAlert);
    store.enableAccessibilityFeatures = false;
    interface.runFor(0);
    EXPECT_FALSE(interface.shows("Save Layout"));

    for (const bool byKey : {true, false}) {
        ASSERT_TRUE(interface.press("Finish"));
        EXPECT_TRUE(interface.shows("This will close all running resources in \"Work\""));
        byKey ? interface.key(Qt::Key_Escape) : void(interface.press("Cancel"));
        EXPECT_TRUE(interface.shows("1 resources running"));
    }
    EXPECT_EQ(desktop.logged("terminate"), "");
    ASSERT_TRUE(interface.press("Finish"));
    ASSERT_TRUE(interface.press("Finish & Close"));
    EXPECT_FALSE(interface.isEnabled("Start"));
    interface.runFor(10);
    EXPECT_EQ(desktop.logged("terminate"), "terminate 7");
    EXPECT_TRUE(interface.isEnabled("Start"));
}

TEST_F(Views, chipsLaunchAndStopTheirResources) {
    std::vector<Resource> nine(9, note());
    for (auto& resource : nine)
        resource.id = Uuid::random();
    nine[8].name = "ninth";
    auto line = note();
    line.type = ResourceType::separator;
    interface.desktop.files.contents["/twin.txt"] = "";
    std::vector<Resource> twins(2, note());
    twins[1].name = "twin";
    twins[1].path = "/twin.txt";
    interface.open({workspace("Work", nine), workspace("Home", {line}),
                    workspace("Nine", {nine.begin(), nine.begin() + 8}),
                    workspace("Twins", twins)});
    EXPECT_TRUE(interface.shows("+1"));
    interface.resize(480, 650);
    const auto isCut = [&] { return interface.cut().find("+1|") != std::string::npos; };
    EXPECT_TRUE(isCut());
    interface.wheel("note", 9);
    EXPECT_FALSE(isCut()) << "a plain wheel goes to the end of the chips";
    interface.wheel("+1", -9);
    EXPECT_TRUE(isCut());
    EXPECT_TRUE(interface.reach("+1"));
    EXPECT_FALSE(isCut()) << "and so does the keyboard";
    interface.resize(1000, 700);
    EXPECT_FALSE(interface.shows("ninth"));
    EXPECT_TRUE(interface.shows("No resources configured"));
    ASSERT_TRUE(interface.press("note", "Work"));
    EXPECT_EQ(interface.desktop.logged("open"), "open file:///note.txt");
    EXPECT_EQ(interface.store().runningResources->size(), 1u);
    EXPECT_TRUE(interface.press("note", "Work"));
    interface.runFor(5);
    EXPECT_TRUE(interface.press("twin"));
    EXPECT_EQ(interface.desktop.logged("open"), "open file:///note.txt\nopen file:///twin.txt");
}

TEST_F(Views, textsTakeTheLinesThatTheyHave) {
    auto odd = note();
    odd.name = "of two\nlines";
    auto plain = workspace("Home", {odd, note()});
    plain.description = "Short";
    auto wordy = workspace("Work");
    for (int i = 0; i < 30; ++i)
        wordy.description += " more words";
    interface.open({wordy, plain});
    const auto heightOf = [&](const std::string& name) { return interface.placeOf(name).height(); };
    EXPECT_NEAR(heightOf(wordy.description), 3 * heightOf("Short"), 3);
    EXPECT_EQ(heightOf("of two lines"), heightOf("note"));
    EXPECT_GT(heightOf("note"), 0);
}

/// How high the strokes of a symbol are in a picture of its window.
int strokesOf(const QQuickItem& symbol, const QImage& shown) {
    const auto place = symbol.mapRectToScene({0, 0, symbol.width(), symbol.height()}).toRect();
    const auto picture = shown.copy(place);
    int rows = 0;
    for (int y = 0; y < picture.height(); ++y) {
        for (int x = 0; x < picture.width(); ++x) {
            const auto pixel = picture.pixelColor(x, y).lightness();
            if (std::abs(pixel - picture.pixelColor(0, y).lightness()) < 60) continue;
            ++rows;
            break;
        }
    }
    return rows;
}

TEST_F(Views, symbolsAreSeenAsLargeAsTheirSizeSays) {
    interface.open({workspace("Work", {note()})});
    auto& window = *interface.windows.front();
    const auto shown = window.grabWindow();
    std::map<int, int> heights;
    const std::function<void(QQuickItem&)> look = [&](QQuickItem& item) {
        if (item.property("symbol") == "play.fill" && item.inherits("QQuickText"))
            heights[item.property("size").toInt()] = strokesOf(item, shown);
        for (auto* child : item.childItems())
            look(*child);
    };
    look(*window.contentItem());
    ASSERT_EQ(heights.size(), 2u) << "of the start button and of the chip";
    EXPECT_NEAR(heights[16] / 16.0, heights[12] / 12.0, 1.0 / 12);
    EXPECT_GT(heights[16], heights[12] + 1);
}

TEST_F(Views, theMenuAndTheSheetsChangeTheList) {
    interface.open({workspace("Work", {note()}), workspace("Home")});
    const auto names = [&] {
        std::string text;
        for (const auto& workspace : *interface.store().workspaces)
            text += workspace.name + "(" + workspace.icon + ") ";
        return text;
    };
    ASSERT_TRUE(interface.press("More", "Home"));
    ASSERT_TRUE(interface.press("Edit"));
    EXPECT_TRUE(interface.shows("Edit Workspace"));
    interface.type("ly");
    ASSERT_TRUE(interface.press("cube"));
    ASSERT_TRUE(interface.press("Save"));
    EXPECT_EQ(names(), "Work(star) Homely(cube) ");

    ASSERT_TRUE(interface.press("More", "Work"));
    ASSERT_TRUE(interface.press("Duplicate"));
    for (const auto button : {AlertResponse::secondButton, AlertResponse::firstButton}) {
        interface.desktop.alertAnswers["Delete Workspace"].button = button;
        ASSERT_TRUE(interface.press("More", "Homely"));
        ASSERT_TRUE(interface.press("Delete"));
        interface.runFor(0);
        interface.runFor(0);
        EXPECT_EQ(interface.shows("Homely"), button != AlertResponse::firstButton);
    }
    EXPECT_EQ(names(), "Work(star) Work Copy(star) ");

    ASSERT_TRUE(interface.press("Search workspaces..."));
    interface.type("none");
    for (const auto* button : {"Cancel", "Create"}) {
        ASSERT_TRUE(interface.press("New Workspace"));
        EXPECT_EQ(interface.focused(), "Enter workspace name");
        EXPECT_FALSE(interface.isEnabled("Create"));
        interface.type(" ");
        EXPECT_TRUE(interface.press(button));
    }
    EXPECT_EQ(names(), "Work(star) Work Copy(star)  (laptopcomputer) ");
    EXPECT_TRUE(interface.shows("No Results Found"));
}

TEST_F(Views, theListFollowsTheSearchAndTheStore) {
    interface.open({workspace("Garden"), workspace("Office"), workspace("Garage")});
    ASSERT_TRUE(interface.press("Resources", "Garage"));
    ASSERT_TRUE(interface.press("Search workspaces..."));
    interface.type("GAR");
    EXPECT_TRUE(interface.shows("Garden") && interface.shows("Garage"));
    EXPECT_FALSE(interface.shows("Office"));
    for (const char letter : {'D', 'A'}) {
        interface.type({letter});
        EXPECT_EQ(interface.shows("Add Resource"), letter == 'A') << "cards keep what they are";
        interface.key(Qt::Key_Backspace);
    }
    interface.type(" ");
    EXPECT_TRUE(interface.shows("No Results Found"));
    EXPECT_TRUE(interface.shows("No workspaces match \"GAR \""));
    interface.store().addWorkspace(workspace("Gar field"));
    interface.runFor(0);
    EXPECT_TRUE(interface.shows("Gar field"));
    for (int i = 0; i < 4; ++i)
        interface.key(Qt::Key_Backspace);
    EXPECT_TRUE(interface.shows("Office"));
    const auto top = interface.placeOf("Garden").top();
    for (int i = 0; i < 9; ++i)
        interface.store().addWorkspace(workspace("Garage " + std::to_string(i)));
    interface.runFor(0);
    interface.wheel("Office", 3);
    EXPECT_TRUE(QTest::qWaitFor([&] { return interface.placeOf("Garden").top() < top; }));
    interface.type("gar");
    EXPECT_EQ(interface.placeOf("Garden").top(), top) << "the first match is whole";
    interface.key(Qt::Key_Escape);
    while (!interface.store().workspaces->empty())
        interface.store().deleteWorkspace(interface.store().workspaces->front().id);
    interface.runFor(0);
    EXPECT_TRUE(interface.shows("No Workspaces Yet"));
}

TEST_F(Views, theHeaderActsOnTheWholeProgram) {
    interface.open({workspace("Work")});
    ASSERT_TRUE(interface.press("Focus Mode"));
    EXPECT_TRUE(interface.store().focusMode);
    interface.store().focusMode = false;
    EXPECT_TRUE(interface.press("Switch to Dark Mode"));
    EXPECT_TRUE(interface.shows("Switch to Light Mode"));
    EXPECT_TRUE(interface.platform.appearance.effectiveAppearanceIsDark());

    auto& unwritable = interface.desktop.files.unwritable;
    unwritable = {workspacesPath};
    interface.store().addWorkspace(workspace("Later"));
    interface.runFor(0);
    const auto mark = "Changes aren't saved. Press to try again.\n\n“" +
                      std::string(workspacesPath) + "” can't be written: permission denied.";
    EXPECT_TRUE(interface.press(mark));
    EXPECT_TRUE(interface.shows(mark));
    unwritable.clear();
    EXPECT_TRUE(interface.press(mark));
    EXPECT_FALSE(interface.shows(mark));
}

TEST_F(Views, aClosedWindowComesBackWithTheStoreAsItIs) {
    interface.open({workspace("Work")});
    interface.closeWindow();
    EXPECT_TRUE(interface.windows.windows().empty());
    interface.store().addWorkspace(workspace("Later"));
    interface.platform.notificationCenter.post("createNewWindow");
    ASSERT_EQ(interface.windows.windows().size(), 1u);
    interface.runFor(0);
    EXPECT_TRUE(interface.shows("Later"));
    interface.platform.notificationCenter.post("createNewWindow");
    EXPECT_EQ(interface.windows.windows().size(), 1u);

    // One that is closed while it comes to the front isn't asked for any more.
    int asked = 0;
    interface.windows.goThrough({.activate = [&](std::uint64_t, const std::string&) { ++asked; }});
    const int last = interface.windows.windows().front().identifier;
    interface.windows.makeKeyAndOrderFront(last);
    EXPECT_EQ(asked, 1);
    interface.windows.front()->hide();
    interface.windows.makeKeyAndOrderFront(last);
    EXPECT_EQ(asked, 1);
    EXPECT_EQ(interface.windows.front(), nullptr);
}

TEST_F(Views, theTourEndsByItsButtonsOrItsWindowAndGoesOnWhereItWasLeft) {
    auto& defaults = interface.desktop.defaults;
    interface.isFirstStart = true;
    interface.open({workspace("Work")});
    interface.runFor(1.1);
    EXPECT_EQ(interface.shown(),
              "Welcome to Corvane|Skip|Welcome to Corvane|Your workspace management companion|"
              "Corvane helps you organize and launch groups of applications, "
              "files, and folders together as workspaces.|Previous|1 of 6|Next");
    EXPECT_FALSE(interface.isEnabled("Previous"));
    for (int i = 0; i < 4; ++i)
        interface.press("Next");
    EXPECT_TRUE(interface.press("Focus Mode: OFF"));
    EXPECT_TRUE(interface.shows("Focus Mode: ON"));
    EXPECT_TRUE(interface.store().focusMode);
    interface.press("Next");
    EXPECT_TRUE(interface.press("Previous"));
    EXPECT_TRUE(interface.shows("5 of 6"));
    EXPECT_FALSE(defaults.contains("HasCompletedOnboarding"));
    interface.press("Next");
    EXPECT_TRUE(interface.press("Get Started"));
    interface.runFor(0);
    EXPECT_EQ(defaults.at("HasCompletedOnboarding"), PropertyList{true});
    EXPECT_TRUE(interface.shows("Work"));

    auto& menu = interface.desktop.statusBar;
    interface.app->appDelegate().applicationDidFinishLaunching();
    interface.runFor(1);
    defaults.clear();
    ASSERT_TRUE(menu.press("Help & Tips"));
    interface.runFor(0);
    interface.press("Next");
    ASSERT_TRUE(interface.shows("2 of 6"));
    interface.closeWindow();
    EXPECT_EQ(interface.windows.windows().size(), 1u);
    EXPECT_EQ(defaults.at("HasCompletedOnboarding"), PropertyList{true});
    ASSERT_TRUE(menu.press("Help & Tips"));
    interface.runFor(0);
    EXPECT_TRUE(interface.shows("2 of 6"));
}

} // namespace
} // namespace corvane
