#include "core/StoreScene.h"
#include "ui/AppIcons.h"
#include "ui/MissingFiles.h"
#include "ui/ResourceDrops.h"
#include "ui/ResourceManagement.h"
#include "ui/UndoOffer.h"

using namespace corvane;

namespace {

using enum ResourceType;

struct ResourceList : SceneTest {
    Workspace work =
        scene.workspace("Work", {scene.resource("a"), scene.resource("b", "", separator),
                                 scene.resource("c", "make", terminal),
                                 scene.resource("d", "/Applications/Pad.app", application)});
    WorkspaceStore& store = scene.start({work});
    UndoOffer undo{platform.mainQueue};
    MissingFiles missing{store, platform.backgroundQueue, platform.mainQueue, platform.fileSystem};
    const ResourceManagement::Desktop used{
        platform.mainQueue, platform.alerts,       platform.panels,   platform.fileSystem,
        platform.bundles,   platform.applications, platform.fileIcons};
    ResourceManagement list{work.id, store, used, undo, missing};

    ResourceList() {
        desktop.install({.path = "/Applications/Pad.app",
                         .bundleIdentifier = "com.example.pad",
                         .icon = "pad"});
        desktop.defaultHandlers["txt"] = "/Applications/Pad.app";
    }
    std::string names() const { return described(store.workspaces); }
    RecordKey key(std::size_t index) const { return list.rows()[index].key; }
    /// "[icon] Chip*[its icon] Other path", the default one with a star.
    std::string chips(std::size_t index) {
        const auto icon = [](const std::string& name) {
            return name.empty() ? " " : "[" + name + "] ";
        };
        const auto rows = list.rows();
        const auto& pictures = list.picturesOf(rows[index]);
        std::string text = pictures.icon.empty() ? "" : icon(pictures.icon);
        for (const auto& chip : pictures.chips)
            text += chip.appName + (chip.isDefault ? "*" : "") + icon(chip.icon);
        return text + rows[index].opens;
    }
};

TEST_F(ResourceList, rowsShowTheirApplicationsWhichAreLookedUpOnce) {
    EXPECT_EQ(chips(0), "Pad*[pad] /notes.txt");
    for (const auto* name : {"Quill", "Pad"})
        store.addAssociatedApp(work.resources[0].id, name, work.id);
    EXPECT_EQ(chips(0), "Pad*[pad] Quill Pad[pad] /notes.txt");
    desktop.defaultHandlers.clear();
    store.search("a");
    EXPECT_EQ(chips(0), "Pad*[pad] Quill Pad[pad] /notes.txt") << "nobody asks on the way of a key";
    store.addAssociatedApp(work.resources[0].id, "Easel", work.id);
    EXPECT_EQ(chips(0), "Quill Pad[pad] Easel /notes.txt");
    EXPECT_EQ(chips(1), "");
    EXPECT_EQ(chips(2), "Terminal* make");
    EXPECT_EQ(chips(3), "[pad] /Applications/Pad.app");
}

TEST_F(ResourceList, anIconIsFoundByThePathThenTheIdentifierThenWhatRuns) {
    desktop.install({.path = "/System/Applications/Utilities/Disk.app", .icon = "disk"});
    desktop.install({.path = "/System/Applications/Clock.app", .icon = "clock"});
    desktop.install({.path = "/Applications/Utilities/Scale.app", .icon = "scale"});
    desktop.install({.path = "/Applications/Notes.app", .icon = "notes"});
    desktop.install({.path = "/x/Quill.app", .bundleIdentifier = "example.quill", .icon = "quill"});
    desktop.install({.path = "/x/Files.app", .icon = "files"});
    desktop.running = {{.processIdentifier = 1, .bundleURL = Url::fromPath("/x/Files.app")},
                       {.processIdentifier = 2, .localizedName = "Quill Pro"},
                       {.localizedName = "Quill Pro", .bundleURL = Url::fromPath("/x/Quill.app")}};
    const std::pair<const char*, const char*> icons[]{
        {"Notes", "notes"},         {"Clock", "clock"}, {"Scale", "scale"},        {"Disk", "disk"},
        {"example.quill", "quill"}, {"ll pr", "quill"}, {"My Quill Pro", "quill"}, {"Other", ""}};
    for (const auto& [name, icon] : icons)
        EXPECT_EQ(appIconForName(name, platform.applications, platform.fileIcons).value_or(""),
                  icon)
            << name;
    desktop.files.directories.insert("/folder");
    desktop.defaultHandlers["/"] = "/x/Files.app";
    store.addResource(scene.resource("f", "/folder", folder), work.id);
    EXPECT_EQ(list.picturesOf(list.rows().back()).chips.front().icon, "files");
}

TEST_F(ResourceList, aStrayRowChangesNothing) {
    const int saves = scene.saves();
    const RecordKey stray{Uuid::random()};
    list.removeRow(stray);
    list.beginRenaming(stray);
    list.submitName(stray);
    list.toggleEnabled(stray);
    list.pressPlay(stray);
    list.moveRow(0, 9);
    list.moveRowBy(stray, 1);
    list.moveRowBy(key(0), -1);
    list.moveRowBy(key(3), 1);
    list.removeApplication(key(0), "Quill");
    list.removeApplication(stray, "Quill");
    list.toggleEnabled({work.resources[0].id, 1});
    list.chooseApplication(stray);
    list.locate(stray);
    EXPECT_EQ(undo.text(), "");
    EXPECT_EQ(scene.saves(), saves);
    store.deleteWorkspace(work.id);
    list.addSeparator();
    EXPECT_TRUE(list.rows().empty());
    EXPECT_EQ(scene.saves(), saves + 1);
}

TEST_F(ResourceList, anActionIsForTheResourceThatWasShown) {
    // The second of an identifier is another resource.
    work.resources.push_back(work.resources[0]);
    work.resources.back().name = "A";
    work.resources.back().associatedApps = {"Quill", "Pad"};
    store.updateWorkspace(work);
    list.removeApplication(list.rows()[4].key, "Quill");
    EXPECT_EQ(names(), "Work(a b c d A{Pad})");
    undo.undo();
    EXPECT_EQ(names(), "Work(a b c d A{Quill,Pad})");
    for (const auto* name : {"Quill", "Pad"})
        list.removeApplication(list.rows()[4].key, name);
    const auto shown = list.rows();
    for (const auto& row : shown)
        EXPECT_EQ(RecordKey::parse(row.key.toString()), row.key);
    const auto id = shown[0].key.id.toString();
    for (const auto& text : {std::string("/1"), id + "/", id + "/1x", id + "/1/1"})
        EXPECT_EQ(RecordKey::parse(text), std::nullopt) << text;
    list.removeRow(shown[0].key);
    list.removeRow(shown[2].key);
    EXPECT_EQ(names(), "Work(b d A)");
    undo.undo();
    undo.undo();
    EXPECT_EQ(names(), "Work(a b c d A)");
    list.toggleEnabled(shown[4].key);
    list.beginRenaming(shown[4].key);
    EXPECT_EQ(list.rows()[4].editedName, "A");
    list.setEditedName(shown[4].key, "second");
    EXPECT_EQ(names(), "Work(a b c d A-)") << "until it is submitted";
    store.search("x");
    EXPECT_EQ(list.rows()[4].editedName, "second");
    list.submitName(shown[4].key);
    EXPECT_EQ(names(), "Work(a b c d second-)");
    list.moveRowBy(shown[4].key, -4);
    list.removeRow({shown[0].key.id, 1});
    EXPECT_EQ(names(), "Work(second- b c d)");
    list.beginRenaming(shown[1].key);
    list.cancelRenaming(shown[1].key);
    list.submitName(shown[1].key);
    list.toggleEnabled(shown[1].key);
    EXPECT_EQ(names(), "Work(second- b- c d)");
}

TEST_F(ResourceList, whatIsRemovedIsOfferedForEightSeconds) {
    for (const auto* name : {"Quill", "Easel"})
        store.addAssociatedApp(work.resources[0].id, name, work.id);
    list.removeApplication(key(0), "Quill");
    EXPECT_EQ(undo.text(), "Removed 'Quill'");
    desktop.runFor(7);
    list.removeRow(key(1));
    EXPECT_EQ(undo.text(), "Removed 'b'");
    desktop.runFor(7.9);
    undo.undo();
    EXPECT_EQ(undo.text(), "Removed 'Quill'");
    undo.undo();
    EXPECT_EQ(names(), "Work(a{Quill,Easel} b c d)");
    list.removeApplication(key(0), "Easel");
    undo.undo();
    EXPECT_EQ(names(), "Work(a{Quill,Easel} b c d)");
    list.removeRow(key(3));
    desktop.runFor(8.1);
    EXPECT_EQ(undo.text(), "");
    undo.undo();
    EXPECT_EQ(names(), "Work(a{Quill,Easel} b c)");
}

TEST_F(ResourceList, whatIsMissingIsMarkedAndCanBeLocated) {
    desktop.files.contents["/x/b.txt"] = "";
    work.resources = {scene.resource("gone", "/x/gone.txt"), scene.resource("b", "/x/b.txt"),
                      scene.resource("far", "/mnt/far.txt"),
                      scene.resource("Lost", "/Applications/Lost.app", application),
                      scene.resource("run", "make", terminal)};
    desktop.files.unreachable.insert("/mnt");
    store.updateWorkspace(work);
    const auto marked = [&] {
        std::string text;
        for (const auto& row : list.rows())
            text += row.name + (row.isMissing ? "! " : " ");
        return text;
    };
    desktop.runUntilIdle();
    EXPECT_EQ(marked(), "gone! b far Lost! run ");
    desktop.panels.choices["Locate gone"] = "/x/b.txt";
    for (const std::size_t row : {0, 3, 4})
        list.locate(key(row));
    const std::vector<OpenPanel> asked{{.title = "Locate gone", .content = PanelContent::file},
                                       {.title = "Locate Lost",
                                        .content = PanelContent::application,
                                        .directory = "/Applications"}};
    EXPECT_EQ(desktop.panels.openPanels, asked);
    desktop.runUntilIdle();
    EXPECT_EQ(list.rows()[0].path, "/x/b.txt");
    EXPECT_EQ(marked(), "gone b far Lost! run ");
    desktop.files.contents.erase("/x/b.txt");
    missing.look();
    missing.look();
    EXPECT_EQ(desktop.queue.pending(), 1u) << "one look at a time";
    EXPECT_EQ(marked(), "gone b far Lost! run ") << "nothing waits for the disk";
    desktop.runUntilIdle();
    EXPECT_EQ(marked(), "gone! b! far Lost! run ");
    // As many paths as before, one of which is another.
    work = *store.find(work.id);
    for (const std::size_t row : {0, 1})
        work.resources[row].path = "/x/c.txt";
    store.updateWorkspace(work);
    EXPECT_EQ(marked(), "gone b far Lost! run ");
    desktop.runUntilIdle();
    EXPECT_EQ(marked(), "gone! b! far Lost! run ");
}

TEST_F(ResourceList, whatLooksForFilesMayGoBeforeItFollowsAChange) {
    auto gone = std::make_unique<MissingFiles>(store, platform.backgroundQueue, platform.mainQueue,
                                               platform.fileSystem);
    desktop.runUntilIdle();
    store.addWorkspace(scene.workspace("Next", {scene.resource("e", "/e")}));
    gone.reset();
    desktop.runUntilIdle();
    EXPECT_EQ(names(), "Work(a b c d) Next(e)");
}

TEST_F(ResourceList, anApplicationThatIsChosenAfterTheCardWasClosedIsAdded) {
    desktop.panels.choices["Choose Application"] = "/Applications/Pad.app";
    std::optional<ResourceManagement> closed(std::in_place, work.id, store, used, undo, missing);
    closed->chooseApplication(key(0));
    closed.reset();
    desktop.runUntilIdle();
    EXPECT_EQ(names(), "Work(a{Pad} b c d)");
    const OpenPanel asked{"Choose Application", "Select an application to add to this resource",
                          PanelContent::application, "/Applications"};
    EXPECT_EQ(desktop.panels.openPanels, std::vector{asked});
    for (const auto* again : {"/Applications/Pad.app", "/x/Quill.app", ""}) {
        desktop.panels.choices["Choose Application"] = again;
        if (!*again) desktop.panels.choices.clear();
        list.chooseApplication(key(0));
        desktop.runUntilIdle();
    }
    EXPECT_EQ(names(), "Work(a{Pad,Quill} b c d)");
    EXPECT_EQ(scene.alerts(), "Duplicate App | Pad is already associated with this resource. [OK] "
                              "not a warning");
    desktop.panels.choices["Choose Application"] = "/Applications/Pad.app";
    list.chooseApplication(key(0));
    store.deleteWorkspace(work.id);
    desktop.runUntilIdle();
    EXPECT_EQ(names(), "");
}

TEST_F(ResourceList, onlyFilesThatAreDroppedAreAdded) {
    ResourceDropDelegate panel(list);
    const DropInfo files{.fileUrls = {"file:///x/one.txt", "not a url", "https://a.test/"}};
    panel.dropEntered(files);
    EXPECT_FALSE(panel.performDrop({.text = "2"}));
    EXPECT_TRUE(panel.performDrop(files));
    desktop.runUntilIdle();
    EXPECT_EQ(names(), "Work(a b c d one.txt)");
    EXPECT_FALSE(list.isAddResourceDropTarget);
}

TEST_F(ResourceList, aRowThatIsDroppedEndsWhereItWasDropped) {
    const std::tuple<const char*, std::size_t, const char*, bool> cases[]{
        {"3", 1, "Work(a d b c)", true},    {"+0", 3, "Work(b c d a)", true},
        {"9", 0, "Work(a b c d)", true},    {"-1", 0, "Work(a b c d)", false},
        {" 1", 0, "Work(a b c d)", false},  {"1.0", 0, "Work(a b c d)", false},
        {"", 0, "Work(a b c d)", false},    {"99999999999999999999", 0, "Work(a b c d)", false},
        {"+-0", 2, "Work(a b c d)", false}, {"\xff", 0, "Work(a b c d)", false}};
    for (const auto& [text, target, order, isMove] : cases) {
        store.updateWorkspace(work);
        ResourceReorderDelegate row(list, target);
        const DropInfo info{.text = text};
        row.dropEntered(info);
        EXPECT_TRUE(list.dropTargetIndexes->contains(target) && row.performDrop(info));
        desktop.runUntilIdle();
        EXPECT_EQ(names(), order) << text;
        EXPECT_EQ(list.dropTargetIndexes->contains(target), !isMove) << text;
        row.dropExited();
        EXPECT_TRUE(list.dropTargetIndexes->empty());
    }
    const DropInfo file{.fileUrls = {"file:///x"}, .text = "0"};
    ResourceReorderDelegate row(list, 0);
    row.dropEntered(file);
    EXPECT_TRUE(list.dropTargetIndexes->empty() && !row.validateDrop(file));
    EXPECT_FALSE(row.performDrop(file));
}

} // namespace
