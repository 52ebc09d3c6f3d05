#pragma once

#include "foundation/Url.h"

namespace corvane {

class Alerts;
class WindowSystem;

/// What stands here for the settings in which a Mac allows programs to place windows. Main thread.
class SystemSettings {
public:
    /// Both outlive this.
    SystemSettings(WindowSystem& windows, Alerts& alerts) : windows_(windows), alerts_(alerts) {}

    static bool areMeantBy(const Url& url);
    /// Switches on what lets windows be placed, where a program may do that, waits two seconds for
    /// it at most, and tells the user in an alert what came of it and what is left to do.
    void open();

private:
    WindowSystem& windows_;
    Alerts& alerts_;
};

} // namespace corvane
