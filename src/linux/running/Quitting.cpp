#include "linux/running/Quitting.h"

#include "foundation/Diagnostics.h"
#include "linux/installed/TerminalEmulator.h"
#include "linux/running/RunningApplications.h"
#include "linux/system/ProcessFacts.h"
#include "platform/Bundles.h"

#include <algorithm>
#include <csignal>
#include <ranges>

#include <unistd.h>

namespace corvane {
namespace {

bool isDesktop(const ManagedWindow& window) {
    return window.kind == WindowKind::desktop;
}

} // namespace

/// Nothing where the display doesn't answer. A list of applications is gone through one by one, and
/// each would wait for a display that is stuck.
std::optional<WindowsNow> Quitting::ask() {
    constexpr auto pause = std::chrono::seconds(1);
    if (std::chrono::steady_clock::now() < silentUntil_) return std::nullopt;
    auto now = windows_.windows(halfASecondFromNow());
    if (!now) {
        silentUntil_ = std::chrono::steady_clock::now() + pause;
        diagnostic({"The display doesn't tell its windows"});
    }
    return now;
}

/// Nothing for what is never asked to quit, and for what isn't what was listed.
std::optional<ShownApplication> Quitting::targetOf(const RunningApplication& application,
                                                   const WindowsNow& now) {
    for (auto& shown : running_.shownAmong(now)) {
        if (shown.application.processIdentifier != application.processIdentifier) continue;
        const bool isOurs =
            shown.process == ::getpid() ||
            (shown.process == 0 && shown.application.bundleIdentifier == programIdentifier);
        if (isOurs || shown.belongsToSession ||
            shown.application.startTime != application.startTime ||
            shown.application.bundleIdentifier != application.bundleIdentifier) {
            return std::nullopt;
        }
        return std::move(shown);
    }
    return std::nullopt;
}

bool Quitting::terminate(const RunningApplication& application) {
    return askToClose(application, false);
}

bool Quitting::askToClose(const RunningApplication& application, bool jobsMayEnd) {
    const std::lock_guard lock(mutex_);
    const auto now = ask();
    if (!now) return false;
    const Name name{application.processIdentifier, application.startTime};
    const auto target = targetOf(application, *now);
    if (!target) {
        // What was asked and has no window any more is on its way, as long as it is there.
        return asked_.contains(name) && startTimeOf(processOf(name.first)) == name.second;
    }
    // A question is above the window that it belongs to. Closed first, it is asked again; the other
    // way round it would go and leave its window with no answer.
    std::vector<WindowRef> windows;
    for (const auto& window : target->windows | std::views::reverse) {
        if (!isDesktop(window) && window.canBeAskedToClose) windows.push_back(window.window);
    }
    if (windows.empty()) return false;
    std::vector<std::string> jobs;
    if (!jobsMayEnd && terminalEmulator::closesUnasked(target->program)) {
        if (target->process > 0) jobs = foregroundJobsBelow(target->process);
        // Nobody tells whether something runs in it.
        if (target->process == 0) jobs = {target->application.localizedName.value_or("?")};
    }
    if (!jobs.empty()) {
        // Whoever answers "Cancel" wasn't asked by a window, so nothing may be ended by force.
        askAboutJobs_(std::move(jobs), [this, application] { askToClose(application, true); });
        return true;
    }
    const auto answer = windows_.askToClose(windows, halfASecondFromNow());
    if (answer == WindowAnswer::unanswered) return false;
    // Those that have ended go, now and then.
    if (asked_.size() % 64 == 0) {
        std::erase_if(asked_, [](const Name& other) {
            return startTimeOf(processOf(other.first)) != other.second;
        });
    }
    asked_.insert(name);
    return true;
}

bool Quitting::forceTerminate(const RunningApplication& application) {
    const std::lock_guard lock(mutex_);
    if (!asked_.contains({application.processIdentifier, application.startTime})) return false;
    const auto now = ask();
    const auto target = now ? targetOf(application, *now) : std::nullopt;
    return target && target->isAloneInProcess && std::ranges::none_of(target->windows, isDesktop) &&
           now->connected && now->connected->contains(target->process) &&
           sendSignal(target->process, application.startTime, SIGKILL);
}

} // namespace corvane
