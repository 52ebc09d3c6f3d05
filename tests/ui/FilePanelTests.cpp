#include "simulated/SimulatedDesktop.h"
#include "ui/FilePanel.h"

#include <gtest/gtest.h>

namespace corvane {
namespace {

/// A desktop with some files, and what a panel on it shows.
class FilePanelTest : public testing::Test {
protected:
    SimulatedDesktop desktop;
    Platform platform = desktop.platform();

    FilePanelTest() {
        for (const char* file :
             {"Plan.json", "budget.JSON", "notes.txt", ".secret.json", "Old/2024.json",
              "Old/plan 10.json", "Old/Plan 9.json", "Old/äpfel.json", "Old/zebra.json"}) {
            desktop.files.contents["/home/user/Documents/" + std::string(file)] = "[]";
        }
        desktop.files.contents["/home/user/x.json"] = "[]";
        desktop.files.directories = {"/home/user/Documents/archive.json", "/tmp", "/root"};
        desktop.files.unreadable.insert("/root");
        desktop.install({.path = "/Applications/Quill.app"});
        desktop.install({.path = "/Applications/atlas.app"});
    }
    FilePanel save() {
        return {SavePanel{.proposedName = "Export.json"}, desktop.files, platform.alerts};
    }
    FilePanel open(PanelContent content, const std::string& directory = "") {
        return {OpenPanel{.content = content, .directory = directory}, desktop.files,
                platform.alerts};
    }
    static std::string listed(const FilePanel& panel) {
        std::string text = panel.folder() + ":";
        for (const auto& entry : panel.entries()) {
            text += " " + FilePanel::titleOf(entry);
            if (entry.kind == EntryKind::folder) text += "/";
        }
        return text;
    }
};

TEST_F(FilePanelTest, showsFoldersFirstAndWhatTheContentAllows) {
    const struct {
        PanelContent content;
        const char* directory;
        const char* listed;
    } cases[]{
        {PanelContent::json, "", "/home/user/Documents: archive.json/ Old/ budget.JSON Plan.json"},
        {PanelContent::json, "/nowhere",
         "/home/user/Documents: archive.json/ Old/ budget.JSON Plan.json"},
        {PanelContent::json, "/home/user/Documents/Old/",
         "/home/user/Documents/Old: 2024.json äpfel.json Plan 9.json plan 10.json zebra.json"},
        {PanelContent::file, "",
         "/home/user/Documents: archive.json/ Old/ budget.JSON notes.txt Plan.json"},
        {PanelContent::folder, "", "/home/user/Documents: archive.json/ Old/"},
        {PanelContent::application, "/Applications", "/Applications: atlas Quill"},
        {PanelContent::folder, "/Applications", "/Applications:"},
    };
    for (const auto& [content, directory, expected] : cases)
        EXPECT_EQ(listed(open(content, directory)), expected);
    desktop.files.contents = {};
    desktop.files.directories = {"/home/user"};
    EXPECT_EQ(open(PanelContent::json).folder(), "/home/user");
}

/// Every text that can stand in the name field when it is confirmed.
TEST_F(FilePanelTest, theNameLeadsToAFileOrAFolderOrAMessage) {
    const struct {
        std::optional<PanelContent> opens;
        const char* name;
        /// The path that ends the panel, or "folder | problem" of the panel that stays.
        const char* outcome;
    } cases[]{
        {{}, "New", "/home/user/Documents/New.json"},
        {{}, "New.txt", "/home/user/Documents/New.txt.json"},
        {{}, "New.Json", "/home/user/Documents/New.Json"},
        {{}, "Old", "/home/user/Documents/Old.json"},
        {{}, "Old/a b", "/home/user/Documents/Old/a b.json"},
        {{}, "~/y.json", "/home/user/y.json"},
        {{}, "/tmp/../tmp/y.json", "/tmp/y.json"},
        {{}, "/tmp/", "/tmp | "},
        {{}, "~", "/home/user | "},
        {{}, "..", "/home/user | "},
        {{}, "archive", "/home/user/Documents | “archive.json” is a folder."},
        {{}, "/none/y", "/home/user/Documents | There is no folder “/none”."},
        {{}, "", "/home/user/Documents | "},
        {{}, "  ", "/home/user/Documents | "},
        {PanelContent::json, "Plan.json", "/home/user/Documents/Plan.json"},
        {PanelContent::json, "Plan", "/home/user/Documents/Plan.json"},
        {PanelContent::json, "~/x.json", "/home/user/x.json"},
        {PanelContent::json, ".secret.json", "/home/user/Documents/.secret.json"},
        {PanelContent::json, "Old", "/home/user/Documents/Old | "},
        {PanelContent::json, "notes.txt", "/home/user/Documents | “notes.txt” isn't a JSON file."},
        {PanelContent::json, "/lost.json", "/home/user/Documents | There is no file “/lost.json”."},
        {PanelContent::json, "", "/home/user/Documents | "},
        {PanelContent::json, "/root", "/root | “/root” can't be read: permission denied."},
        {PanelContent::file, "notes.txt", "/home/user/Documents/notes.txt"},
        {PanelContent::file, "/Applications/Quill.app", "/Applications/Quill.app"},
        {PanelContent::folder, "", "/home/user/Documents"},
        {PanelContent::folder, "Old", "/home/user/Documents/Old"},
        {PanelContent::folder, "/", "/"},
        {PanelContent::folder, "notes.txt", "/home/user/Documents | “notes.txt” isn't a folder."},
        {PanelContent::folder, "/lost", "/home/user/Documents | There is no folder “/lost”."},
    };
    for (const auto& [opens, name, expected] : cases) {
        auto panel = opens ? open(*opens) : save();
        panel.setName(name);
        const auto chosen = panel.confirm();
        EXPECT_EQ(chosen.value_or(panel.folder() + " | " + panel.problem()), expected) << name;
    }
    EXPECT_TRUE(desktop.shownAlerts.empty());
}

TEST_F(FilePanelTest, asksBeforeItReplaces) {
    const std::string question = "“Plan.json” already exists. Do you want to replace it?";
    auto panel = save();
    panel.select(3);
    EXPECT_EQ(panel.name(), "Plan.json");
    for (const int button : {0, AlertResponse::secondButton}) {
        desktop.alertAnswers[question] = {button, false};
        EXPECT_EQ(panel.confirm(), std::nullopt);
    }
    desktop.alertAnswers[question] = {AlertResponse::firstButton, false};
    EXPECT_EQ(panel.activate(3), "/home/user/Documents/Plan.json");
    ASSERT_EQ(desktop.shownAlerts.size(), 3u);
    EXPECT_EQ(desktop.shownAlerts[0].buttons, (std::vector<std::string>{"Replace", "Cancel"}));
}

TEST_F(FilePanelTest, aFolderThatTakesNoFilesSaysSoAtOnce) {
    desktop.files.unwritable.insert("/tmp");
    auto panel = save();
    EXPECT_TRUE(panel.canConfirm());
    panel.goTo("/tmp");
    EXPECT_EQ(panel.problem(), "You can't save files in “tmp”.");
    EXPECT_FALSE(panel.canConfirm());
    EXPECT_EQ(panel.confirm(), std::nullopt);
    panel.setName("~/y");
    EXPECT_EQ(panel.problem(), "");
    EXPECT_EQ(panel.confirm(), "/home/user/y.json");
    panel.setName("~/Documents/archive");
    EXPECT_EQ(panel.confirm(), std::nullopt);
    EXPECT_NE(panel.problem(), "");
    panel.setName("~/Documents/archives");
    EXPECT_EQ(panel.problem(), "");
    EXPECT_EQ(open(PanelContent::file, "/tmp").problem(), "");
}

TEST_F(FilePanelTest, goesThroughFoldersByPointerAndKeyboard) {
    auto panel = open(PanelContent::json);
    EXPECT_FALSE(panel.canConfirm());
    panel.selectByPrefix("oL");
    EXPECT_EQ(panel.selected(), 1u);
    EXPECT_EQ(panel.activate(1), std::nullopt);
    EXPECT_EQ(panel.name(), "");
    panel.selectByPrefix("Ä");
    EXPECT_EQ(panel.name(), "äpfel.json");
    panel.selectByPrefix("q");
    EXPECT_EQ(panel.name(), "äpfel.json");
    EXPECT_EQ(panel.ancestors().back(), (PanelPlace{"Old", "/home/user/Documents/Old"}));
    EXPECT_EQ(panel.ancestors().front(), (PanelPlace{"/", "/"}));

    panel.goUp();
    EXPECT_EQ(panel.selected(), 1u) << "where it came from";
    panel.setShowsHidden(true);
    EXPECT_EQ(listed(panel),
              "/home/user/Documents: archive.json/ Old/ .secret.json budget.JSON Plan.json");
    EXPECT_EQ(panel.selected(), 1u);
    EXPECT_EQ(panel.activate(2), "/home/user/Documents/.secret.json");
    EXPECT_EQ(panel.activate(99), std::nullopt);
    panel.goTo("/");
    panel.goUp();
    EXPECT_EQ(panel.folder(), "/");
}

TEST_F(FilePanelTest, keepsTheNameToSaveUnderOnItsWay) {
    auto panel = save();
    panel.setName("Mine");
    panel.activate(1);
    panel.select(0);
    EXPECT_EQ(panel.name(), "2024.json");
    panel.setName("Mine");
    panel.goUp();
    EXPECT_EQ(panel.name(), "Mine") << "a selected folder is no name";
    panel.setName("/tmp");
    EXPECT_EQ(panel.confirm(), std::nullopt);
    EXPECT_EQ(panel.folder() + " " + panel.name(), "/tmp Export.json");
}

} // namespace
} // namespace corvane
