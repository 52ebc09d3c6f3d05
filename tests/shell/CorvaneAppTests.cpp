#include "core/StoreScene.h"
#include "foundation/Diagnostics.h"
#include "shell/CorvaneApp.h"

using namespace corvane;

namespace {

struct App : SceneTest {
    int posted = 0;
    std::string seenSearch;
};

TEST_F(App, aChangeOfTheStoreIsRelayedOnceEvenAfterASecondSetup) {
    CorvaneApp app(platform);
    const auto observer = platform.notificationCenter.addObserver("WorkspaceStoreDidChange", [&] {
        ++posted;
        seenSearch = app.workspaceStore().searchText;
    });
    EXPECT_EQ(app.appDelegate().workspaceStore, nullptr);
    app.setupApp();
    app.setupApp();
    EXPECT_EQ(app.appDelegate().workspaceStore, &app.workspaceStore());
    StoreState::set(app.workspaceStore().searchText, "mail");
    EXPECT_EQ(posted, 0);
    desktop.runUntilIdle();
    EXPECT_EQ(posted, 1);
    EXPECT_EQ(seenSearch, "mail");
}

TEST_F(App, theStoreIsReadyBeforePermissionIsAskedAndADenialChangesNothing) {
    desktop.notificationsAreDenied = true;
    desktop.files.contents[workspacesPath] = "broken";
    CorvaneApp app(platform);
    EXPECT_EQ(desktop.logged(), "request authorization");
    EXPECT_EQ(app.workspaceStore().workspaces->size(), 3u);
    desktop.runUntilIdle();
    EXPECT_EQ(desktop.logged(), "request authorization\nalert Workspaces File Not Readable");
    EXPECT_EQ(desktop.files.contents.size(), 2u) << "the broken one is kept beside the new one";
}

TEST_F(App, reopenBringsTheFirstWindowThatIsNoSheetForward) {
    CorvaneApp app(platform);
    app.setupApp();
    const std::tuple<std::vector<ApplicationWindow>, bool, bool, const char*> cases[]{
        {{{1, false}}, true, true, ""},
        {{}, false, true, ""},
        {{{1, true}}, false, true, ""},
        {{{1, true}, {2, false}, {3, false}}, false, false, "key 2\nfront 2"}};
    for (const auto& [windows, visible, result, log] : cases) {
        desktop.windows = windows;
        desktop.log.clear();
        EXPECT_EQ(app.appDelegate().applicationShouldHandleReopen(visible), result);
        EXPECT_EQ(desktop.logged(), log);
    }
    desktop.windows.clear();
    desktop.log.clear();
    platform.notificationCenter.post("createNewWindow");
    EXPECT_EQ(desktop.logged(), "open main window");
    desktop.windows = {{2, false}};
    platform.notificationCenter.post("createNewWindow");
    EXPECT_EQ(desktop.logged(), "open main window\nkey 2\nfront 2");
    EXPECT_FALSE(app.appDelegate().applicationShouldTerminateAfterLastWindowClosed());
}

TEST_F(App, theTourComesASecondAfterAStartUntilItWasTaken) {
    CorvaneApp app(platform);
    app.setupApp();
    desktop.runFor(0.99);
    EXPECT_EQ(desktop.logged("open window"), "");
    desktop.runFor(0.02);
    EXPECT_EQ(desktop.logged("open window"), "open window Welcome to Corvane 600x500 at 0,0");
    app.setupApp();
    desktop.runFor(2);
    EXPECT_EQ(desktop.logged("key"), "key 1");

    app.appDelegate().applicationDidFinishLaunching();
    for (const char* log : {"open window Welcome to Corvane 600x500 at 0,0", "key 2"}) {
        desktop.log.clear();
        ASSERT_TRUE(desktop.statusBar.press("Help & Tips"));
        EXPECT_EQ(desktop.logged(), log);
    }
    EXPECT_FALSE(hasCompletedOnboarding(platform.userDefaults));
    desktop.windowWillClose();
    EXPECT_EQ(desktop.defaults.at("HasCompletedOnboarding"), PropertyList{true});
    desktop.log.clear();
    app.setupApp();
    desktop.runFor(2);
    EXPECT_EQ(desktop.logged(), "");
}

TEST_F(App, theEndOfTheProgramSavesTheLayoutsOfRunningWorkspacesInListOrder) {
    std::string saved;
    setDiagnosticSink([&](const std::string& line) {
        const std::string_view noWindows = "No windows found to save for workspace ";
        if (line.starts_with(noWindows)) saved += line.substr(noWindows.size());
    });
    const std::tuple<bool, bool, bool, const char*> cases[]{
        {false, true, true, ""},
        {true, false, true, ""},
        {true, true, false, ""},
        {true, true, true, "'Personal''Creative'"}};
    for (const auto& [isSetUp, autoSaves, enabled, expected] : cases) {
        CorvaneApp app(platform);
        auto& store = app.workspaceStore();
        StoreState::set(store.runningWorkspaces,
                        {store.workspaces->at(2).id, store.workspaces->at(0).id});
        store.autoSaveLayouts = autoSaves;
        store.enableAccessibilityFeatures = enabled;
        if (isSetUp) app.setupApp();
        app.appDelegate().applicationWillTerminate();
        EXPECT_EQ(saved, expected);
        desktop.runFor(0.5);
    }
    EXPECT_EQ(desktop.logged("alert"), "alert No Windows Found\nalert No Windows Found");
    setDiagnosticSink({});
}

TEST_F(App, theEndSavesWhatCouldNotBeSavedBefore) {
    CorvaneApp app(platform);
    app.setupApp();
    desktop.files.unwritable = {workspacesPath};
    app.workspaceStore().deleteWorkspace(app.workspaceStore().workspaces->at(1).id);
    app.appDelegate().applicationWillTerminate();
    EXPECT_EQ(described(scene.fileContent()), "Personal() Work() Creative()");
    desktop.files.unwritable.clear();
    app.appDelegate().applicationWillTerminate();
    EXPECT_EQ(described(scene.fileContent()), "Personal() Creative()");
}

TEST_F(App, whatAnEditorPutInAPlaceIsFollowedAfterTheFinishAndTheEnd) {
    for (const bool finishes : {true, false}) {
        desktop.files.contents["/plan.md"] = "plan";
        CorvaneApp app(platform);
        app.setupApp();
        auto& store = app.workspaceStore();
        auto work = store.workspaces->front();
        store.addResource(makeResource("Plan", "/plan.md", ResourceType::file, platform.bundles),
                          work.id);
        work = store.workspaces->front();
        store.startWorkspace(work);
        ASSERT_TRUE(desktop.files.removeItem("/plan.md"));
        desktop.files.contents["/plan.md"] = "edited";
        if (finishes)
            store.finishWorkspace(work);
        else
            app.appDelegate().applicationWillTerminate();
        ASSERT_TRUE(desktop.files.moveItem("/plan.md", "/done.md"));
        EXPECT_EQ(app.bookmarks().resolveResource("/plan.md", ResourceType::file),
                  Url::fromPath("/done.md"));
        ASSERT_TRUE(desktop.files.removeItem("/done.md"));
    }
}

TEST_F(App, preferencesThatCannotBeReadAreKeptAndToldOfWithNoTourForWhoHadThem) {
    desktop.defaultsAreUnreadable = true;
    CorvaneApp app(platform);
    app.setupApp();
    platform.userDefaults.onKeptAside("/old.plist", "It holds something else.");
    platform.userDefaults.onKeptAside("/other.plist", "");
    desktop.runFor(5);
    EXPECT_EQ(desktop.logged(), "request authorization\nalert Preferences Kept Aside\n"
                                "alert Preferences Kept Aside");
    const std::string kept =
        "\n\nThat file was kept, and Corvane goes on with the preferences that "
        "it shows. The other ones are at:\n\n";
    EXPECT_EQ(desktop.shownAlerts[0].message,
              "The preferences can't be read: It holds something else." + kept + "/old.plist");
    EXPECT_EQ(desktop.shownAlerts[1].message,
              "Another program changed the preferences." + kept + "/other.plist");
    EXPECT_EQ(desktop.shownAlerts[1].buttons, std::vector<std::string>{"OK"});
}

} // namespace
