#pragma once

#include "platform/Platform.h"

#include <memory>

namespace corvane {

class EventThread;

/// The facilities that a user-interface toolkit provides.
struct Toolkit {
    MainQueue& mainQueue;
    Alerts& alerts;
    ApplicationObject& application;
    StatusBar& statusBar;
    Images& images;
    Appearance& appearance;
    Panels& panels;
};

/// The desktop that is there: X11, freedesktop entries, processes, files. Everything is found
/// through the environment of this process.
class LinuxDesktop {
public:
    /// The toolkit's facilities and the session's events outlive the desktop.
    LinuxDesktop(const Toolkit& toolkit, EventThread& events);
    /// Waits for background work.
    ~LinuxDesktop();

    /// Valid while the desktop lives.
    Platform platform();

private:
    struct Facilities;
    std::unique_ptr<Facilities> facilities_;
};

} // namespace corvane
