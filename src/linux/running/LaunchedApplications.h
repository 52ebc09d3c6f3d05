#pragma once

#include "linux/installed/InstalledApplication.h"
#include "linux/system/ProcessFacts.h"

#include <chrono>
#include <mutex>
#include <set>
#include <string>
#include <vector>

namespace corvane {

/// An application that was launched and shows nothing yet.
struct LaunchUnderway {
    InstalledApplication application;
    /// The one that was started, or where that has ended one that comes from it.
    ProcessFacts process;
};

/// What this program launched a moment ago. A large program takes its time to show a window, and a
/// wrapper ends before what it started does. Any thread.
class LaunchedApplications {
public:
    /// Such a launch is forgotten after a minute.
    explicit LaunchedApplications(std::chrono::seconds longest = std::chrono::minutes(1))
        : longest_(longest) {}

    /// An emulator isn't remembered: what is started in it is no part of it.
    void add(const InstalledApplication& application, const std::vector<pid_t>& processes);
    /// Those of which a process is there, but for applications that have a window already, given by
    /// their desktop ids.
    std::vector<LaunchUnderway> underway(const std::set<std::string>& shown);
    /// The desktop entry for which a launched process's descendant was started in time, unless the
    /// launched process itself is among those with windows; empty for all others.
    std::string entryBehind(const ProcessFacts& process, const std::set<pid_t>& withWindows);

private:
    struct Launch {
        InstalledApplication application;
        pid_t process = 0;
        std::uint64_t startTime = 0;
        std::chrono::steady_clock::time_point moment;
        bool isUnderway = true;
    };

    const std::chrono::seconds longest_;
    std::mutex mutex_;
    std::vector<Launch> launches_;
};

} // namespace corvane
