#include "linux/running/RunningApplications.h"

#include "foundation/Diagnostics.h"
#include "foundation/Text.h"
#include "foundation/Url.h"
#include "linux/installed/InstalledApplications.h"
#include "linux/installed/TerminalEmulator.h"
#include "linux/running/ApplicationIdentity.h"
#include "linux/running/LaunchedApplications.h"
#include "platform/Bundles.h"

#include <algorithm>
#include <tuple>

#include <unistd.h>

namespace corvane {
namespace {

using Windows = std::vector<ManagedWindow>;

/// What the identity of every process is compared with, looked up once for a list.
struct Known {
    std::vector<InstalledApplication> installed;
    InstalledApplications::Roles roles;
    std::optional<InstalledApplication> terminal;
    /// The preferred emulator's name, empty where there is none.
    std::string emulator;
};

Known lookUp(const InstalledApplications& installed) {
    const auto emulator = installed.terminalCommand();
    return {installed.all(), installed.roles(), installed.terminal(),
            emulator ? terminalEmulator::nameOf(emulator->executable) : ""};
}

/// A process that runs and all of its windows, bottom to top.
struct Running {
    ProcessFacts process;
    Windows windows;
};

std::vector<Running> processesOf(const Windows& all) {
    std::map<pid_t, Windows> byProcess;
    for (const auto& window : all)
        byProcess[window.window.process].push_back(window);
    std::vector<Running> found;
    for (auto& [identifier, windows] : byProcess) {
        if (auto process = processFacts(identifier)) {
            found.push_back({std::move(*process), std::move(windows)});
        } else {
            diagnostic({"Passed over the windows of process ", std::to_string(identifier),
                        ": it has ended or isn't this user's"});
        }
    }
    std::ranges::sort(found, {}, [](const Running& running) {
        return std::tie(running.process.startTime, running.process.processIdentifier);
    });
    return found;
}

/// A program that an emulator was started for doesn't make it another application, unless the
/// emulator's window says so by its class.
bool isTerminal(const InstalledApplication* application, const ProcessFacts& process,
                const Known& known) {
    if (application && !application->isTerminalEmulator && !application->needsTerminal) {
        return false;
    }
    return terminalEmulator::nameOf(process.executable) == known.emulator;
}

std::string nameWithoutEntry(const ProcessShare& share, const ProcessFacts& process) {
    for (const auto& window : share.windows) {
        const auto& hints = window.hints;
        for (const auto& name : {hints.className, hints.instanceName, hints.applicationId}) {
            if (!name.empty()) return text::replacingInvalidUtf8(name);
        }
    }
    return text::replacingInvalidUtf8(process.commandName);
}

void setIdentity(RunningApplication& result, const ProcessShare& share, const ProcessFacts& process,
                 const Known& known) {
    const auto* application = share.application;
    if (known.terminal && isTerminal(application, process, known)) application = &*known.terminal;
    if (application) {
        result.localizedName = application->storedName();
        result.bundleIdentifier = application->bundleIdentifier;
        result.bundleURL = Url::fromPath(application->bundlePath);
        result.otherNames = otherNames(*application, known.roles);
    } else {
        const auto name = nameWithoutEntry(share, process);
        if (!name.empty()) result.localizedName = name;
        if (result.executableURL) result.bundleURL = result.executableURL;
    }
    // Also when it runs from a place where it isn't installed.
    if (process.processIdentifier == ::getpid()) result.bundleIdentifier = programIdentifier;
}

ShownApplication described(const ProcessShare& share, const ProcessFacts& process,
                           bool belongsToSession, const Windows& all, const Known& known) {
    ShownApplication shown{.process = process.processIdentifier,
                           .launchedProcess = process.launchedProcess,
                           .windows = share.windows,
                           .program = process.executable,
                           .belongsToSession = belongsToSession};
    auto& result = shown.application;
    result.startTime = process.startTime;
    const std::string& executable = process.executable;
    if (executable.starts_with('/')) result.executableURL = Url::fromPath(executable);
    setIdentity(result, share, process, known);

    Windows counting;
    std::ranges::copy_if(share.windows, std::back_inserter(counting),
                         [&](const ManagedWindow& window) { return isMain(window, all); });
    constexpr int regular = 0;
    constexpr int accessory = 1;
    result.activationPolicy = counting.empty() || belongsToSession ? accessory : regular;
    if (counting.empty()) counting = share.windows;
    result.isHidden = std::ranges::all_of(counting, &ManagedWindow::isMinimized);
    return shown;
}

/// Of windows whose processes nobody tells. One that names no application may be of any, so that
/// none can be told to be in the way then: without a bundle, none is taken for a user's own.
std::vector<ShownApplication> namedAmong(const Windows& windows, const Known& known) {
    std::vector<ProcessShare> shares;
    bool areAllKnown = true;
    for (const auto& window : windows) {
        const auto* application = applicationNamedBy(window.hints, {}, known.installed);
        if (!application)
            application = onlyApplicationOf(window.hints.applicationId, known.installed);
        areAllKnown = areAllKnown && application;
        if (!application) continue;
        auto share = std::ranges::find(shares, application, &ProcessShare::application);
        if (share == shares.end()) share = shares.insert(share, {application, {}});
        share->windows.push_back(window);
    }
    std::vector<ShownApplication> applications;
    for (const auto& share : shares) {
        auto shown = described(share, {}, false, windows, known);
        shown.program = share.application->executable;
        if (!areAllKnown) shown.application.bundleURL.reset();
        applications.push_back(std::move(shown));
    }
    return applications;
}

/// Main ones before others, then by their place.
const ManagedWindow* uppermost(const Windows& windows) {
    const ManagedWindow* found = nullptr;
    for (const auto& window : windows) {
        if (!found || isMain(window, windows) || !isMain(*found, windows)) found = &window;
    }
    return found;
}

} // namespace

std::int32_t RunningApplications::identifierOf(const ProcessFacts& process,
                                               const std::string& desktopId) {
    // As many as fit into the identifier.
    constexpr std::size_t rounds = 512;
    const std::lock_guard lock(mutex_);
    const auto held = holders_.find(process.processIdentifier);
    if (held == holders_.end() || held->second.startTime != process.startTime) {
        // Those that have ended go, now and then: to ask for each takes as long as to list them.
        if (holders_.size() % 64 == 0) {
            std::erase_if(holders_, [](const auto& other) {
                return other.first != 0 && startTimeOf(other.first) != other.second.startTime;
            });
        }
        holders_[process.processIdentifier] = {process.startTime, {}};
    }
    auto& applications = holders_[process.processIdentifier].applications;
    // No application has the identifier 0.
    if (process.processIdentifier == 0 && applications.empty()) applications.emplace_back();
    auto place = std::ranges::find(applications, desktopId);
    if (place == applications.end() && applications.size() < rounds)
        place = applications.insert(place, desktopId);
    if (place == applications.end()) return 0;
    return process.processIdentifier +
           static_cast<std::int32_t>(place - applications.begin()) * processNumbers;
}

std::vector<ShownApplication> RunningApplications::shownAmong(const WindowsNow& now) {
    const Known known = lookUp(installed_);
    auto processes = now.tellsProcesses ? processesOf(now.windows) : std::vector<Running>();
    std::set<pid_t> withWindows;
    for (const auto& running : processes)
        withWindows.insert(running.process.processIdentifier);
    std::vector<ShownApplication> applications;
    std::set<std::string> ids;
    for (auto& [process, windows] : processes) {
        if (!applicationStartedAs(process, known.installed))
            process.launchedDesktopFile = launched_.entryBehind(process, withWindows);
        const bool belongsToSession =
            now.session.contains(process.processIdentifier) ||
            std::ranges::count(windows, WindowKind::dock, &ManagedWindow::kind) > 0;
        const auto shares = sharesOf(process, windows, known.installed);
        for (const auto& share : shares) {
            auto shown = described(share, process, belongsToSession, now.windows, known);
            const auto id = share.application ? share.application->desktopId : std::string();
            ids.insert(id);
            shown.application.processIdentifier = identifierOf(process, id);
            shown.isAloneInProcess = shares.size() == 1;
            applications.push_back(std::move(shown));
        }
    }
    for (auto& shown :
         now.tellsProcesses ? std::vector<ShownApplication>() : namedAmong(now.windows, known)) {
        const auto id = shown.application.bundleIdentifier.value_or("") + ".desktop";
        ids.insert(id);
        shown.application.processIdentifier = identifierOf({}, id);
        applications.push_back(std::move(shown));
    }
    for (const auto& [application, process] : launched_.underway(ids)) {
        auto shown = described({&application, {}}, process, false, {}, known);
        shown.application.processIdentifier = identifierOf(process, application.desktopId);
        shown.application.activationPolicy = 0;
        shown.application.isHidden = false;
        applications.push_back(std::move(shown));
    }
    return applications;
}

std::optional<std::vector<ShownApplication>> RunningApplications::shown() {
    const auto now = recent_.windows(halfASecondFromNow());
    return now ? std::optional(shownAmong(*now)) : std::nullopt;
}

std::vector<RunningApplication> RunningApplications::list() {
    std::vector<RunningApplication> applications;
    for (auto& each : shown().value_or(std::vector<ShownApplication>()))
        applications.push_back(std::move(each.application));
    return applications;
}

bool RunningApplications::activate(const RunningApplication& application) {
    for (const auto& each : shown().value_or(std::vector<ShownApplication>())) {
        if (each.application.processIdentifier != application.processIdentifier ||
            each.application.startTime != application.startTime) {
            continue;
        }
        const auto* window = uppermost(each.windows);
        return window &&
               recent_.activate(window->window, halfASecondFromNow()) == WindowAnswer::done;
    }
    return false;
}

std::optional<ManagedWindow> RunningApplications::ownWindow(std::uint64_t number,
                                                            const std::string& title) {
    const auto deadline = halfASecondFromNow();
    const auto isTitled = [&](const ManagedWindow& window) {
        return window.title && window.title->starts_with(title);
    };
    // One that has just come is in no list yet.
    const auto numbered = recent_.window({number, ::getpid()}, deadline);
    if (numbered && isTitled(*numbered)) return numbered;
    const auto now = recent_.windows(deadline);
    if (!now) return std::nullopt;
    // The number alone may be another window's, where the toolkit counts by itself; and it may have
    // put the program's name behind the title.
    const auto likeness = [&](const ManagedWindow& window) {
        const bool isOurs = now->tellsProcesses ? window.window.process == ::getpid()
                                                : window.hints.applicationId == programIdentifier;
        if (!isOurs) return 0;
        return (isTitled(window) ? 2 : 0) + (window.window.number == number ? 1 : 0);
    };
    const auto best = std::ranges::max_element(now->windows, {}, likeness);
    if (best == now->windows.end() || likeness(*best) == 0) return std::nullopt;
    return *best;
}

} // namespace corvane
