#pragma once

#include "linux/X11ClientWindows.h"
#include "platform/Applications.h"

#include <cstdint>
#include <mutex>
#include <vector>

namespace corvane {

class Catalogue;

/// The applications that run on the X display: the processes of this user that have a client
/// window, this program among them. Asks the display anew each time, for half a second at most; a
/// display that isn't there or doesn't answer shows no applications. Any thread.
class RunningApplications {
public:
    explicit RunningApplications(const Catalogue& catalogue) : catalogue_(catalogue) {}

    /// In order of process start. An application is regular if one of its windows is ordinary and
    /// in the taskbar, and hidden if all such windows are iconified. What is no installed
    /// application has the name of its window class and no bundle.
    std::vector<RunningApplication> list();

    /// Brings the uppermost window of the process forward, an iconified one too. True when the
    /// window manager was asked; false where the process has no window.
    bool activate(std::int32_t processIdentifier);

private:
    std::vector<x11::ClientWindow> windows(x11::Deadline deadline);

    const Catalogue& catalogue_;
    std::mutex mutex_;
    x11::Connection connection_;
};

} // namespace corvane
