#pragma once

#include "linux/windows/x11/X11ClientWindows.h"
#include "platform/Applications.h"

#include <cstdint>
#include <mutex>
#include <optional>
#include <vector>

namespace corvane {

class InstalledApplications;

/// The applications that run on the X display: the processes of this user that have a client
/// window, this program among them. Asks the display anew each time, for half a second at most; a
/// display that isn't there or doesn't answer shows no applications. Any thread.
class RunningApplications {
public:
    explicit RunningApplications(const InstalledApplications& installed) : installed_(installed) {}

    /// In order of process start. An application is regular if one of its windows is ordinary and
    /// in the taskbar; panels and the window manager never are. It is hidden if all such windows
    /// are iconified. What is no installed application has the name of its window class and no
    /// bundle.
    std::vector<RunningApplication> list();

    /// Brings the uppermost window of the process forward, an iconified one too. True when the
    /// window manager was asked; false where the process has no window.
    bool activate(std::int32_t processIdentifier);

    /// Asks each of the process's windows to close, those above others first, and sends SIGTERM to
    /// a process that has none left. A desktop that a file manager draws stays. True when all was
    /// sent. False for this program, the window manager, the X server and panels, for a process
    /// that has ended, another one in its place included, and where the display doesn't answer.
    bool terminate(const RunningApplication& application);
    /// Kills the process. False as above, for one that draws the desktop, for one that the display
    /// isn't connected with, and as long as the display left the last question unanswered.
    bool forceTerminate(const RunningApplication& application);

private:
    std::optional<x11::Clients> clients(x11::Deadline deadline);

    const InstalledApplications& installed_;
    std::mutex mutex_;
    x11::Connection connection_;
    /// What couldn't be asked to quit because the display was busy may hold unsaved work.
    bool wasAnswered_ = true;
};

} // namespace corvane
