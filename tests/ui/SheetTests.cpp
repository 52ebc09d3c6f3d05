#include "core/StoreScene.h"
#include "ui/AddResourceSheet.h"
#include "ui/OnboardingView.h"
#include "ui/SettingsSheet.h"
#include "ui/WorkspaceSheet.h"

#include <gtest/gtest.h>

namespace corvane {
namespace {

using enum ResourceType;

class Sheets : public testing::Test {
protected:
    StoreScene scene;
    SimulatedDesktop& desktop = scene.desktop;
    Workspace work = scene.workspace("Work", {scene.resource("note")});
    WorkspaceStore& store = scene.start({work});
    AddResourceSheet add{work.id,
                         store,
                         *scene.bookmarks,
                         scene.platform.panels,
                         scene.platform.bundles,
                         scene.platform.fileSystem};

    const std::vector<Resource>& resources() const { return store.workspaces->at(0).resources; }
};

TEST_F(Sheets, aNewWorkspaceComesLastAndOnlyWithAName) {
    const auto sheet = newSpaceSheet(store, scene.platform.clock);
    EXPECT_EQ(sheet->availableIcons().size(), 48u);
    EXPECT_FALSE(sheet->canCommit());
    sheet->commit();
    EXPECT_EQ(scene.saves(), 0);
    sheet->name = " ";
    sheet->description = "About";
    sheet->commit();
    ASSERT_EQ(described(store.workspaces), "Work(note)  ()");
    const auto& made = store.workspaces->back();
    EXPECT_EQ(made.icon, "laptopcomputer");
    EXPECT_EQ(made.description, "About");
    EXPECT_EQ(made.dateCreated, SimulatedQueue::start);
    EXPECT_EQ(made.dateModified, SimulatedQueue::start);
}

TEST_F(Sheets, anEditWritesBackTheRecordAsItWasOpened) {
    work.icon = "nothing.known";
    store.updateWorkspace(work);
    const auto sheet = editWorkspaceSheet(store.workspaces->front(), store, scene.platform.clock);
    EXPECT_EQ(sheet->availableIcons().size(), 60u);
    EXPECT_EQ(sheet->selectedIcon.get(), "nothing.known");
    store.addResource(scene.resource("late"), work.id);
    sheet->name = "Renamed";
    sheet->selectedIcon = "cube";
    sheet->commit();
    auto expected = work;
    expected.name = "Renamed";
    expected.icon = "cube";
    expected.dateModified = SimulatedQueue::start;
    EXPECT_EQ(store.workspaces->front(), expected);

    store.deleteWorkspace(work.id);
    sheet->commit();
    EXPECT_TRUE(store.workspaces->empty());
}

TEST_F(Sheets, anAddressIsValidByItsFirstDecidingRule) {
    const struct {
        const char* text;
        bool isValid;
    } cases[]{
        {"", false},
        {"localhost:3000", true},
        {"localhost: not even this", true},
        {"127.0.0.1:8080", true},
        {"127.0.0.1", true},
        {"https://", true},
        {"HTTP://site.test", true},
        {"ftp://host", true},
        {"file:///tmp", true},
        {"chrome://settings", false},
        {"mailto:a@b.test", true},
        {"word", false},
        {"site.test/a?b=1", true},
        {"site.test/a b", false},
        {"a.b<c", false},
    };
    for (const auto& [text, isValid] : cases) {
        EXPECT_EQ(AddResourceSheet::isValidURL(text), isValid) << text;
    }
}

TEST_F(Sheets, aTypedAddressNamesTheResourceOnce) {
    const struct {
        std::vector<std::string> typed;
        const char* name;
    } cases[]{
        {{"https://s", "https://si", "https://site.test"}, "s"},
        {{"https://site.test/page"}, "site.test"},
        {{"site.test"}, "site.test"},
        {{"localhost:3000"}, "localhost"},
        {{"word"}, ""},
        {{"file:///tmp/a"}, "file"},
        {{"https://"}, ""},
        {{"http:a"}, "http:a"},
        {{"http:a//"}, "http:a//"},
        {{"https://x//"}, "x"},
        {{"http:///x"}, "http:///x"},
    };
    for (const auto& [typed, name] : cases) {
        add.select(url);
        for (const auto& text : typed)
            add.setPath(text);
        EXPECT_EQ(add.resourceName.get(), name) << typed.back();
    }
    add.select(url);
    add.resourceName = "Mine";
    add.setPath("https://site.test");
    EXPECT_EQ(add.resourceName.get(), "Mine");
    add.select(url);
    EXPECT_EQ(add.resourceName.get() + "|" + add.resourcePath.get(), "|https://");
}

TEST_F(Sheets, aResourceIsAddedWithABookmarkWhereItsFileExists) {
    desktop.files.contents["/home/user/notes.txt"] = "text";
    add.pick();
    EXPECT_EQ(add.resourcePath.get(), "") << "the panel was cancelled";
    add.select(file);
    for (const auto* picked : {"/home/user/caf\xe9.txt", "/home/user/notes.txt"}) {
        EXPECT_EQ(add.resourcePath.get(), "") << "no path that can't be stored";
        desktop.panels.choices["File Path"] = picked;
        add.pick();
    }
    add.add();
    EXPECT_EQ(resources().back().name, "notes");
    EXPECT_EQ(scene.bookmarks->bookmarkCache().count("file:/home/user/notes.txt"), 1u);

    add.select(terminal);
    add.resourceName = "Run";
    add.setPath("make");
    add.add();
    EXPECT_EQ(resources().back().path, "make");
    EXPECT_EQ(scene.bookmarks->bookmarkCache().size(), 1u);
}

TEST_F(Sheets, aResourceIsChangedAndKeepsWhatTheSheetDoesNotShow) {
    add.select(terminal);
    add.resourceName = "Run";
    add.setPath("make");
    add.add();
    const auto before = resources().back();
    store.addAssociatedApp(before.id, "Quill", work.id);
    AddResourceSheet edit(work.id, store, *scene.bookmarks, scene.platform.panels,
                          scene.platform.bundles, scene.platform.fileSystem, RecordKey{before.id});
    EXPECT_EQ(std::string(edit.title()) + "|" + edit.resourceName.get() + "|" +
                  edit.resourcePath.get() + "|" + std::string(edit.addTitle()),
              "Edit Resource|Run|make|Save");
    edit.setPath("make all");
    edit.enabledByDefault = false;
    EXPECT_EQ(resources().back().path, "make");
    edit.add();
    auto expected = before;
    expected.path = "make all";
    expected.enabled = false;
    expected.associatedApps = {"Quill"};
    EXPECT_EQ(resources().back(), expected);
}

TEST_F(Sheets, theSettingsSayWhatDependsOnOtherThings) {
    SettingsSheet settings(store, scene.platform.bundles, scene.platform.applications,
                           scene.platform.mainQueue);
    EXPECT_EQ(settings.versionLine(), "Version 1.0.0 (Build 1)");
    EXPECT_EQ(settings.autoSaveSubtitle(), "Enable Window Layout Features to use auto-save");
    desktop.mainBundleInfo = {{"CFBundleShortVersionString", "2.5"}};
    EXPECT_EQ(settings.versionLine(), "Version 2.5 (Build 1)");
    desktop.defaultHandlers["mailto:"] = "/Applications/Postbox.app";
    settings.contactSupport();
    EXPECT_EQ(desktop.logged("open"),
              "open mailto:support@corvane.example?subject=Corvane%20Support%20Request&body="
              "App%20Version:%202.5%0ABuild:%20Unknown%0AmacOS%20Version:%20Simulated%201.0%0A%0A"
              "Please%20describe%20your%20issue:%0A");
}

TEST_F(Sheets, theTourGoesStepByStepAndEndsOnce) {
    std::string log;
    OnboardingView tour(
        store, desktop.platform().images, [&] { log += "completed "; },
        [&] { log += "dismissed "; });
    tour.previous();
    std::string shown;
    for (int i = 0; i < 6; ++i) {
        shown += tour.caption() + " " + std::string(tour.mainButtonTitle()) + " " +
                 std::string(tour.actionTitle()) + "|";
        if (tour.step().action) tour.pressAction();
        if (!tour.isLast()) tour.pressMainButton();
    }
    EXPECT_EQ(shown, "1 of 6 Next |2 of 6 Next |3 of 6 Next |4 of 6 Next |"
                     "5 of 6 Next Focus Mode: OFF|6 of 6 Get Started |");
    EXPECT_TRUE(store.focusMode);
    tour.previous();
    EXPECT_EQ(tour.actionTitle(), "Focus Mode: ON");
    EXPECT_EQ(log, "");
    tour.skip();
    EXPECT_EQ(log, "completed dismissed ");
}

} // namespace
} // namespace corvane
