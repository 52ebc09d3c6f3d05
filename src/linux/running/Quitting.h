#pragma once

#include "linux/windows/WindowSystem.h"
#include "platform/Applications.h"

#include <functional>
#include <mutex>
#include <set>
#include <utility>

namespace corvane {

class RunningApplications;
struct ShownApplication;

/// Asks applications to quit, and ends those that said no. Each question is put to the display
/// anew, for half a second at most; behind one that it left unanswered none is put for a second.
/// Any thread.
class Quitting {
public:
    /// Asks the user, later, whether these running processes may be terminated, and calls
    /// `terminate` where they may.
    using AskAboutJobs =
        std::function<void(std::vector<std::string> names, std::function<void()> terminate)>;

    /// All outlive this. The window system is the bare one: what it said a moment ago won't do.
    Quitting(WindowSystem& windows, RunningApplications& running, AskAboutJobs askAboutJobs)
        : windows_(windows), running_(running), askAboutJobs_(std::move(askAboutJobs)) {}

    /// Asks each of the application's windows that takes such a request to close, those above
    /// others first. A desktop that a file manager draws stays. Where a terminal emulator would
    /// close them without a question while a job runs in them, or may run where its process isn't
    /// told, the user is asked first. True when
    /// one or the user was asked, and for what was asked before and has lost its last window since.
    /// False for this program and the session's own, for what has ended, another process in its
    /// place included, for what has no window that can be asked, and where the display doesn't
    /// answer. No process gets a signal.
    bool terminate(const RunningApplication& application);
    /// Kills the process of an application that was asked and still shows windows, if it shows no
    /// other application's. False as above, for one that draws the desktop, for one that the
    /// display doesn't tell to be connected, and for one that was never asked.
    bool forceTerminate(const RunningApplication& application);

private:
    std::optional<WindowsNow> ask();
    std::optional<ShownApplication> targetOf(const RunningApplication& application,
                                             const WindowsNow& now);
    bool askToClose(const RunningApplication& application, bool jobsMayEnd);

    /// A process for good, by its start, and what of it.
    using Name = std::pair<std::int32_t, std::uint64_t>;

    WindowSystem& windows_;
    RunningApplications& running_;
    const AskAboutJobs askAboutJobs_;
    std::mutex mutex_;
    std::set<Name> asked_;
    Deadline silentUntil_;
};

} // namespace corvane
