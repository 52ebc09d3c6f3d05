#include "desktop/harness/Desktop.h"
#include "desktop/harness/Scene.h"

#include <atomic>
#include <cstdio>
#include <exception>
#include <stdexcept>
#include <string_view>
#include <thread>

using namespace corvane::desktop;

namespace {

void expect(bool isTrue, const Desktop& desktop, const std::string& what) {
    if (!isTrue) throw std::runtime_error(what + ":\n" + desktop.log());
}

/// A home with three workspaces, and Corvane in front of it.
void begin(Desktop& desktop) {
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
    expect(comesTrue([&] { return desktop.shows("Writing"); }), desktop, "no window");
}

bool isOpen(const Desktop& desktop) {
    constexpr double patience = 60;
    return comesTrue(
        [&] {
            return desktop.window("mousepad", "plan.txt") &&
                   desktop.window("pcmanfm", "Pictures") && desktop.window("xterm");
        },
        patience);
}

/// Starts the first workspace and puts the windows beside each other.
void startAndArrange(Desktop& desktop) {
    desktop.act("Press", "Start", "Writing");
    expect(isOpen(desktop), desktop, "not everything opened");
    for (const auto& [name, place] :
         {std::pair("corvane", "20,20 950x660"), std::pair("mousepad", "990,20 430x420"),
          std::pair("pcmanfm", "990,460 430x420"), std::pair("xterm", "20,720 950x160")})
        if (const auto window = desktop.window(name)) desktop.screen().place(*window, place);
}

void rest() {
    std::this_thread::sleep_for(std::chrono::seconds(2));
}

/// The desk of a workspace that runs, by day and by night.
void photograph(const std::string& folder) {
    Desktop desktop;
    begin(desktop);
    startAndArrange(desktop);
    rest();
    desktop.savePicture(folder + "/day.png");
    desktop.act("Press", "Switch to Dark Mode");
    rest();
    desktop.savePicture(folder + "/night.png");
}

/// Five pictures a second of a start that puts windows back, and of the finish.
void film(const std::string& folder) {
    Desktop desktop;
    begin(desktop);
    const auto finish = [&] {
        desktop.act("Press", "Finish", "Writing");
        desktop.act("Press", "Finish & Close");
        desktop.act("Press", "OK");
        expect(!desktop.window("mousepad") && desktop.middleOf("Start", "Writing"), desktop,
               "no finish");
    };
    desktop.act("Press", "Settings");
    desktop.act("Toggle", "Window Layout Features");
    desktop.act("Press", "Done");
    desktop.run({"xsetroot", "-solid", "#3d4f63"});
    startAndArrange(desktop);
    desktop.act("Press", "Save Layout", "Writing");
    desktop.act("Press", "OK");
    finish();

    std::atomic<bool> isOver = false;
    std::thread camera([&] {
        for (int i = 100; !isOver; ++i)
            desktop.savePicture(folder + "/" + std::to_string(i) + ".png");
    });
    rest();
    desktop.act("Press", "Start", "Writing");
    isOpen(desktop);
    rest();
    rest();
    finish();
    rest();
    isOver = true;
    camera.join();
}

} // namespace

/// Shows Corvane on a desktop of its own, and leaves as many pictures in the folder that is given
/// as an eye needs to see a start and a finish; with "desk" behind it, two of what a start brings.
int main(int argc, char** argv) {
    try {
        const std::string folder = argc > 1 ? argv[1] : "out";
        argc > 2 && argv[2] == std::string_view("desk") ? photograph(folder) : film(folder);
        return 0;
    } catch (const std::exception& error) {
        std::fprintf(stderr, "%s\n", error.what());
        return 1;
    }
}
