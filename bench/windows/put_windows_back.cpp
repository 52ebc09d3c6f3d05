#include "linux/installed/InstalledApplications.h"
#include "linux/running/LaunchedApplications.h"
#include "linux/running/RunningApplications.h"
#include "linux/screen/LinuxAccessibility.h"
#include "linux/windows/RecentWindows.h"
#include "linux/windows/WindowSystems.h"

#include <iostream>

using namespace corvane;

// put_windows_back PROCESS < FRAMES: puts windows of that process to the frames, lines of number,
// x, y, width and height, and makes sure of each. Fails where one isn't there to the pixel.

int main(int count, char** arguments) {
    if (count < 2) return 1;
    const auto process = static_cast<std::int32_t>(std::atoi(arguments[1]));
    const InstalledApplications installed;
    const auto system = windowSystemHere();
    RecentWindows recent(*system);
    LaunchedApplications launched;
    RunningApplications running(installed, recent, launched);
    LinuxAccessibility accessibility(recent, running);
    std::uint64_t number = 0;
    Rect frame;
    while (std::cin >> number >> frame.x >> frame.y >> frame.width >> frame.height) {
        const auto codes = accessibility.setFrame({process, number}, frame);
        // There is one monitor, so that its pixels are those of the frames.
        const auto window = recent.window({number, process}, halfASecondFromNow());
        const auto seen = window ? window->frame : PixelRect();
        if (seen != PixelRect{{frame.x, frame.y}, {frame.width, frame.height}}) {
            std::cerr << number << " isn't where it should be (" << codes.position
                      << "): " << seen.origin.x << "," << seen.origin.y << " " << seen.size.width
                      << "x" << seen.size.height << "\n";
            return 1;
        }
    }
}
