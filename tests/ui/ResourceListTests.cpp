#include "core/StoreScene.h"
#include "ui/AppIcons.h"
#include "ui/ResourceDrops.h"
#include "ui/ResourceManagement.h"

#include <gtest/gtest.h>

namespace corvane {
namespace {

using enum ResourceType;

class ResourceList : public testing::Test {
protected:
    StoreScene scene;
    SimulatedDesktop& desktop = scene.desktop;
    Workspace work =
        scene.workspace("Work", {scene.resource("a"), scene.resource("b", "", separator),
                                 scene.resource("c", "make", terminal),
                                 scene.resource("d", "/Applications/Pad.app", application)});
    WorkspaceStore& store = startStore();
    ResourceManagement list{work.id, store, scene.platform};

    std::string names() const { return described(store.workspaces); }
    const Resource& resource(std::size_t index) const {
        return store.workspaces->front().resources[index];
    }
    std::string chips(std::size_t index) const {
        std::string text;
        const auto rows = list.rows();
        for (const auto& chip : rows[index].chips)
            text += chip.appName + (chip.isDefault ? "* " : " ");
        return text + rows[index].opens;
    }

private:
    WorkspaceStore& startStore() {
        desktop.install({.path = "/Applications/Pad.app", .bundleIdentifier = "com.example.pad"});
        desktop.defaultHandlers["txt"] = "/Applications/Pad.app";
        return scene.start({work});
    }
};

TEST_F(ResourceList, rowsShowTheirApplications) {
    store.addAssociatedApp(work.resources[0].id, "Quill", work.id);
    EXPECT_EQ(chips(0), "Pad* Quill /notes.txt");
    EXPECT_EQ(chips(1), "");
    EXPECT_EQ(chips(2), "Terminal* make");
    EXPECT_EQ(chips(3), "/Applications/Pad.app");
}

TEST_F(ResourceList, anIconIsFoundByThePathThenTheIdentifierThenWhatRuns) {
    desktop.install({.path = "/System/Applications/Utilities/Disk.app", .icon = "disk"});
    desktop.install({.path = "/x/Quill.app", .bundleIdentifier = "example.quill", .icon = "quill"});
    desktop.install({.path = "/x/Files.app", .icon = "files"});
    desktop.running = {{.processIdentifier = 1, .bundleURL = Url::fromPath("/x/Files.app")},
                       {.processIdentifier = 2, .localizedName = "Quill Pro"},
                       {.localizedName = "Quill Pro", .bundleURL = Url::fromPath("/x/Quill.app")}};
    for (const auto& [name, icon] : std::map<std::string, std::string>{{"Disk", "disk"},
                                                                       {"example.quill", "quill"},
                                                                       {"ll pr", "quill"},
                                                                       {"My Quill Pro", "quill"},
                                                                       {"Other", ""}}) {
        EXPECT_EQ(appIconForName(name, scene.platform.fileSystem, scene.platform.applications,
                                 scene.platform.fileIcons)
                      .value_or(""),
                  icon)
            << name;
    }
    desktop.files.directories.insert("/folder");
    desktop.defaultHandlers["/"] = "/x/Files.app";
    store.addResource(scene.resource("f", "/folder", folder), work.id);
    EXPECT_EQ(list.rows().back().chips.front().icon, "files") << "of what opens the folder";
}

TEST_F(ResourceList, aStrayRowChangesNothing) {
    const int saves = scene.saves();
    list.removeRow(9);
    list.rename(9, "x");
    list.toggleEnabled(9);
    list.pressPlay(9);
    list.moveRow(0, 9);
    list.removeApplication(0, "Quill");
    store.deleteWorkspace(work.id);
    list.addSeparator();
    EXPECT_TRUE(list.rows().empty());
    EXPECT_EQ(scene.saves(), saves + 1);
}

TEST_F(ResourceList, anApplicationThatIsChosenAfterTheCardWasClosedIsAdded) {
    desktop.panels.choices["Choose Application"] = "/Applications/Pad.app";
    std::optional<ResourceManagement> closed(std::in_place, work.id, store, scene.platform);
    closed->chooseApplication(0);
    closed.reset();
    desktop.runUntilIdle();
    EXPECT_EQ(resource(0).associatedApps, std::vector<std::string>{"Pad"});
    EXPECT_EQ(desktop.panels.openPanels.back().directory, "/Applications");
}

TEST_F(ResourceList, onlyFilesThatAreDroppedAreAdded) {
    ResourceDropDelegate panel(list);
    const DropInfo files{.fileUrls = {"file:///x/one.txt", "not a url", "https://a.test/"},
                         .text = "2"};
    panel.dropEntered({.text = "2"});
    EXPECT_FALSE(list.isAddResourceDropTarget);
    panel.dropEntered(files);
    EXPECT_TRUE(list.isAddResourceDropTarget);
    EXPECT_FALSE(panel.performDrop({.text = "2"}));
    EXPECT_TRUE(panel.performDrop(files));
    desktop.runUntilIdle();
    EXPECT_EQ(names(), "Work(a b c d one.txt)");
    EXPECT_FALSE(list.isAddResourceDropTarget);
}

TEST_F(ResourceList, aRowThatIsDroppedEndsWhereItWasDropped) {
    const struct {
        const char* text;
        std::size_t target;
        const char* order;
        bool isMove;
    } cases[]{
        {"0", 2, "Work(b c a d)", true},     {"3", 1, "Work(a d b c)", true},
        {"1", 1, "Work(a b c d)", true},     {"+0", 3, "Work(b c d a)", true},
        {"9", 0, "Work(a b c d)", true},     {"-1", 0, "Work(a b c d)", false},
        {" 1", 0, "Work(a b c d)", false},   {"1.0", 0, "Work(a b c d)", false},
        {"", 0, "Work(a b c d)", false},     {"99999999999999999999", 0, "Work(a b c d)", false},
        {"\xff", 0, "Work(a b c d)", false},
    };
    for (const auto& [text, target, order, isMove] : cases) {
        store.updateWorkspace(work);
        ResourceReorderDelegate row(list, target);
        const DropInfo info{.text = text};
        row.dropEntered(info);
        EXPECT_TRUE(list.dropTargetIndexes->contains(target));
        EXPECT_TRUE(row.performDrop(info));
        desktop.runUntilIdle();
        EXPECT_EQ(names(), order) << text;
        EXPECT_EQ(list.dropTargetIndexes->contains(target), !isMove) << text;
        row.dropExited();
    }
    const DropInfo file{.fileUrls = {"file:///x"}, .text = "0"};
    ResourceReorderDelegate row(list, 0);
    EXPECT_FALSE(row.validateDrop(file));
    EXPECT_FALSE(row.performDrop(file));
}

} // namespace
} // namespace corvane
