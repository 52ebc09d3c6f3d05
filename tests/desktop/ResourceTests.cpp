#include "desktop/DesktopTest.h"

#include <filesystem>
#include <optional>
#include <utility>

namespace corvane::desktop {
namespace {

class Resources : public DesktopTest {
protected:
    /// The saved names of all workspaces and resources, in order.
    std::string order() {
        const auto file = readFile(desktop.workspacesFile());
        const std::string mark = "\"name\":\"";
        std::string names;
        for (auto at = file.find(mark); at != std::string::npos; at = file.find(mark, at)) {
            at += mark.size();
            names += file.substr(at, file.find('"', at) - at) + "|";
        }
        return names;
    }
    bool becomes(const std::string& part) {
        return comesTrue([&] { return order().find(part) != std::string::npos; });
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

    std::unique_ptr<Process> fileManager;
};

TEST_F(Resources, whatIsDroppedIsListedAndRowsAreDraggedIntoTheirOrder) {
    desktop.install("pad", "Pad", "xterm");
    writeFile(desktop.home("Things/notes.txt"), "Notes\n");
    writeFile(desktop.home("Things/Pictures/sketch.txt"), "");
    std::filesystem::copy(desktop.home(".local/share/applications/pad.desktop"),
                          desktop.home("Things/pad.desktop"));
    start({{"Work", "", "star", {{"note.txt", "file", "/note"}, {"Run", "terminal", "true"}}}});
    ASSERT_TRUE(desktop.press("Resources", "Work"));
    ASSERT_TRUE(comes("Drag anything from Finder to add resources"));
    const auto icon = showFolder(desktop.home("Things"));
    const auto list = desktop.middleOf("note.txt");
    ASSERT_TRUE(list);
    EXPECT_TRUE(comesTrue(
        [&] {
            desktop.run({"wmctrl", "-a", "Things"});
            desktop.run({"xdotool", "mousemove", "1300", "450", "click", "1", "key", "ctrl+a"});
            desktop.drag(icon, *list);
            return isSaved("Pad");
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
    EXPECT_TRUE(becomes("Work|note.txt|Run|"));
    desktop.drag(*run, *first);
    EXPECT_TRUE(becomes("Work|Run|note.txt|"));
}

TEST_F(Resources, aDraggedRowIsSeenAndGoesOnAtAnEdgeButNotToAnotherCard) {
    std::vector<SceneResource> rows;
    for (char name = 'a'; name <= 'l'; ++name)
        rows.push_back({{name}, "terminal", "true"});
    const std::vector<SceneResource> two{{"one", "terminal", "true"}, {"two", "terminal", "true"}};
    start({{"Work", "", "star", rows}, {"Home", "", "star", two}, {"Homely", "", "star", two}});
    ASSERT_TRUE(comes("Work"));
    desktop.run({"wmctrl", "-r", "Corvane", "-e", "0,0,0,1000,850"});
    ASSERT_TRUE(desktop.press("Resources", "Work"));
    const auto handle = desktop.middleOf("Move", "a");
    ASSERT_TRUE(handle);
    Rect row, window;
    for (const auto& control : desktop.controls()) {
        if (control.isWindow) window = control.place;
        if (control.role == "list item" && control.name == "a") row = control.place;
    }
    EXPECT_FALSE(desktop.shows("Launch l"));
    const int end = int(row.y + window.height) - 280;
    desktop.carry(*handle, {handle->x, end - 12});
    const auto size = std::to_string(int(row.width)) + "x" + std::to_string(int(row.height));
    const auto shown = desktop.run({"xwininfo", "-root", "-tree"});
    EXPECT_NE(shown.find(" " + size + "+"), std::string::npos) << size << shown;
    EXPECT_TRUE(comes("Launch l")) << "the list goes on";
    desktop.run({"xdotool", "mouseup", "1"});

    ASSERT_TRUE(desktop.act("SetFocus", "Search workspaces..."));
    desktop.run({"xdotool", "type", "Home"});
    // Cards take others' places with each letter.
    std::optional<Point> home, homely;
    ASSERT_TRUE(comesTrue([&] {
        const auto isStill = [&](std::optional<Point>& place, const char* card) {
            const auto before = std::exchange(place, desktop.middleOf("Resources", card));
            return before && place && before->x == place->x && before->y == place->y;
        };
        const bool areStill = isStill(home, "Home") & isStill(homely, "Homely");
        return areStill && !desktop.shows("Launch l");
    }));
    for (const auto* card : {"Home", "Homely"}) {
        ASSERT_TRUE(desktop.act("Press", "Resources", card));
        ASSERT_TRUE(desktop.middleOf("Move", card)) << card;
    }
    const auto from = desktop.middleOf("Move", "Homely");
    const auto other = desktop.middleOf("Launch one", "Home");
    const auto own = desktop.middleOf("Launch one", "Homely");
    ASSERT_TRUE(from && other && own);
    desktop.drag(*from, *other);
    desktop.drag(*from, *own);
    EXPECT_TRUE(becomes("|Home|one|two|Homely|two|one|")) << order();
}

} // namespace
} // namespace corvane::desktop
