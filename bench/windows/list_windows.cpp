#include "linux/installed/InstalledApplications.h"
#include "linux/running/LaunchedApplications.h"
#include "linux/running/RunningApplications.h"
#include "linux/screen/LinuxWindowList.h"
#include "linux/windows/RecentWindows.h"
#include "linux/windows/WindowSystems.h"

#include <cstdio>

using namespace corvane;

// Prints what `wmctrl -lGp` does: number, process, frame, owner and title of each window.

int main() {
    const InstalledApplications installed;
    const auto system = windowSystemHere();
    RecentWindows recent(*system);
    LaunchedApplications launched;
    RunningApplications running(installed, recent, launched);
    LinuxWindowList list(recent, running);
    const auto windows = list.onScreenWindows();
    if (!windows) return 1;
    for (const auto& window : *windows) {
        std::printf("0x%08lx %d %g %g %g %g %s %s\n", static_cast<unsigned long>(*window.number),
                    window.ownerPID.value_or(0), *window.bounds->x, *window.bounds->y,
                    *window.bounds->width, *window.bounds->height,
                    window.ownerName.value_or("?").c_str(), window.name.value_or("?").c_str());
    }
}
