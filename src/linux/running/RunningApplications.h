#pragma once

#include "linux/system/ProcessFacts.h"
#include "linux/windows/WindowSystem.h"
#include "platform/Applications.h"

#include <cstdint>
#include <map>
#include <mutex>
#include <optional>
#include <string>
#include <vector>

namespace corvane {

class InstalledApplications;
class LaunchedApplications;

/// No process has a number from there on.
inline constexpr std::int32_t processNumbers = 1 << 22;
/// The process that holds the application of that identifier.
inline pid_t processOf(std::int32_t identifier) {
    return identifier % processNumbers;
}

/// A running application with its windows, bottom to top. Its process may hold others.
struct ShownApplication {
    RunningApplication application = {};
    /// 0 where the display tells no processes.
    pid_t process = 0;
    /// The process that a launcher started, which this one may come from.
    pid_t launchedProcess = 0;
    std::vector<ManagedWindow> windows = {};
    /// A path, or a name where only its desktop entry tells it; empty where neither does.
    std::string program = {};
    /// Draws panels or manages windows: never asked to quit.
    bool belongsToSession = false;
    bool isAloneInProcess = true;
};

/// The applications that run on the display: each (process of this user, installed application)
/// with windows, this program among them, and what it launched that has none yet. Any thread.
class RunningApplications {
public:
    /// All outlive this. `recent` may answer from a reading that is a moment old.
    RunningApplications(const InstalledApplications& installed, WindowSystem& recent,
                        LaunchedApplications& launched)
        : installed_(installed), recent_(recent), launched_(launched) {}

    /// In order of process start; where the display tells no processes, in the order in which the
    /// applications were first seen, without those whose windows name no installed one. Empty where
    /// the display doesn't answer within half a second. An application is regular if one of its
    /// windows is ordinary and in the taskbar; panels and the window manager never are. It is
    /// hidden if all such windows are iconified. What is no installed application has the name of
    /// its window class, and its program for a bundle. The first application of a process has the
    /// process's identifier, each further one a number above all processes', the same for as long
    /// as the process lives.
    std::vector<RunningApplication> list();

    /// The same with the windows; nothing where the display doesn't answer.
    std::optional<std::vector<ShownApplication>> shown();
    std::vector<ShownApplication> shownAmong(const WindowsNow& now);

    /// Brings the uppermost window of the application forward, an iconified one too. False where it
    /// has none, and where the display doesn't say that it is done: a second start brings most
    /// programs forward, and a start that does nothing would be lost.
    bool activate(const RunningApplication& application);
    /// A window of this process as it is now: the one with that title, by its number where several
    /// have it. The toolkit's number counts for nothing on some displays.
    std::optional<ManagedWindow> ownWindow(std::uint64_t number, const std::string& title);

private:
    std::int32_t identifierOf(const ProcessFacts& process, const std::string& desktopId);

    struct Holder {
        std::uint64_t startTime = 0;
        /// Desktop ids in the order in which they were first seen.
        std::vector<std::string> applications;
    };

    const InstalledApplications& installed_;
    WindowSystem& recent_;
    LaunchedApplications& launched_;
    std::mutex mutex_;
    std::map<pid_t, Holder> holders_;
};

} // namespace corvane
