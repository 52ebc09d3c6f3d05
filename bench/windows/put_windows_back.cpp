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
    Point position;
    Size size;
    while (std::cin >> number >> position.x >> position.y >> size.width >> size.height) {
        const AccessibilityWindow window{process, number};
        const auto codes =
            accessibility.setFrame(window, {position.x, position.y, size.width, size.height});
        const auto there = accessibility.position(window);
        const auto big = accessibility.size(window);
        if (there != position || big != size) {
            std::cerr << number << " isn't where it should be (" << codes.position << "): "
                      << there.value_or(Point()).x << "," << there.value_or(Point()).y << " "
                      << big.value_or(Size()).width << "x" << big.value_or(Size()).height << "\n";
            return 1;
        }
    }
}
