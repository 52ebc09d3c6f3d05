#include "core/StoreScene.h"

using namespace corvane;

namespace {

struct Store : SceneTest {
    Workspace first =
        scene.workspace("First", {scene.resource("a"), scene.resource("b"), scene.resource("c")});
    Workspace second = scene.workspace("Second", {scene.resource("d")});

    WorkspaceStore& start() { return scene.start({first, second}); }
    /// The list with what counts as modified, the active workspace, and how much runs.
    static std::string state(const WorkspaceStore& store) {
        auto text = described(store.workspaces);
        for (const auto& workspace : *store.workspaces) {
            if (workspace.dateModified.seconds != 700000000) text += " modified " + workspace.name;
        }
        std::size_t resources = 0;
        for (const auto& [id, running] : *store.runningResources)
            resources += running.size();
        const auto& active = store.activeWorkspace.get();
        return text + "; " + (active ? described({*active}) : "none") + "; " +
               std::to_string(store.runningWorkspaces->size()) + " run with " +
               std::to_string(resources) + " in " + std::to_string(store.runningResources->size());
    }
};

TEST_F(Store, anEmptyStoreGetsThreeWorkspaces) {
    auto& store = scene.start();
    std::string made;
    for (const auto& workspace : *store.workspaces) {
        made += workspace.name + "|" + workspace.description + "|" + workspace.icon + " ";
        EXPECT_EQ(workspace.dateCreated, SimulatedQueue::start);
    }
    EXPECT_EQ(made, "Personal||person Work||briefcase Creative||sparkles ");
    EXPECT_EQ(store.activeWorkspace.get()->name, "Personal");
    EXPECT_EQ(scene.fileContent(), *store.workspaces);
    EXPECT_EQ(scene.saves(), 1);
}

TEST_F(Store, oldSampleDescriptionsAreClearedWithOneSave) {
    first.description = "iOS and Android applications";
    second.description = "UI/UX design and creative workspaces";
    auto third = scene.workspace("Third");
    third.description = "Frontend and backend workspaces";
    auto other = scene.workspace("Other");
    other.description = "Frontend and backend workspaces.";
    auto& store = scene.start({first, second, third, other});
    first.description = second.description = third.description = "";
    EXPECT_EQ(*store.workspaces, (std::vector{first, second, third, other}));
    EXPECT_EQ(scene.saves(), 1);
}

TEST_F(Store, eachEditChangesTheListOnceAndSavesIt) {
    const Uuid unknown = Uuid::random();
    const Uuid f = first.id;
    const Uuid d = second.resources[0].id;
    const auto id = [&](std::size_t index) { return first.resources[index].id; };
    const auto* const same = "First(a b c) Second(d)";
    auto other = second, edited = first;
    other.name = "Other";
    edited.name = "Edited";
    const struct {
        const char* name;
        std::function<void(WorkspaceStore&)> edit;
        std::string expected;
        int saves, firings;
        std::string rest = "First(a b c); 2 run with 3 in 2";
    } cases[]{
        {"add", [&](auto& s) { s.addWorkspace(scene.workspace("Third")); },
         "First(a b c) Second(d) Third()", 1, 1},
        {"update", [&](auto& s) { s.updateWorkspace(other); }, "First(a b c) Other(d)", 1, 1},
        {"update the active one, on a later turn", [&](auto& s) { s.updateWorkspace(edited); },
         "Edited(a b c) Second(d)", 1, 1, "Edited(a b c); 2 run with 3 in 2"},
        {"update unknown", [&](auto& s) { s.updateWorkspace(scene.workspace("Ghost")); }, same, 0,
         0},
        {"delete", [&](auto& s) { s.deleteWorkspace(second.id); }, "First(a b c)", 1, 1},
        {"delete by a reference into the list",
         [&](auto& s) { s.deleteWorkspace(s.workspaces->front().id); }, "Second(d)", 1, 2,
         "Second(d); 2 run with 3 in 2"},
        {"delete all",
         [&](auto& s) {
             s.deleteWorkspace(f);
             s.deleteWorkspace(second.id);
         },
         "", 2, 4, "none; 2 run with 3 in 2"},
        {"delete unknown", [&](auto& s) { s.deleteWorkspace(unknown); }, same, 1, 1},
        {"duplicate", [&](auto& s) { s.duplicateWorkspace(second); },
         "First(a b c) Second(d) Second Copy(d) modified Second Copy", 1, 1},
        {"add resource", [&](auto& s) { s.addResource(scene.resource("x"), f); },
         "First(a b c x) Second(d)", 1, 1},
        {"add resource to unknown", [&](auto& s) { s.addResource(scene.resource("x"), unknown); },
         same, 0, 0},
        {"remove resource", [&](auto& s) { s.removeResource(id(2), f); }, "First(a b) Second(d)", 1,
         2},
        {"remove the only one that runs", [&](auto& s) { s.removeResource(d, second.id); },
         "First(a b c) Second()", 1, 2, "First(a b c); 2 run with 2 in 2"},
        {"remove by a reference into the list",
         [&](auto& s) {
             s.removeResource(s.workspaces->front().resources[0].id, s.workspaces->front().id);
         },
         "First(b c) Second(d)", 1, 2, "First(a b c); 2 run with 2 in 2"},
        {"remove from the wrong workspace", [&](auto& s) { s.removeResource(id(1), second.id); },
         same, 0, 0},
        {"move down", [&](auto& s) { s.moveResource(0, 2, f); }, "First(b c a) Second(d)", 1, 1},
        {"move up", [&](auto& s) { s.moveResource(2, 0, f); }, "First(c a b) Second(d)", 1, 1},
        {"move nowhere", [&](auto& s) { s.moveResource(0, 3, f); }, same, 0, 0},
        {"move nothing", [&](auto& s) { s.moveResource(3, 0, f); }, same, 0, 0},
        {"move in unknown", [&](auto& s) { s.moveResource(0, 0, unknown); }, same, 0, 0},
        {"rename", [&](auto& s) { s.renameResource(id(0), " z ", f); }, "First( z  b c) Second(d)",
         1, 1},
        {"rename unknown", [&](auto& s) { s.renameResource(unknown, "z", f); }, same, 0, 0},
        {"toggle one once, another twice",
         [&](auto& s) {
             for (const auto index : {0, 1, 1})
                 s.toggleResourceEnabled(id(index), f);
         },
         "First(a- b c) Second(d)", 3, 3},
        {"add and remove apps by a reference into the list",
         [&](auto& s) {
             for (const auto* name : {"Pad", "Web", "Pad"})
                 s.addAssociatedApp(d, name, second.id);
             s.removeAssociatedApp(d, s.workspaces->at(1).resources[0].associatedApps[0],
                                   second.id);
         },
         "First(a b c) Second(d{Web,Pad})", 4, 4},
        {"remove an app that isn't there", [&](auto& s) { s.removeAssociatedApp(id(0), "Pad", f); },
         same, 0, 0},
        {"search", [&](auto& s) { StoreState::set(s.searchText, "x"); }, same, 0, 1}};
    for (const auto& [name, edit, expected, saves, firings, rest] : cases) {
        auto& store = start();
        StoreState::set(store.runningWorkspaces, {first.id, second.id});
        StoreState::set(store.runningResources, {{f, {id(0), id(1)}}, {second.id, {d}}});
        const int savesBefore = scene.saves();
        int fired = 0;
        const auto subscription = store.objectWillChange.subscribe([&] { ++fired; });
        edit(store);
        EXPECT_EQ(scene.saves() - savesBefore, saves) << name;
        EXPECT_EQ(fired, firings) << name;
        desktop.runUntilIdle();
        EXPECT_EQ(state(store), expected + "; " + rest) << name;
        EXPECT_EQ(scene.fileContent(), *store.workspaces) << name;
    }
}

TEST_F(Store, ofTwoRecordsWithOneIdentifierEditsReachTheFirstAndADeleteBoth) {
    auto twin = first;
    twin.name = "Twin";
    auto& store = scene.start({first, twin, second});
    store.renameResource(first.resources[0].id, "renamed", first.id);
    auto edited = first;
    edited.resources.clear();
    store.updateWorkspace(edited);
    EXPECT_EQ(described(store.workspaces), "First() Twin(a b c) Second(d)");
    store.deleteWorkspace(first.id);
    EXPECT_EQ(described(store.workspaces), "Second(d)");
}

TEST_F(Store, aDuplicateHasAnIdentityAndDatesOfItsOwnAndKeepsTheRest) {
    first.hasLayoutSaved = true;
    first.savedWindowLayouts = {SavedWindowLayout()};
    auto& store = start();
    desktop.runFor(60);
    store.duplicateWorkspace(first);
    auto copy = store.workspaces->back();
    EXPECT_NE(copy.id, first.id);
    EXPECT_EQ(copy.dateCreated.seconds, SimulatedQueue::start.seconds + 60);
    EXPECT_EQ(copy.dateModified, copy.dateCreated);
    copy.id = first.id;
    copy.name = first.name;
    copy.dateCreated = copy.dateModified = first.dateCreated;
    EXPECT_EQ(copy, first);
}

TEST_F(Store, aResourceOfAURLHasItsTypeAndNameFromTheURL) {
    const std::tuple<std::string, std::string, ResourceType> cases[]{
        {"/Applications/My Pad.app/", "My Pad", ResourceType::application},
        {"/home/me/plan.v2.md", "plan.v2.md", ResourceType::file},
        {"/home/me/Projects/", "Projects", ResourceType::folder},
        {"/home/me/Projects", "Projects", ResourceType::file},
        {"/home/me/site.d/", "site.d", ResourceType::file},
        {"/home/me/Shout.APP/", "Shout.APP", ResourceType::file},
        {"/home/me/.hidden/", ".hidden", ResourceType::folder}};
    for (const auto& [path, name, type] : cases) {
        auto& store = start();
        desktop.bookmarks.accesses.clear();
        desktop.bookmarks.inaccessible = {"/home/me/.hidden"};
        store.addResourceFromURL(Url::fromPath(path), second.id);
        const auto& added = store.workspaces->at(1).resources.back();
        const auto& accesses = desktop.bookmarks.accesses;
        if (name == ".hidden")
            EXPECT_TRUE(accesses.empty()) << "none was started, and so none ends";
        else
            EXPECT_EQ(accesses.at(added.path), 0) << "started, and stopped again";
        EXPECT_EQ(added.name, name);
        EXPECT_EQ(added.type, type) << path;
        EXPECT_EQ(added.path + (path.ends_with('/') ? "/" : ""), path);
    }
    auto& store = start();
    store.addResourceFromURL(Url::fromPath("/home/me/caf\xe9.txt"), second.id);
    desktop.runUntilIdle();
    EXPECT_EQ(described(store.workspaces), "First(a b c) Second(d)");
    EXPECT_EQ(scene.alerts(), "Name Not Supported | 'caf\uFFFD.txt' can't be added, since its path "
                              "isn't valid UTF-8 text. [OK] not a warning");
}

TEST_F(Store, aFirstStartStoresEveryKeyWithItsDefault) {
    scene.start();
    const std::map<std::string, PropertyList, std::less<>> expected{
        {"CorvaneAutoSaveLayouts", {false}},
        {"CorvaneBookmarkMigrationCompleted_v1", {true}},
        {"CorvaneEnableAccessibilityFeatures", {false}},
        {"CorvaneFocusMode", {false}},
        {"CorvaneFullscreenPriority", {std::string("first")}},
        {"CorvaneHasShownFullscreenAlert", {false}},
        {"CorvaneShowApplicationsClosedAlert", {true}},
        {"CorvaneShowLayoutSavedAlert", {true}},
        {"CorvaneShowLayoutsDisabledAlert", {true}},
        {"CorvaneShowWorkspaceClosedAlert", {true}}};
    EXPECT_EQ(desktop.defaults, expected);
}

TEST_F(Store, unusablePreferencesReadAsTheirDefaults) {
    desktop.defaults = {{"CorvaneFocusMode", {std::string("YES")}},
                        {"CorvaneAutoSaveLayouts", {PropertyList::Array{}}},
                        {"CorvaneEnableAccessibilityFeatures", {std::int64_t{1}}},
                        {"CorvaneFullscreenPriority", {std::string("sideways")}},
                        {"CorvaneShowLayoutSavedAlert", {std::string("no")}},
                        {"CorvaneShowWorkspaceClosedAlert", {Bytes{0}}},
                        {"CorvaneShowLayoutsDisabledAlert", {false}}};
    auto& store = start();
    EXPECT_TRUE(store.focusMode && !store.autoSaveLayouts && store.enableAccessibilityFeatures);
    EXPECT_EQ(store.fullscreenPriority.get(), "sideways");
    EXPECT_TRUE(store.showLayoutSavedAlert && store.showWorkspaceClosedAlert);
    EXPECT_FALSE(store.showLayoutsDisabledAlert);
}

TEST_F(Store, theCheckboxOfADismissibleAlertClearsItsFlagUntilAllAreReset) {
    start().hasShownFullscreenLimitationAlert = true;
    for (const bool checked : {false, true}) {
        desktop.alertAnswers["Title"] = {AlertResponse::firstButton, checked};
        scene.store->showDismissibleAlert("Title", "Text", DismissibleAlertType::layoutSaved);
        EXPECT_TRUE(desktop.shownAlerts.empty()) << "shown on a later turn";
        EXPECT_EQ(scene.told(), "Title | Text [OK] not a warning (Don't show this message again)");
        EXPECT_EQ(start().showLayoutSavedAlert.get(), !checked);
    }
    scene.store->resetConfirmations();
    EXPECT_TRUE(start().showLayoutSavedAlert && scene.store->hasShownFullscreenLimitationAlert);
}

TEST_F(Store, preferencesAreForgottenOnlyAfterAYesAndTheRunningStoreKeepsThem) {
    desktop.defaults = {{"HasCompletedOnboarding", {true}}, {"CorvaneFocusMode", {true}}};
    auto& store = start();
    const auto before = desktop.defaults;
    for (const int no : {AlertResponse::secondButton, 0}) {
        desktop.alertAnswers["Reset Preferences"] = {no, false};
        store.resetPreferences();
        EXPECT_EQ(desktop.defaults, before);
    }
    desktop.alertAnswers.clear();
    desktop.shownAlerts.clear();
    store.resetPreferences();
    EXPECT_EQ(
        scene.alerts(),
        "Reset Preferences | Are you sure you want to reset all preferences to default "
        "values? This cannot be undone. [Reset][Cancel]\nPreferences Reset | Preferences have "
        "been reset to defaults. Please restart the app. [OK] not a warning");
    EXPECT_TRUE(desktop.defaults.empty() && store.focusMode);
    store.fullscreenPriority = std::string("last");
    EXPECT_EQ(desktop.defaults.size(), 1u) << "only the key that was set since";
    auto& again = start();
    EXPECT_FALSE(again.focusMode);
    EXPECT_EQ(again.fullscreenPriority.get(), "last");
}

} // namespace
