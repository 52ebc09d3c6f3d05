#include "core/StoreScene.h"
#include "shell/CorvaneApp.h"

using namespace corvane;

namespace {

using App = SceneTest;

TEST_F(App, reopenBringsTheFirstWindowThatIsNoSheetForward) {
    CorvaneApp app(platform);
    app.setupApp();
    const std::tuple<std::vector<ApplicationWindow>, bool, bool, const char*> cases[]{
        {{{1, false}}, true, true, ""},
        {{{1, true}}, false, true, ""},
        {{{1, true}, {2, false}, {3, false}}, false, false, "key 2\nfront 2"}};
    for (const auto& [windows, visible, result, log] : cases) {
        desktop.windows = windows;
        desktop.log.clear();
        EXPECT_EQ(app.appDelegate().applicationShouldHandleReopen(visible), result);
        EXPECT_EQ(desktop.logged(), log);
    }
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

    EXPECT_FALSE(hasCompletedOnboarding(platform.userDefaults));
    desktop.windowWillClose();
    EXPECT_EQ(desktop.defaults.at("HasCompletedOnboarding"), PropertyList{true});
    desktop.log.clear();
    app.setupApp();
    desktop.runFor(2);
    EXPECT_EQ(desktop.logged(), "");
}

TEST_F(App, theEndOfTheProgramSavesTheLayoutsOfRunningWorkspaces) {
    const std::tuple<bool, bool, bool, const char*> cases[]{
        {false, true, true, ""},
        {true, false, true, ""},
        {true, true, false, ""},
        {true, true, true, "alert No Windows Found\nalert No Windows Found"}};
    for (const auto& [isSetUp, autoSaves, enabled, expected] : cases) {
        CorvaneApp app(platform);
        auto& store = app.workspaceStore();
        StoreState::set(store.runningWorkspaces,
                        {store.workspaces->at(2).id, store.workspaces->at(0).id});
        store.autoSaveLayouts = autoSaves;
        store.enableAccessibilityFeatures = enabled;
        if (isSetUp) app.setupApp();
        app.appDelegate().applicationWillTerminate();
        desktop.runFor(0.5);
        EXPECT_EQ(desktop.logged("alert"), expected);
    }
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
        store.addResource(scene.resource("Plan", "/plan.md"), store.workspaces->front().id);
        const auto work = store.workspaces->front();
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
    desktop.notificationsAreDenied = true;
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
    EXPECT_EQ(scene.alerts(),
              "Preferences Kept Aside | The preferences can't be read: It holds something else." +
                  kept +
                  "/old.plist [OK]\nPreferences Kept Aside | Another program changed the "
                  "preferences." +
                  kept + "/other.plist [OK]");
}

} // namespace
