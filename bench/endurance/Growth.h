#pragma once

#include "desktop/harness/Desktop.h"

#include <string>

namespace corvane::endurance {

/// What a process holds: memory in KiB, open files, child processes, resources of the X server.
struct Holdings {
    long memoryInKiB = 0;
    long files = 0;
    long children = 0;
    long displayResources = 0;
};

/// Prints now and then what the Corvane of a desktop holds, and sees that it holds no more after
/// the last round than after the first ones, which fill its caches.
class Growth {
public:
    Growth(desktop::Desktop& desktop, int rounds, int firstRounds, int step);

    /// Throws std::runtime_error after the last round where something has grown.
    void after(int round);

private:
    desktop::Desktop& desktop_;
    int rounds_;
    int firstRounds_;
    int step_;
    Holdings first_;
};

/// Throws std::runtime_error with that text.
void expect(bool isTrue, const std::string& what);

/// Of the display that DISPLAY names, printed: the resources that it keeps for a process.
int printDisplayResources(unsigned process);

} // namespace corvane::endurance
