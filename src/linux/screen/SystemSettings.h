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
    /// Tells the user in an alert what to do so that windows can be placed, and waits for the
    /// answer.
    void open();

private:
    WindowSystem& windows_;
    Alerts& alerts_;
};

} // namespace corvane
