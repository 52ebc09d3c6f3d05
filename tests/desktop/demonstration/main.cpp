#include "desktop/harness/Desktop.h"
#include "desktop/harness/Scene.h"

#include <atomic>
#include <cstdio>
#include <exception>
#include <stdexcept>
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
    return comesTrue([&] {
        return desktop.window("mousepad", "plan.txt") && desktop.window("pcmanfm", "Pictures") &&
               desktop.window("xterm");
    });
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
    desktop.act("Press", "Start", "Writing");
    expect(isOpen(desktop), desktop, "not everything opened");
    desktop.run({"xsetroot", "-solid", "#3d4f63"});
    for (const auto& [window, place] :
         {std::pair("corvane", "0,20,20,950,640"), std::pair("mousepad", "0,990,20,430,400"),
          std::pair("pcmanfm", "0,990,460,430,400"), std::pair("xterm", "0,20,700,950,160")})
        desktop.run({"wmctrl", "-x", "-r", window, "-e", place});
    desktop.act("Press", "Save Layout", "Writing");
    desktop.act("Press", "OK");
    finish();

    std::atomic<bool> isOver = false;
    std::thread camera([&] {
        for (int i = 100; !isOver; ++i)
            desktop.savePicture(folder + "/" + std::to_string(i) + ".png");
    });
    const auto hold = [] { std::this_thread::sleep_for(std::chrono::seconds(2)); };
    hold();
    desktop.act("Press", "Start", "Writing");
    isOpen(desktop);
    hold();
    hold();
    finish();
    hold();
    isOver = true;
    camera.join();
}

} // namespace

/// Shows Corvane on a desktop of its own, and leaves as many pictures in the folder that is given
/// as an eye needs to see a start and a finish.
int main(int argc, char** argv) {
    try {
        film(argc > 1 ? argv[1] : "out");
        return 0;
    } catch (const std::exception& error) {
        std::fprintf(stderr, "%s\n", error.what());
        return 1;
    }
}
