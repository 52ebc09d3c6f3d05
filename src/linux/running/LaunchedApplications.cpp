#include "linux/running/LaunchedApplications.h"

#include <algorithm>

#include <unistd.h>

namespace corvane {
namespace {

/// Enough to tell the windows of a long day's launches.
constexpr std::size_t mostLaunches = 256;

std::optional<ProcessFacts> livingProcessOf(pid_t launched, std::uint64_t startTime) {
    auto process = processFacts(launched);
    if (process && process->startTime == startTime) return process;
    for (const auto descendant : processesLaunchedAs(launched)) {
        process = processFacts(descendant);
        // A number that was given again would name an older launch's descendants.
        if (process && process->startTime >= startTime) return process;
    }
    return std::nullopt;
}

} // namespace

void LaunchedApplications::add(const InstalledApplication& application,
                               const std::vector<pid_t>& processes) {
    if (application.isTerminalEmulator || application.needsTerminal) return;
    const std::lock_guard lock(mutex_);
    for (const auto process : processes) {
        // One that has ended by now started nothing that could be told from others.
        const auto startTime = startTimeOf(process);
        if (!startTime) continue;
        launches_.push_back({application, process, *startTime, std::chrono::steady_clock::now()});
    }
    if (launches_.size() > mostLaunches)
        launches_.erase(launches_.begin(), launches_.end() - mostLaunches);
}

std::vector<LaunchUnderway> LaunchedApplications::underway(const std::set<std::string>& shown) {
    const std::lock_guard lock(mutex_);
    std::vector<LaunchUnderway> result;
    for (auto& launch : launches_) {
        if (!launch.isUnderway) continue;
        const bool isLate = std::chrono::steady_clock::now() - launch.moment > longest_;
        auto process = isLate || shown.contains(launch.application.desktopId)
                           ? std::nullopt
                           : livingProcessOf(launch.process, launch.startTime);
        launch.isUnderway = process.has_value();
        if (process) result.push_back({launch.application, std::move(*process)});
    }
    return result;
}

std::string LaunchedApplications::entryBehind(const ProcessFacts& process,
                                              const std::set<pid_t>& withWindows) {
    const auto ticks = static_cast<std::uint64_t>(longest_.count() * ::sysconf(_SC_CLK_TCK));
    const std::lock_guard lock(mutex_);
    const auto launch = std::ranges::find_if(launches_, [&](const Launch& each) {
        return each.process == process.launchedProcess && process.startTime >= each.startTime &&
               process.startTime - each.startTime <= ticks;
    });
    const bool isWrapped = launch != launches_.end() && !withWindows.contains(launch->process);
    return isWrapped ? launch->application.desktopFile : std::string();
}

} // namespace corvane
