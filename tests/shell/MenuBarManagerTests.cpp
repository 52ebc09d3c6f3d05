#include "core/StoreScene.h"
#include "shell/CorvaneApp.h"

using namespace corvane;

namespace {

struct StatusMenu : SceneTest {
    SimulatedStatusBar& bar = desktop.statusBar;
    std::unique_ptr<CorvaneApp> app;

    Workspace editing() {
        desktop.install({.path = "/Applications/Pad.app", .displayName = "Pad"});
        desktop.running = {{.processIdentifier = 7, .localizedName = "Pad"}};
        return scene.workspace(
            "Editing", {scene.resource("Pad", "/Applications/Pad.app", ResourceType::application)});
    }
    void launch(const std::vector<Workspace>& workspaces) {
        desktop.defaults["HasCompletedOnboarding"] = {true};
        scene.writeFile(workspaces);
        app = std::make_unique<CorvaneApp>(scene.platform);
        app->setupApp();
        app->appDelegate().applicationDidFinishLaunching();
        settle();
    }
    void settle() {
        desktop.runFor(5);
        desktop.log.clear();
        bar.rebuilds = 0;
    }
    std::string loggedIn(double seconds) {
        desktop.log.clear();
        desktop.runFor(seconds);
        return desktop.logged();
    }
    WorkspaceStore& store() { return app->workspaceStore(); }
};

TEST_F(StatusMenu, comesOnceWithTheFirstEventThatFindsItsManager) {
    desktop.defaults["HasCompletedOnboarding"] = {true};
    desktop.isRunning = false;
    CorvaneApp made(scene.platform);
    made.appDelegate().applicationDidFinishLaunching();
    made.appDelegate().applicationDidBecomeActive();
    made.setupApp();
    made.setupApp();
    desktop.runUntilIdle();
    EXPECT_FALSE(bar.hasItem);

    made.appDelegate().applicationDidFinishLaunching();
    EXPECT_FALSE(bar.hasItem);
    EXPECT_EQ(desktop.queue.pending(), 1u);
    desktop.isRunning = true;
    desktop.runUntilIdle();
    EXPECT_TRUE(bar.hasItem);
    EXPECT_EQ(bar.length, 28);
    EXPECT_EQ(bar.rebuilds, 1);
    for (int i = 0; i < 3; ++i)
        made.appDelegate().applicationDidBecomeActive();
    std::string relayed;
    const auto observer = platform.notificationCenter.addObserver(
        "WorkspaceStoreDidChange", [&] { relayed += *made.workspaceStore().searchText; });
    StoreState::set(made.workspaceStore().searchText, "a");
    EXPECT_EQ(bar.rebuilds, 1);
    desktop.runUntilIdle();
    EXPECT_EQ(bar.rebuilds, 2);
    EXPECT_EQ(relayed, "a") << "once, behind the change";
}

TEST_F(StatusMenu, anActiveApplicationShowsItBeforeItsLoopHasBegun) {
    desktop.isRunning = false;
    desktop.isActive = true;
    app = std::make_unique<CorvaneApp>(scene.platform);
    app->setupApp();
    app->appDelegate().applicationDidBecomeActive();
    EXPECT_TRUE(bar.hasItem);
}

TEST_F(StatusMenu, takesTheFirstIconThatIsThere) {
    using Source = Image::Source;
    const std::string tip = "Corvane - Workspace Manager";
    const auto with = [&](Image image) { return StatusButton{{}, std::move(image), tip}; };
    const std::pair<std::function<void()>, StatusButton> cases[]{
        {[] {}, with({.source = Source::asset, .name = "MenuBarIcon", .size = 18})},
        {[&] { bar.assets.clear(); }, with({.source = Source::applicationIcon, .size = 18})},
        {[&] { bar.hasApplicationIcon = false; }, with({.name = "rectangle.3.group",
                                                        .accessibilityDescription = "Corvane",
                                                        .size = 18,
                                                        .isTemplate = true})},
        {[&] { bar.unknownSymbols.insert("rectangle.3.group"); }, {"⚡", std::nullopt, tip}},
        {[&] { bar.itemsHaveButtons = false; }, {}}};
    for (const auto& [change, button] : cases) {
        change();
        bar.button = {};
        launch({scene.workspace("A")});
        EXPECT_EQ(bar.button, button);
        EXPECT_NE(bar.shownMenu(), "");
        app.reset();
        EXPECT_FALSE(bar.hasItem);
    }
}

TEST_F(StatusMenu, showsTheStoreAsItIsWithTheSymbolsThatAreKnown) {
    auto strange = editing();
    strange.icon = "no.such.symbol";
    bar.unknownSymbols.insert(strange.icon);
    launch({scene.workspace("Home"), strange});
    EXPECT_EQ(bar.menu[5].image,
              (Image{.name = "folder", .accessibilityDescription = "Home", .size = 16}));
    EXPECT_EQ(bar.menu[6].image, std::nullopt);
    const auto list = store().workspaces.get();
    const std::string head = "(Corvane Workspaces)|-|Show App Window|Help & Tips|-|";
    const std::string tail = "Quit All Apps|-|Quit Corvane";
    const std::string idle = "Home     ▶|Editing     ▶|-|";
    const std::string running = "Home     ▶|Editing     ⏹|-|";
    const std::pair<std::function<void()>, std::string> steps[]{
        {[&] { StoreState::set(store().searchText, "no such name"); }, idle + "[ ] Focus Mode|"},
        {[&] { store().autoSaveLayouts = true; }, idle + "[ ] Focus Mode|"},
        {[&] { store().enableAccessibilityFeatures = true; },
         idle + "[ ] Focus Mode|[x] Auto-Save Layouts|(Save Layout)|"},
        {[&] { StoreState::set(store().runningWorkspaces, {list[1].id}); },
         running + "[ ] Focus Mode|[x] Auto-Save Layouts|(Save Layout)|"},
        {[&] { StoreState::set(store().activeWorkspace, list[1]); },
         running + "[ ] Focus Mode|[x] Auto-Save Layouts|Save Layout|"},
        {[&] {
             StoreState::set(store().activeWorkspace, std::nullopt);
             store().focusMode = true;
         },
         running + "[x] Focus Mode|[x] Auto-Save Layouts|"},
        {[&] {
             store().enableAccessibilityFeatures = false;
             StoreState::set(store().workspaces, {});
         },
         "(No workspaces found)|-|[x] Focus Mode|"}};
    for (const auto& [change, middle] : steps) {
        change();
        desktop.runUntilIdle();
        EXPECT_EQ(bar.shownMenu(), head + middle + tail);
    }
}

TEST_F(StatusMenu, startsAWorkspaceAsItWasAtTheLastRebuildAndFinishesIt) {
    launch({scene.workspace("Home"), editing()});
    auto renamed = store().workspaces.get()[1];
    renamed.name = "Writing";
    store().updateWorkspace(renamed);
    bar.press("Editing");
    EXPECT_EQ(desktop.logged("notify"), "notify Launching Workspace: Starting 'Editing'...");
    EXPECT_EQ(store().activeWorkspace.get()->name, "Editing");
    EXPECT_TRUE(store().hasLaunchedResources && store().runningWorkspaces->contains(renamed.id));
    desktop.runUntilIdle();
    EXPECT_EQ(desktop.logged("open"), "open file:///Applications/Pad.app");
    EXPECT_TRUE(bar.press("Home     ▶") && !store().hasLaunchedResources);
    EXPECT_FALSE(bar.press("Home     ⏹") || bar.press("Corvane Workspaces"));
    desktop.log.clear();
    ASSERT_TRUE(bar.press("Writing     ⏹"));
    EXPECT_EQ(desktop.logged(), "notify Quitting Workspace: Stopping 'Writing'...\nterminate 7");
    EXPECT_TRUE(store().runningWorkspaces->empty());
    EXPECT_EQ(store().activeWorkspace.get()->name, "Home");
}

TEST_F(StatusMenu, switchesPreferencesAndTellsTheNewValue) {
    launch({scene.workspace("Home")});
    store().enableAccessibilityFeatures = true;
    settle();
    for (int i = 0; i < 2; ++i) {
        for (const auto* title : {"Focus Mode", "Auto-Save Layouts"}) {
            ASSERT_TRUE(bar.press(title));
            desktop.runUntilIdle();
        }
        EXPECT_EQ(store().focusMode, i == 0);
        EXPECT_EQ(desktop.defaults.at("CorvaneAutoSaveLayouts"), PropertyList(i == 0));
    }
    EXPECT_EQ(desktop.logged(),
              "notify Focus Mode: Focus Mode enabled\n"
              "notify Auto-Save Layouts: Enabled - Layouts will be auto-saved when workspaces "
              "finish or app quits\n"
              "notify Focus Mode: Focus Mode disabled\n"
              "notify Auto-Save Layouts: Disabled - Manual save required");
}

TEST_F(StatusMenu, savesTheLayoutOfARunningActiveWorkspaceOnly) {
    launch({editing()});
    desktop.screen.stack = {{.info = windowInfo(7, 1, "Pad", {1, 2, 300, 200})}};
    store().enableAccessibilityFeatures = true;
    StoreState::set(store().runningWorkspaces, {store().workspaces->front().id});
    settle();
    // The menu offers it, and the state changes behind its back.
    const auto press = [&] {
        desktop.log.clear();
        bar.press("Save Layout");
        return desktop.logged("notify");
    };
    EXPECT_EQ(press(), "notify Layout Saved: Layout saved for 'Editing'");
    EXPECT_EQ(described(store().workspaces), "Editing(Pad)+");
    // A program that came since has its record too.
    desktop.install({.path = "/Applications/Draw.app", .displayName = "Draw"});
    desktop.running.push_back({.processIdentifier = 8, .localizedName = "Draw"});
    desktop.screen.stack.push_back({.info = windowInfo(8, 2, "Draw", {1, 2, 300, 200})});
    store().addResource(scene.resource("Draw", "/Applications/Draw.app", ResourceType::application),
                        store().workspaces->front().id);
    press();
    EXPECT_EQ(store().workspaces->front().savedWindowLayouts->size(), 2u);
    StoreState::set(store().runningWorkspaces, {});
    EXPECT_EQ(press(), "notify Save Layout Failed: Start 'Editing' first to save its layout");
    StoreState::set(store().activeWorkspace, std::nullopt);
    EXPECT_EQ(press(), "notify Save Layout Failed: No active workspace selected");
}

TEST_F(StatusMenu, isMadeAnewAfterEachChangeAndSomeTimeAfterEachAction) {
    launch({scene.workspace("Home"), editing()});
    store().enableAccessibilityFeatures = true;
    StoreState::set(store().activeWorkspace, store().workspaces.get()[1]);
    StoreState::set(store().runningWorkspaces, {store().workspaces.get()[1].id});
    settle();
    const std::pair<const char*, double> cases[]{
        {"Save Layout", 0.1},       {"Home", 0.1},    {"Focus Mode", 0.1},
        {"Auto-Save Layouts", 0.1}, {"Editing", 0.5}, {"Quit All Apps", 0.5},
        {"Show App Window", 0.2}};
    for (const auto& [title, delay] : cases) {
        SCOPED_TRACE(title);
        desktop.windows = {{1, false}};
        int changes = 0;
        const auto counting = store().objectWillChange.subscribe([&] { ++changes; });
        ASSERT_TRUE(bar.press(title));
        EXPECT_EQ(bar.rebuilds, 0);
        for (const auto& [seconds, action] :
             {std::pair(0.0, 0), {delay - 0.005, 0}, {0.01, 1}, {0.5, 1}}) {
            desktop.runFor(seconds);
            EXPECT_EQ(bar.rebuilds, changes + action);
        }
        settle();
    }
}

TEST_F(StatusMenu, quitsAllAndItself) {
    desktop.running = {{.processIdentifier = 9,
                        .localizedName = "Pad",
                        .bundleURL = Url::fromPath("/Applications/Pad.app")}};
    launch({scene.workspace("Home")});
    ASSERT_TRUE(bar.press("Quit All Apps"));
    EXPECT_EQ(desktop.logged(),
              "terminate 9\nnotify Quit All: Closing all workspace applications...");
    settle();
    ASSERT_TRUE(bar.press("Quit Corvane"));
    EXPECT_EQ(desktop.logged(), "");
    desktop.runUntilIdle();
    EXPECT_EQ(desktop.logged(), "terminate");
}

TEST_F(StatusMenu, bringsTheFirstWindowThatIsNoSheetBack) {
    const std::tuple<std::vector<ApplicationWindow>, const char*, const char*> cases[]{
        {{{1, true}, {2, false}, {3, false}}, "activate\nfront 2\ndeminiaturize 2\nkey 2", ""},
        {{{2, false, false}}, "activate\nfront 2\ndeminiaturize 2\nfront 2", ""},
        {{{1, true}},
         "activate\nopen main window\nactivate",
         "open window Corvane - Workspace Manager 1200x800 at 100,100"}};
    launch({scene.workspace("Home")});
    for (const auto& [windows, first, later] : cases) {
        desktop.windows = windows;
        settle();
        ASSERT_TRUE(bar.press("Show App Window"));
        EXPECT_EQ(desktop.logged(), "");
        EXPECT_EQ(loggedIn(0), first);
        EXPECT_EQ(loggedIn(0.099), "");
        EXPECT_EQ(loggedIn(0.099), "activate");
        EXPECT_EQ(loggedIn(0.004), later);
    }
    desktop.windows.clear();
    settle();
    bar.press("Show App Window");
    desktop.runFor(0.1);
    desktop.windows = {{4, false}};
    EXPECT_EQ(loggedIn(0.3), "key 4\nfront 4");

    // One that comes and is closed at once stays closed.
    desktop.opensMainWindows = true;
    desktop.windows.clear();
    settle();
    bar.press("Show App Window");
    EXPECT_EQ(loggedIn(0.1), "activate\nopen main window\nkey 1\nfront 1\nactivate\nactivate");
    desktop.windows.clear();
    EXPECT_EQ(loggedIn(0.3), "");
}

} // namespace
