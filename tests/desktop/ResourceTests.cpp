#include "desktop/DesktopTest.h"
#include "foundation/PropertyList.h"

#include <filesystem>

namespace corvane::desktop {
namespace {

class Resources : public DesktopTest {
protected:
    void open() {
        writeFile(note, "A note\n");
        start({{"Work", "", "star", {{"note.txt", "file", note}, {"Run", "terminal", "true"}}}});
        ASSERT_TRUE(desktop.press("Resources", "Work"));
        ASSERT_TRUE(comes("Drag anything from Finder to add resources"));
    }
    bool isStored(const std::string& text) {
        return comesTrue(
            [&] { return readFile(desktop.workspacesFile()).find(text) != std::string::npos; }, 20);
    }
    std::string place(const std::string& name) {
        const auto file = readFile(desktop.workspacesFile());
        return file.substr(0, file.find("\"name\":\"" + name + "\""));
    }
    /// Where a file manager without a side pane has its first icon.
    Point showFolder(const std::string& folder) {
        writeFile(desktop.home(".config/pcmanfm/default/pcmanfm.conf"),
                  "[ui]\nside_pane_mode=hidden;places\nshow_statusbar=0\n");
        fileManager = desktop.start({"pcmanfm", folder});
        EXPECT_TRUE(opens("pcmanfm", "Things"));
        desktop.run({"wmctrl", "-r", "Corvane", "-e", "0,0,0,-1,-1"});
        desktop.run({"wmctrl", "-r", "Things", "-e", "0,1010,0,420,500"});
        return {1070, 110};
    }

    const std::string note = desktop.home("Documents/note.txt");
    std::unique_ptr<Process> fileManager;
};

TEST_F(Resources, whatIsDroppedIsListedAndRowsAreDraggedIntoTheirOrder) {
    desktop.install("pad", "Pad", "xterm");
    writeFile(desktop.home("Things/notes.txt"), "Notes\n");
    writeFile(desktop.home("Things/Pictures/sketch.txt"), "");
    std::filesystem::copy(desktop.home(".local/share/applications/pad.desktop"),
                          desktop.home("Things/pad.desktop"));
    open();
    const auto icon = showFolder(desktop.home("Things"));
    const auto list = desktop.middleOf("note.txt");
    ASSERT_TRUE(list);
    EXPECT_TRUE(comesTrue(
        [&] {
            desktop.run({"wmctrl", "-a", "Things"});
            desktop.run({"xdotool", "mousemove", "1300", "450", "click", "1", "key", "ctrl+a"});
            desktop.drag(icon, *list);
            return isStored("Pad");
        },
        60));
    const auto things = desktop.home("Things");
    const auto file = readFile(desktop.workspacesFile());
    for (const auto& text :
         {"\"name\":\"notes.txt\",\"path\":\"" + things + "/notes.txt\",\"type\":\"file\"",
          "\"name\":\"Pictures\",\"path\":\"" + things + "/Pictures\",\"type\":\"folder\"",
          std::string("\"name\":\"Pad\",\"path\":\"/Applications/Pad.app\",\"type\":\"app")}) {
        EXPECT_NE(file.find(text), std::string::npos) << text << "\n" << file;
    }
    fileManager.reset();

    const auto run = desktop.middleOf("Move", "Run");
    const auto first = desktop.middleOf("Move", "note.txt");
    ASSERT_TRUE(run && first);
    EXPECT_LT(place("note.txt").size(), place("Run").size());
    desktop.drag(*run, *first);
    EXPECT_TRUE(comesTrue([&] { return place("Run").size() < place("note.txt").size(); }, 20));
    EXPECT_LT(place("note.txt").size(), place("Pad").size());
}

TEST_F(Resources, aChosenApplicationIsAChipAndAResetAsksFirst) {
    // Stands first in the list, whatever else the machine has.
    desktop.install("aardvark", "Aardvark", "true");
    open();
    ASSERT_TRUE(desktop.press("Add App", "note.txt"));
    ASSERT_TRUE(comes("Select an application to add to this resource"));
    ASSERT_TRUE(desktop.press("Aardvark"));
    ASSERT_TRUE(desktop.press("Open"));
    EXPECT_TRUE(isStored("\"associatedApps\":[\"Aardvark\"]"));
    EXPECT_TRUE(comes("Remove Aardvark"));

    openSettings();
    const auto preferences = readFile(desktop.preferencesFile());
    EXPECT_NE(preferences, "");
    const auto* question = "Are you sure you want to reset all preferences to default values?";
    ASSERT_TRUE(desktop.press("Reset Preferences"));
    EXPECT_TRUE(answer(question, "Cancel"));
    EXPECT_EQ(readFile(desktop.preferencesFile()), preferences);
    ASSERT_TRUE(desktop.press("Reset Preferences"));
    EXPECT_TRUE(answer(question, "Reset"));
    EXPECT_TRUE(answer("Preferences have been reset to defaults. Please restart the app.", "OK"));
    EXPECT_EQ(readFile(desktop.preferencesFile()),
              PropertyList{PropertyList::Dictionary()}.toBinary());
    ASSERT_TRUE(desktop.press("Done"));
    EXPECT_EQ(closeWindow(), 0);
}

} // namespace
} // namespace corvane::desktop
