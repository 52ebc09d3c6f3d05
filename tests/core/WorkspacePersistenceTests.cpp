#include "core/StoreScene.h"

using namespace corvane;

namespace {

struct Persistence : SceneTest {
    WorkspacePersistence persistence{platform.fileSystem, platform.bundles, platform.mainQueue,
                                     platform.diskQueue,  platform.alerts,  platform.panels,
                                     platform.clock};

    std::string saves(const std::string& name) {
        const auto saved = persistence.saveWorkspaces({scene.workspace(name)});
        return (saved ? "" : "failed; ") + scene.told();
    }
    /// What was kept aside.
    const std::string kept = storeFolder + "/corvane_workspaces.unreadable-2026-01-01T12-00-00";
    const std::string& contentOf(const std::string& path) {
        return desktop.files.contents.at(path);
    }
};

TEST_F(Persistence, aFirstLoadTouchesNothing) {
    EXPECT_TRUE(persistence.loadWorkspaces().empty());
    EXPECT_TRUE(desktop.files.contents.empty() && desktop.files.directories.empty());
    (void)persistence.saveWorkspaces({});
    EXPECT_EQ(contentOf(workspacesPath), "[]");
}

TEST_F(Persistence, aNameThatIsNoTextIsToldAndTheFileStaysAsItIs) {
    EXPECT_EQ(saves("A"), "");
    EXPECT_TRUE(saves("a\xff").starts_with("failed; Workspaces Can't Be Saved | "));
    EXPECT_EQ(described(scene.fileContent()), "A()");
}

TEST_F(Persistence, anOldFileThatCannotBeRemovedIsReadOnceAndStays) {
    const auto old = encodeWorkspaces({scene.workspace("Old")});
    desktop.files.contents[legacyPath] = old;
    desktop.files.unremovable = {legacyPath};
    EXPECT_EQ(described(persistence.loadWorkspaces()), "Old()");
    EXPECT_EQ(scene.told(), "");
    desktop.files.unremovable.clear();
    scene.writeFile({});
    EXPECT_TRUE(persistence.loadWorkspaces().empty());
    EXPECT_EQ(contentOf(legacyPath), old);
}

TEST_F(Persistence, anUnreadableFileIsKeptAsideBeforeTheFirstSaveAndOneAlertNamesIt) {
    desktop.files.contents[workspacesPath] = "[{\"id\":";
    EXPECT_TRUE(persistence.loadWorkspaces().empty());
    desktop.runUntilIdle();
    EXPECT_TRUE(desktop.shownAlerts.empty()) << "nothing has happened to the file yet";
    EXPECT_EQ(saves("New"),
              "Workspaces File Not Readable | The workspaces file can't be read: workspaces: not "
              "valid JSON (Invalid value.) at line 1, column 8\n\nIt was kept, and Corvane goes on "
              "with a new file. The old one is at:\n\n" +
                  kept + ".json [OK]");
    EXPECT_EQ(saves("New"), "");
    EXPECT_EQ(contentOf(kept + ".json"), "[{\"id\":");
    EXPECT_EQ(described(scene.fileContent()), "New()");

    // A second one in the same second finds a name of its own; a folder is kept aside too.
    desktop.files.contents[workspacesPath] = "second";
    persistence.loadWorkspaces();
    saves("New");
    EXPECT_EQ(contentOf(kept + " 2.json"), "second");
    desktop.files.contents.erase(workspacesPath);
    desktop.files.contents[workspacesPath + "/inside.txt"] = "x";
    EXPECT_TRUE(persistence.loadWorkspaces().empty());
    saves("New");
    EXPECT_EQ(contentOf(kept + " 3.json/inside.txt"), "x");
}

TEST_F(Persistence, aFileThatCanNeitherBeReadNorMovedIsNeverWrittenOver) {
    desktop.files.contents[workspacesPath] = "precious";
    desktop.files.unreadable = desktop.files.unremovable = {workspacesPath};
    EXPECT_TRUE(persistence.loadWorkspaces().empty());
    EXPECT_TRUE(saves("A").starts_with("failed; Workspaces Can't Be Saved | "));
    EXPECT_EQ(saves("B"), "failed; ") << "told once";
    EXPECT_EQ(contentOf(workspacesPath), "precious");
    desktop.files.unremovable.clear();
    saves("C");
    desktop.files.unreadable.clear();
    EXPECT_EQ(described(scene.fileContent()), "C()");
    EXPECT_EQ(contentOf(kept + ".json"), "precious");
}

TEST_F(Persistence, aFileThatCanNotBeReachedIsNeverTakenForMissing) {
    const auto precious = encodeWorkspaces({scene.workspace("Precious")});
    desktop.files.contents[workspacesPath] = precious;
    desktop.files.contents[legacyPath] = encodeWorkspaces({scene.workspace("Old")});
    desktop.files.failingLooks[workspacesPath] = 1;
    persistence.loadWorkspaces();
    EXPECT_EQ(contentOf(workspacesPath), precious);
    EXPECT_TRUE(desktop.files.exists(legacyPath));
    desktop.files.unreachable = {storeFolder};
    EXPECT_TRUE(persistence.loadWorkspaces().empty());
    EXPECT_EQ(
        saves("A"),
        "failed; Workspaces Can't Be Saved | “" + workspacesPath +
            "” can't be reached: permission denied.\n\nYour changes are kept while Corvane "
            "runs. The next change tries again, a press on the sign in the header and the end "
            "of Corvane too. [OK]");
    EXPECT_EQ(saves("B"), "failed; ") << "told once";

    desktop.files.unreachable.clear();
    EXPECT_NE(saves("C").find("Workspaces File Not Readable"), std::string::npos);
    EXPECT_EQ(described(scene.fileContent()), "C()");
    EXPECT_EQ(contentOf(kept + ".json"), precious);
}

TEST_F(Persistence, aFileOfAnotherProgramIsKeptAside) {
    scene.writeFile({scene.workspace("A")});
    persistence.loadWorkspaces();
    EXPECT_EQ(saves("B"), "");
    EXPECT_EQ(saves("C"), "");
    desktop.files.contents[workspacesPath] = "theirs";
    const auto theirs = text::replacingAll(kept, "unreadable", "changed") + ".json";
    EXPECT_EQ(
        saves("D"),
        "Workspaces File Changed | Another program changed the workspaces file.\n\nThat one was kept, "
        "and Corvane goes on with the workspaces that it shows. The other one is at:\n\n" +
            theirs + " [OK]");
    EXPECT_EQ(contentOf(theirs), "theirs");
    EXPECT_EQ(described(scene.fileContent()), "D()");
    desktop.files.contents.erase(workspacesPath);
    EXPECT_EQ(saves("E"), "") << "one that was deleted is written anew";
}

TEST_F(Persistence, whatStandsInTheFolderIsClosedToOthers) {
    scene.writeFile({});
    desktop.files.contents[bookmarkCachePath] = "x";
    persistence.loadWorkspaces();
    EXPECT_EQ(desktop.files.privateItems,
              (std::set<std::string>{storeFolder, bookmarkCachePath, workspacesPath}));
}

TEST_F(Persistence, anOldFileThatCouldNotBeMovedIsTriedAgainUntilSomethingIsSaved) {
    desktop.files.contents[legacyPath] = encodeWorkspaces({scene.workspace("Old")});
    desktop.files.unreadable = {legacyPath};
    EXPECT_EQ(described(scene.start().workspaces), "Personal() Work() Creative()");
    EXPECT_EQ(scene.saves(), 0);
    scene.start();
    scene.store->duplicateWorkspace(scene.store->workspaces->front());
    scene.store->duplicateWorkspace(scene.store->workspaces->front());
    desktop.runUntilIdle();
    EXPECT_EQ(scene.saves(), 2);
    EXPECT_EQ(scene.told(),
              "Old Workspaces Not Moved | There are workspaces of an earlier version that can't be "
              "moved here: “" +
                  legacyPath +
                  "” can't be read: permission denied.\n\n"
                  "They stay as they are, and can be imported in the settings:\n\n" +
                  legacyPath + " [OK]");

    desktop.files = {};
    desktop.files.contents[legacyPath] = encodeWorkspaces({scene.workspace("Old")});
    desktop.files.unwritable = {storeFolder};
    scene.start();
    EXPECT_EQ(scene.told(), "");
    desktop.files.unwritable.clear();
    EXPECT_EQ(described(scene.start().workspaces), "Old()");
}

TEST_F(Persistence, ofTheCopiesTenAreKept) {
    const auto folder = persistence.copiesDirectory();
    desktop.files.contents[folder + "/mine.json"] = "x";
    for (int i = 0; i < 12; ++i) {
        persistence.keepCopy({scene.workspace(std::to_string(i))});
        desktop.runFor(i == 3 ? 0 : 1);
    }
    const auto names = desktop.files.namesIn(folder);
    EXPECT_EQ(names.size(), 11u) << "the user's own among them";
    EXPECT_EQ(names[0], "corvane_workspaces-2026-01-01T12-00-02.json");
    EXPECT_EQ(names[1], "corvane_workspaces-2026-01-01T12-00-03 2.json");
    EXPECT_EQ(names[10], "mine.json");
    desktop.files.unwritable = {folder};
    persistence.keepCopy({});
    EXPECT_EQ(scene.told(), "No Copy Kept | No copy of the workspaces could be kept: “" + folder +
                                "” can't be made: permission denied. [OK]");
    const auto file = folder + "/corvane_workspaces-2026-01-01T12-00-11.json";
    desktop.files.unwritable = {file};
    persistence.keepCopy({});
    EXPECT_EQ(scene.told(), "No Copy Kept | No copy of the workspaces could be kept: “" + file +
                                "” can't be written: permission denied. [OK]");
    persistence.keepCopy({scene.workspace("caf\xe9")});
    EXPECT_EQ(scene.told(), "No Copy Kept | No copy of the workspaces could be kept: a text that "
                            "isn't UTF-8 can't be saved [OK]");
}

TEST_F(Persistence, aSlowDiskHoldsNothingUpAndTheNewestListComesLast) {
    auto& store = scene.start({scene.workspace("A")});
    desktop.queue.diskDelay = 1;
    for (const char* name : {"B", "C", "D"})
        store.addWorkspace(scene.workspace(name));
    EXPECT_EQ(described(scene.fileContent()), "A()");
    desktop.files.unwritable = {workspacesPath};
    desktop.runFor(1);
    EXPECT_NE(*store.savingProblem, "") << "told when it is known";
    desktop.files.unwritable.clear();
    desktop.queue.diskDelay = 0;
    store.addWorkspace(scene.workspace("E"));
    EXPECT_EQ(scene.saves(), 0) << "those before it are still under way";
    desktop.runFor(5);
    EXPECT_EQ(described(scene.fileContent()), "A() B() C() D() E()");
    EXPECT_EQ(scene.saves(), 1) << "one content overtook the others";
    EXPECT_EQ(*store.savingProblem, "");
    desktop.files.contents[workspacesPath] = "theirs";
    desktop.queue.diskDelay = 1;
    store.addWorkspace(scene.workspace("F"));
    desktop.runFor(1);
    EXPECT_EQ(desktop.shownAlerts.back().title, "Workspaces File Changed");
}

TEST_F(Persistence, aSaveThatFailsLeavesTheFile) {
    scene.writeFile({scene.workspace("A")});
    persistence.loadWorkspaces();
    desktop.files.unwritable = {workspacesPath};
    EXPECT_NE(saves("B"), "failed; ");
    desktop.files.unwritable.clear();
    const auto* noText = "not text \xc3";
    EXPECT_EQ(saves(noText), "failed; ") << "told already";
    EXPECT_EQ(described(scene.fileContent()), "A()");
    EXPECT_EQ(saves("B"), "");
    EXPECT_NE(saves(noText), "failed; ") << "again after a save that came through";
    EXPECT_EQ(described(scene.fileContent()), "B()");
}

TEST(Migrations, ofAVeryOldFileAllRunInOrderAtOneStartAndNeverAgain) {
    StoreScene scene;
    auto& desktop = scene.desktop;
    desktop.files.contents["/plan.txt"] = "";
    desktop.files.identityOf("/plan.txt");
    auto old = scene.workspace(
        "Old", {scene.resource("plan", "/plan.txt"),
                scene.resource("pad", "/Applications/Pad.app", ResourceType::application)});
    old.description = "iOS and Android applications";
    desktop.files.contents[legacyPath] =
        text::replacingAll(encodeWorkspaces({old}), R"("path":"/plan.txt")",
                           R"("path":"\/plan.txt","bookmarkData":"Ym9va21hcmsgMA==")");
    // Installed after the file was written, which so doesn't know its identifier.
    desktop.install({.path = "/Applications/Pad.app", .bundleIdentifier = "org.pad"});

    scene.start();
    old.description.clear();
    old.resources[1].bundleIdentifier = "org.pad";
    EXPECT_EQ(scene.fileContent(), std::vector{old});
    EXPECT_FALSE(desktop.files.exists(legacyPath));
    EXPECT_EQ(desktop.defaults.at("CorvaneBookmarkMigrationCompleted_v1"), PropertyList{true});
    EXPECT_EQ(desktop.logged(), "");
    desktop.runUntilIdle();
    EXPECT_EQ(scene.alerts(), "Workspaces Migrated | Your Corvane workspaces have been moved to a "
                              "safer location in Application Support for better data protection. "
                              "[OK] not a warning");
    EXPECT_EQ(scene.saves(), 3) << "moved, without the description, without the bookmark";
    EXPECT_EQ(scene.bookmarks->bookmarkCache().size(), 1u);
    scene.start();
    desktop.runUntilIdle();
    EXPECT_EQ(scene.saves(), 3);
    EXPECT_EQ(desktop.logged(), "alert Workspaces Migrated");
}

} // namespace
