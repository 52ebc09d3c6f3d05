#include "qt/Interface.h"

#include <QMimeData>
#include <QUrl>

#include <gtest/gtest.h>

namespace corvane {
namespace {

using enum ResourceType;

class ResourceViews : public testing::Test {
protected:
    Interface interface;

    ResourceViews() {
        auto& desktop = interface.desktop;
        desktop.files.contents = {
            {"/x/note.txt", ""}, {"/x/pad.desktop", ""}, {"/x/Pictures/a", ""}};
        desktop.install({.path = "/Applications/Pad.app", .launcher = "/x/pad.desktop"});
        desktop.panels.choices = {{"Choose Application", "/Applications/Pad.app"},
                                  {"File Path", "/x/note.txt"}};
    }
    /// Opens the card of a workspace with these resources.
    void open(const std::vector<std::pair<std::string, ResourceType>>& named) {
        auto work = makeWorkspace("Work", "", "star", {});
        for (const auto& [name, type] : named)
            work.resources.push_back(
                makeResource(name, "/x/" + name, type, interface.platform.bundles));
        interface.open({work});
        ASSERT_TRUE(interface.press("Resources"));
        interface.settle();
    }
    const std::vector<Resource>& resources() {
        return interface.store().workspaces->front().resources;
    }
    std::string stored() {
        std::string text;
        for (const auto& resource : resources())
            text += resource.name + ":" + std::string(rawValue(resource.type)) + " ";
        return text;
    }
};

TEST_F(ResourceViews, aRowHasWhatCanBeDoneWithItsResource) {
    open({{"note.txt", file}, {"Part", separator}, {"Pad.app", application}});
    EXPECT_EQ(interface.toolTipOf("FILE"), "/x/note.txt");
    EXPECT_TRUE(interface.press("Enabled - Resource will launch/quit with workspace", "note.txt"));
    EXPECT_TRUE(interface.shows("Disabled : Excluded from being opened/quit"));
    EXPECT_TRUE(interface.shows("Disabled - Resource will be ignored when workspace starts"));
    EXPECT_TRUE(interface.press("Launch note.txt"));
    EXPECT_TRUE(interface.press("Stop note.txt"));
    EXPECT_TRUE(interface.shows("Launch note.txt"));
    EXPECT_FALSE(interface.press("Add App", "Pad.app"));
    EXPECT_TRUE(interface.press("Add App", "note.txt"));
    EXPECT_TRUE(interface.press("Add App", "note.txt"));
    EXPECT_EQ(interface.desktop.logged("alert"), "alert Duplicate App");
    ASSERT_TRUE(interface.reach("Remove Pad"));
    interface.key(Qt::Key_Return);
    EXPECT_TRUE(resources()[0].associatedApps.empty());
    EXPECT_EQ(interface.focused(), "Add App") << "its neighbour";

    EXPECT_TRUE(interface.reach("Part"));
    interface.key(Qt::Key_Return);
    interface.key(Qt::Key_Delete);
    interface.key(Qt::Key_F, Qt::ControlModifier);
    interface.type("w");
    EXPECT_EQ(resources()[1].name, "Part") << "until it is submitted";
    ASSERT_TRUE(interface.reach("Section name"));
    interface.key(Qt::Key_Return);
    EXPECT_EQ(interface.focused(), "Section");
    EXPECT_EQ(resources()[1].name, "");
    interface.key(Qt::Key_Return);
    interface.type("x");
    interface.key(Qt::Key_Escape);
    EXPECT_EQ(interface.focused(), "Section") << "as it was";

    ASSERT_TRUE(interface.reach("Move"));
    for (int i = 0; i < 3; ++i)
        interface.key(Qt::Key_Up);
    EXPECT_EQ(stored(), "Pad.app:application note.txt:file :separator ");
    interface.key(Qt::Key_Down);
    EXPECT_EQ(stored(), "note.txt:file Pad.app:application :separator ");
    EXPECT_EQ(interface.act("Decrease", "Move", "Pad.app"), "SetFocus Increase Decrease");
    EXPECT_EQ(stored(), "Pad.app:application note.txt:file :separator ");
    interface.pressAtOnce("Remove", {"Pad.app", "note.txt"});
    EXPECT_EQ(stored(), ":separator ") << "neither is lost, nor another one taken";
    ASSERT_TRUE(interface.press("Remove"));
    EXPECT_TRUE(interface.shows("No resources yet"));
    EXPECT_TRUE(interface.press("Separator"));
    EXPECT_TRUE(interface.shows("Separator - click to rename"));
}

TEST_F(ResourceViews, aRowIsChangedByItsMenuAndLeavesTheKeyboardToItsNeighbour) {
    open({{"note.txt", file}, {"lost", file}, {"Pad.app", application}});
    EXPECT_TRUE(interface.shows("Not found: /x/lost"));
    EXPECT_FALSE(interface.shows("Not found: /x/note.txt"));
    interface.desktop.panels.choices["Locate lost"] = "/x/note.txt";
    EXPECT_EQ(interface.act("ShowMenu", "More", "lost"), "Press ShowMenu SetFocus");
    ASSERT_TRUE(interface.press("Locate…"));
    interface.runFor(0);
    EXPECT_FALSE(interface.shows("Not found: /x/lost"));
    EXPECT_EQ(resources()[1].path, "/x/note.txt");

    ASSERT_TRUE(interface.press("More", "note.txt"));
    ASSERT_TRUE(interface.press("Edit"));
    interface.runFor(0);
    EXPECT_TRUE(interface.shows("Edit Resource"));
    EXPECT_EQ(interface.focused(), "Enter a name for this resource");
    interface.key(Qt::Key_End);
    interface.type("!");
    ASSERT_TRUE(interface.press("Save"));
    EXPECT_EQ(stored(), "note.txt!:file lost:file Pad.app:application ");
    EXPECT_EQ(interface.focused(), "More") << "of the row";

    for (int i = 0; i < 2; ++i) {
        ASSERT_TRUE(interface.reach("Remove"));
        interface.hold(Qt::Key_Return);
        interface.runFor(0);
        EXPECT_EQ(interface.focused(), "Move");
    }
    EXPECT_EQ(stored(), "note.txt!:file ");
    EXPECT_TRUE(interface.shows("Removed 'Pad.app'"));
    interface.key(Qt::Key_Z, Qt::ControlModifier);
    ASSERT_TRUE(interface.press("Undo"));
    EXPECT_EQ(stored(), "note.txt!:file lost:file Pad.app:application ");
    ASSERT_TRUE(interface.press("Remove", "note.txt!"));
    interface.pressAgain();
    EXPECT_EQ(stored(), "lost:file Pad.app:application ") << "a double click takes one";
}

TEST_F(ResourceViews, aDragIsTakenByTheListOrByARow) {
    open({{"a", file}, {"b", file}});
    QMimeData files;
    files.setUrls({QUrl::fromLocalFile("/x/note[1].txt"), QUrl("file:///x/Pictures"),
                   QUrl("file:///x/pad.desktop"), QUrl("file://elsewhere/x/far.txt"),
                   QUrl("file://localhost/x/near.txt")});
    files.setText("1");
    interface.drag(files, "b", false);
    EXPECT_EQ(stored(), "a:file b:file ");
    interface.drag(files, "b");
    EXPECT_EQ(stored(),
              "a:file b:file note[1].txt:file Pictures:folder Pad:application near.txt:file ");
    EXPECT_EQ(resources()[4].path, "/Applications/Pad.app");
    QMimeData row;
    row.setText("1");
    interface.drag(row, "Resources");
    interface.drag(row, "a");
    QMimeData page;
    page.setUrls({QUrl("https://site.test/")});
    interface.drag(page, "Resources");
    EXPECT_EQ(stored(),
              "b:file a:file note[1].txt:file Pictures:folder Pad:application near.txt:file ");
}

TEST_F(ResourceViews, theAddSheetFollowsItsType) {
    constexpr auto sheet = "Add New Resource";
    open({});
    ASSERT_TRUE(interface.press("Add Resource"));
    EXPECT_TRUE(interface.shows("Click to select folder"));
    EXPECT_FALSE(interface.isEnabled("Add Resource", sheet));
    interface.type("Mine");
    ASSERT_TRUE(interface.press("Url"));
    EXPECT_EQ(interface.shown().find("Mine"), std::string::npos);
    ASSERT_TRUE(interface.reach("URL"));
    interface.key(Qt::Key_End);
    interface.type("site.test");
    EXPECT_TRUE(interface.shows("Valid URL"));
    EXPECT_TRUE(interface.isEnabled("Add Resource", sheet));
    interface.type(" x");
    EXPECT_TRUE(interface.shows("Enter a valid URL (https://example.com or localhost:3000)"));
    EXPECT_FALSE(interface.isEnabled("Add Resource", sheet));
    interface.key(Qt::Key_Escape);
    ASSERT_TRUE(interface.press("File")) << "no key ends the sheet";
    ASSERT_TRUE(interface.press("Click to select file"));
    EXPECT_TRUE(interface.shows("/x/note.txt"));
    ASSERT_TRUE(interface.press("Enabled by default"));
    ASSERT_TRUE(interface.press("Add Resource", sheet));
    EXPECT_TRUE(interface.shows("Disabled : Excluded from being opened/quit"));
    EXPECT_EQ(stored(), "note:file ");
    interface.desktop.panels.choices["File Path"] = "/x/of two\nlines";
    ASSERT_TRUE(interface.press("Add Resource"));
    ASSERT_TRUE(interface.press("File"));
    ASSERT_TRUE(interface.press("Click to select file"));
    EXPECT_EQ(interface.linesOf("/x/of two lines"), 1);
    ASSERT_TRUE(interface.press("Cancel"));
    EXPECT_FALSE(interface.shows(sheet));
}

TEST_F(ResourceViews, theSettingsActAtOnceAndAreReachedByTheKeyboard) {
    constexpr auto note = "Window Layout Features are currently disabled. You can still use all "
                          "core workspace functionality, but window positions won't be saved or "
                          "restored automatically.";
    auto& desktop = interface.desktop;
    desktop.screen.isTrusted = false;
    desktop.screen.facts = {.name = "Other (Wayland)", .whatToDoFirst = "Log in again."};
    desktop.panels.choices = {{"Export Workspaces", "/x/out.json"},
                              {"Import Workspaces", "/x/out.json"}};
    desktop.defaultHandlers["mailto:"] = "/Applications/Pad.app";
    open({{"a", file}});
    auto& store = interface.store();
    store.autoSaveLayouts = true;
    ASSERT_TRUE(interface.press("Settings"));
    EXPECT_FALSE(interface.isEnabled("Auto-Save Layouts", "Settings"));
    EXPECT_TRUE(interface.shows(note));
    EXPECT_TRUE(interface.shows("Other (Wayland) · windows: no · layouts: no\nLog in again."));
    const auto act = [&](const char* name, Qt::Key key = Qt::Key_Space) {
        EXPECT_TRUE(interface.reach(name)) << name;
        interface.key(key);
        interface.runFor(0.2);
    };
    act("Window Layout Features");
    EXPECT_TRUE(store.enableAccessibilityFeatures && store.autoSaveLayouts);
    EXPECT_NE(desktop.logged("alert"), "");
    EXPECT_FALSE(interface.shows(note));
    act("Auto-Save Layouts");
    EXPECT_FALSE(store.autoSaveLayouts);
    store.showLayoutSavedAlert = false;
    store.showLayoutsDisabledAlert = false;
    act("Workspace Applications Closed");
    act("Applications Closed (Focus Mode)");
    EXPECT_FALSE(store.showWorkspaceClosedAlert || store.showApplicationsClosedAlert);
    act("Reset All Confirmations", Qt::Key_Return);
    EXPECT_TRUE(store.showLayoutSavedAlert && store.showWorkspaceClosedAlert &&
                store.showLayoutsDisabledAlert && store.showApplicationsClosedAlert);
    desktop.alertAnswers["Import Workspaces"] = {.button = AlertResponse::secondButton};
    act("Export Workspaces");
    act("Import Workspaces");
    EXPECT_EQ(store.workspaces->size(), 2u);
    act("Import a Kept Copy");
    EXPECT_EQ(desktop.panels.openPanels.back().directory, storeFolder + std::string("/Copies"));
    desktop.alertAnswers["Reset Preferences"] = {.button = AlertResponse::secondButton};
    act("Reset Preferences");
    EXPECT_FALSE(desktop.defaults.empty());
    desktop.alertAnswers.clear();
    act("Reset Preferences");
    EXPECT_TRUE(desktop.defaults.empty());
    EXPECT_TRUE(store.enableAccessibilityFeatures) << "until the next start";
    act("Contact Support");
    EXPECT_NE(desktop.logged("open mailto:support@corvane.example?subject="), "");
    act("Done", Qt::Key_Return);
    EXPECT_FALSE(interface.shows("Configure Corvane Workspace Manager"));
}

} // namespace
} // namespace corvane
