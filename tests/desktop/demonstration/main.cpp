#include "desktop/harness/Desktop.h"
#include "desktop/harness/Scene.h"

#include <cstdio>
#include <exception>

using namespace corvane::desktop;

namespace {

void demonstrate(const std::string& folder) {
    Desktop desktop;
    desktop.skipIntroduction();
    writeFile(desktop.home("Documents/plan.txt"), "Monday: write. Tuesday: read it again.\n");
    writeFile(desktop.home("Documents/Pictures/sketch.txt"), "A sketch.\n");
    writeFile(
        desktop.workspacesFile(),
        workspacesJson(
            {{"Writing",
              "Notes, their folder and a terminal",
              "pencil",
              {{"plan.txt", "file", desktop.home("Documents/plan.txt")},
               {"Pictures", "folder", desktop.home("Documents/Pictures")},
               {"Word count", "terminal", desktop.home("Documents") + "|wc plan.txt"}}},
             {"Accounts", "One file that is gone", "chart.bar", {{"budget", "file", "/gone.csv"}}},
             {"Someday", "", "cloud", {}}}));
    desktop.startCorvane();
    const auto picture = [&](const std::string& name) {
        const auto file = folder + "/" + name + ".png";
        desktop.savePicture(file);
        std::printf("%s\n", file.c_str());
    };
    if (!comesTrue([&] { return desktop.shows("Writing"); })) {
        throw std::runtime_error("no window:\n" + desktop.log());
    }
    picture("1-window");
    desktop.press("Start", "Writing");
    const bool isOpen = comesTrue([&] {
        return desktop.window("mousepad", "plan.txt") && desktop.window("pcmanfm", "Pictures") &&
               desktop.window("xterm");
    });
    picture("2-opened");
    if (!isOpen) throw std::runtime_error("not everything opened:\n" + desktop.log());
    desktop.press("Switch to Dark Mode");
    comesTrue([&] { return desktop.shows("Switch to Light Mode"); });
    picture("3-dark");
}

} // namespace

/// Shows Corvane on a desktop of its own and leaves pictures in the folder that is given.
int main(int argc, char** argv) {
    try {
        demonstrate(argc > 1 ? argv[1] : "out");
        return 0;
    } catch (const std::exception& error) {
        std::fprintf(stderr, "%s\n", error.what());
        return 1;
    }
}
