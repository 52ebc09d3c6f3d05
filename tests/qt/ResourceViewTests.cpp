#include "qt/Interface.h"

#include <QMimeData>
#include <QQuickItem>
#include <QTest>
#include <QUrl>

namespace corvane {
namespace {

using enum ResourceType;

struct ResourceViews : testing::Test, Interface {
    ResourceViews() {
        desktop.files.contents = {
            {"/x/note.txt", ""}, {"/x/pad.desktop", ""}, {"/x/Pictures/a", ""}};
        desktop.install({.path = "/Applications/Pad.app", .launcher = "/x/pad.desktop"});
        desktop.panels.choices = {{"Choose Application", "/Applications/Pad.app"},
                                  {"File Path", "/x/note.txt"}};
    }
    void open(const std::vector<std::pair<std::string, ResourceType>>& named) {
        auto work = makeWorkspace("Work", "", "star", {});
        for (const auto& [name, type] : named)
            work.resources.push_back(makeResource(name, "/x/" + name, type, platform.bundles));
        Interface::open({work});
        ASSERT_TRUE(press("Resources"));
        settle();
    }
    const std::vector<Resource>& resources() { return store().workspaces->front().resources; }
    std::string stored() {
        std::string text;
        for (const auto& resource : resources())
            text += resource.name + ":" + std::string(rawValue(resource.type)) + " ";
        return text;
    }
};

TEST_F(ResourceViews, aRowHasWhatCanBeDoneWithItsResource) {
    open({{"note.txt", file}, {"Part", separator}, {"Pad.app", application}});
    EXPECT_EQ(toolTipOf("FILE"), "/x/note.txt");
    EXPECT_TRUE(press("Enabled - Resource will launch/quit with workspace", "note.txt"));
    EXPECT_TRUE(shows("Disabled : Excluded from being opened/quit"));
    EXPECT_TRUE(shows("Disabled - Resource will be ignored when workspace starts"));
    EXPECT_TRUE(press("Launch note.txt") && press("Stop note.txt") && shows("Launch note.txt"));
    EXPECT_TRUE(!press("Add App", "Pad.app") && press("Add App", "note.txt"));
    EXPECT_TRUE(press("Add App", "note.txt"));
    EXPECT_EQ(desktop.logged("alert"), "alert Duplicate App");
    ASSERT_TRUE(reach("Remove Pad"));
    key(Qt::Key_Return);
    EXPECT_TRUE(resources()[0].associatedApps.empty());
    EXPECT_EQ(focused(), "Add App") << "its neighbour";

    EXPECT_TRUE(reach("Part"));
    key(Qt::Key_Return);
    key(Qt::Key_Delete);
    key(Qt::Key_F, Qt::ControlModifier);
    type("w");
    EXPECT_EQ(resources()[1].name, "Part") << "until it is submitted";
    ASSERT_TRUE(reach("Section name"));
    key(Qt::Key_Return);
    EXPECT_EQ(focused(), "Section");
    EXPECT_EQ(resources()[1].name, "");
    key(Qt::Key_Return);
    type("x");
    key(Qt::Key_Escape);
    EXPECT_EQ(focused(), "Section") << "as it was";

    ASSERT_TRUE(reach("Move"));
    for (int i = 0; i < 3; ++i)
        key(Qt::Key_Up);
    EXPECT_EQ(stored(), "Pad.app:application note.txt:file :separator ");
    key(Qt::Key_Down);
    EXPECT_EQ(stored(), "note.txt:file Pad.app:application :separator ");
    EXPECT_EQ(act("Decrease", "Move", "Pad.app"), "SetFocus Increase Decrease");
    EXPECT_EQ(stored(), "Pad.app:application note.txt:file :separator ");
    pressAtOnce("Remove", {"Pad.app", "note.txt"});
    EXPECT_EQ(stored(), ":separator ") << "neither is lost, nor another one taken";
    ASSERT_TRUE(press("Remove"));
    EXPECT_TRUE(shows("Removed 'Section'") && shows("No resources yet") && press("Separator"));
    EXPECT_TRUE(shows("Separator - click to rename"));
}

TEST_F(ResourceViews, aRowIsChangedByItsMenuAndLeavesTheKeyboardToItsNeighbour) {
    open({{"note.txt", file}, {"lost", file}, {"Pad.app", application}});
    EXPECT_TRUE(shows("Not found: /x/lost") && !shows("Not found: /x/note.txt"));
    desktop.panels.choices["Locate lost"] = "/x/note.txt";
    EXPECT_EQ(act("ShowMenu", "More", "lost"), "Press ShowMenu SetFocus");
    ASSERT_TRUE(press("Locate…"));
    runFor(0);
    EXPECT_FALSE(shows("Not found: /x/lost"));
    EXPECT_EQ(resources()[1].path, "/x/note.txt");

    ASSERT_TRUE(press("More", "note.txt") && press("Edit"));
    runFor(0);
    EXPECT_TRUE(shows("Edit Resource"));
    EXPECT_EQ(focused(), "Enter a name for this resource");
    key(Qt::Key_End);
    type("!");
    ASSERT_TRUE(press("Save"));
    EXPECT_EQ(stored(), "note.txt!:file lost:file Pad.app:application ");
    EXPECT_EQ(focused(), "More") << "of the row";

    for (int i = 0; i < 2; ++i) {
        ASSERT_TRUE(reach("Remove"));
        hold(Qt::Key_Return);
        runFor(0);
        EXPECT_EQ(focused(), "Move");
    }
    EXPECT_EQ(stored(), "note.txt!:file ");
    EXPECT_TRUE(shows("Removed 'Pad.app'"));
    key(Qt::Key_Z, Qt::ControlModifier);
    ASSERT_TRUE(press("Undo"));
    EXPECT_EQ(stored(), "note.txt!:file lost:file Pad.app:application ");
    pressTwice("Remove", "note.txt!");
    EXPECT_EQ(stored(), "lost:file Pad.app:application ") << "a double click takes one";
}

TEST_F(ResourceViews, whatASearchBringsBackIsAsItWasLeft) {
    std::vector<Workspace> workspaces;
    for (const char name : std::string("BCDFGHJKLM")) {
        auto& made = workspaces.emplace_back(makeWorkspace({name}, "", "star", {}));
        for (const char digit : std::string("123456789"))
            made.resources.push_back(makeResource({digit}, "/x/note.txt", file, platform.bundles));
    }
    Interface::open(workspaces);
    const auto search = [&](const std::string& text) {
        store().search(text);
        settle();
    };
    const auto lists = [&] {
        return std::ranges::count_if(
            items(), [](const auto* item) { return item->inherits("QQuickListView"); });
    };
    for (const auto& workspace : workspaces) {
        search(workspace.name);
        ASSERT_TRUE(press("Resources"));
        settle();
    }
    ASSERT_TRUE(reach("Remove"));
    const auto place = [&] { return placeOf("2").top() - placeOf("Add Resource").top(); };
    const int unmoved = place();
    wheel("2", 1);
    int moved = unmoved;
    EXPECT_TRUE(QTest::qWaitFor([&] {
        const int before = std::exchange(moved, place());
        QTest::qWait(100);
        return moved < unmoved && moved == before;
    })) << "the wheel's turn comes to rest";
    search("none");
    EXPECT_EQ(lists(), 1 + 8) << "the cards, and the last lists";
    EXPECT_NE(focused(), "Remove") << "what isn't shown has no keyboard";
    search("M");
    EXPECT_EQ(place(), moved);
    ASSERT_TRUE(press("Resources"));
    settle();
    EXPECT_EQ(lists(), 1 + 7) << "none of a card that is collapsed";
}

TEST_F(ResourceViews, aDragIsTakenByTheListOrByARow) {
    open({{"a", file}, {"b", file}});
    QMimeData files;
    files.setUrls({QUrl::fromLocalFile("/x/note[1].txt"), QUrl("file:///x/Pictures"),
                   QUrl("file:///x/pad.desktop"), QUrl("file://elsewhere/x/far.txt"),
                   QUrl("file://localhost/x/near.txt")});
    files.setText("1");
    const auto marks = [&] {
        const auto all = drawn();
        return std::string(all.find("#1aff3b30/#ff3b30") == all.npos ? "" : "list") +
               (all.find("#1a0a7aff/#0a7aff") == all.npos ? "" : "row");
    };
    drag(files, "b", false, [&] { EXPECT_EQ(marks(), "list"); });
    EXPECT_EQ(marks(), "");
    EXPECT_EQ(stored(), "a:file b:file ");
    drag(files, "b");
    EXPECT_EQ(stored(),
              "a:file b:file note[1].txt:file Pictures:folder Pad:application near.txt:file ");
    EXPECT_EQ(resources()[4].path, "/Applications/Pad.app");
    QMimeData row;
    row.setText("1");
    drag(row, "Resources");
    drag(row, "a", true, [&] { EXPECT_EQ(marks(), "row"); });
    QMimeData page;
    page.setUrls({QUrl("https://site.test/")});
    drag(page, "Resources");
    EXPECT_EQ(stored(),
              "b:file a:file note[1].txt:file Pictures:folder Pad:application near.txt:file ");
}

TEST_F(ResourceViews, theAddSheetFollowsItsType) {
    constexpr auto sheet = "Add New Resource";
    open({});
    ASSERT_TRUE(press("Add Resource"));
    EXPECT_TRUE(shows("Click to select folder") && !isEnabled("Add Resource", sheet));
    type("Mine");
    ASSERT_TRUE(press("Url"));
    EXPECT_EQ(shown().find("Mine"), std::string::npos);
    ASSERT_TRUE(reach("URL"));
    key(Qt::Key_End);
    type("site.test");
    EXPECT_TRUE(shows("Valid URL") && isEnabled("Add Resource", sheet));
    type(" x");
    EXPECT_TRUE(shows("Enter a valid URL (https://example.com or localhost:3000)"));
    EXPECT_FALSE(isEnabled("Add Resource", sheet));
    key(Qt::Key_Escape);
    ASSERT_TRUE(press("File")) << "no key ends the sheet";
    ASSERT_TRUE(press("Click to select file"));
    EXPECT_TRUE(shows("/x/note.txt"));
    ASSERT_TRUE(press("Enabled by default") && press("Add Resource", sheet));
    EXPECT_TRUE(shows("Disabled : Excluded from being opened/quit"));
    EXPECT_EQ(stored(), "note:file ");
    desktop.panels.choices["File Path"] = "/x/of two\nlines";
    ASSERT_TRUE(press("Add Resource") && press("File") && press("Click to select file"));
    EXPECT_TRUE(QTest::qWaitFor([&] {
        return drawn().find("; /x/of two lines #") != std::string::npos;
    })) << "once the sheet is there";
    ASSERT_TRUE(press("Cancel"));
    EXPECT_FALSE(shows(sheet));
}

TEST_F(ResourceViews, theSettingsActAtOnceAndAreReachedByTheKeyboard) {
    constexpr auto note = "Window Layout Features are currently disabled. You can still use all "
                          "core workspace functionality, but window positions won't be saved or "
                          "restored automatically.";
    desktop.screen.isTrusted = false;
    desktop.screen.facts = {"Other (Wayland)", true, false, "Log in again."};
    desktop.panels.choices = {{"Export Workspaces", "/x/out.json"},
                              {"Import Workspaces", "/x/out.json"}};
    desktop.defaultHandlers["mailto:"] = "/Applications/Pad.app";
    desktop.mainBundleInfo = {{"CFBundleShortVersionString", "2.5"}, {"CFBundleVersion", "7"}};
    open({{"a", file}});
    auto& store = this->store();
    store.autoSaveLayouts = true;
    ASSERT_TRUE(press("Settings"));
    EXPECT_TRUE(shows("Version 2.5 (Build 7)"));
    EXPECT_FALSE(isEnabled("Auto-Save Layouts", "Settings"));
    EXPECT_TRUE(shows("Enable Window Layout Features to use auto-save"));
    EXPECT_TRUE(shows(note) &&
                shows("Other (Wayland) · windows: yes · layouts: no\nLog in again."));
    const auto act = [&](const char* name, Qt::Key key = Qt::Key_Space) {
        EXPECT_TRUE(reach(name)) << name;
        this->key(key);
        runFor(0.2);
    };
    act("Window Layout Features");
    EXPECT_TRUE(store.enableAccessibilityFeatures && store.autoSaveLayouts);
    EXPECT_EQ(desktop.logged("alert"), "alert Accessibility Permission Required");
    EXPECT_TRUE(shows("Automatically save window layouts when quitting workspaces"));
    EXPECT_FALSE(shows(note));
    act("Auto-Save Layouts");
    EXPECT_FALSE(store.autoSaveLayouts);
    const auto flags = [&] {
        std::string text;
        for (const bool isOn :
             {store.showLayoutSavedAlert.get(), store.showWorkspaceClosedAlert.get(),
              store.showLayoutsDisabledAlert.get(), store.showApplicationsClosedAlert.get()})
            text += isOn ? '1' : '0';
        return text + " ";
    };
    std::string off;
    for (const auto* alert : {"Window Layout Saved", "Workspace Applications Closed",
                              "Window Layouts Disabled", "Applications Closed (Focus Mode)"}) {
        act(alert);
        off += flags();
    }
    EXPECT_EQ(off, "0111 0011 0001 0000 ");
    act("Reset All Confirmations", Qt::Key_Return);
    EXPECT_EQ(flags(), "1111 ");
    desktop.alertAnswers["Import Workspaces"] = {.button = AlertResponse::secondButton};
    act("Export Workspaces");
    act("Import Workspaces");
    EXPECT_EQ(store.workspaces->size(), 2u);
    act("Import a Kept Copy");
    EXPECT_EQ(desktop.panels.openPanels.back().directory, storeFolder + "/Copies");
    desktop.alertAnswers["Reset Preferences"] = {.button = AlertResponse::secondButton};
    act("Reset Preferences");
    EXPECT_FALSE(desktop.defaults.empty());
    desktop.alertAnswers.clear();
    act("Reset Preferences");
    EXPECT_TRUE(desktop.defaults.empty());
    EXPECT_TRUE(store.enableAccessibilityFeatures) << "until the next start";
    act("Contact Support");
    EXPECT_EQ(desktop.logged("open m"),
              "open mailto:support@corvane.example?subject=Corvane%20Support%20Request&body="
              "App%20Version:%202.5%0ABuild:%207%0AmacOS%20Version:%20Simulated%201.0%0A%0A"
              "Please%20describe%20your%20issue:%0A");
    act("Done", Qt::Key_Return);
    EXPECT_FALSE(shows("Configure Corvane Workspace Manager"));
}

} // namespace
} // namespace corvane
