#pragma once

#include "platform/Platform.h"
#include "qt/toolkit/MainWindows.h"
#include "qt/toolkit/QtAlerts.h"
#include "qt/toolkit/QtAppearance.h"
#include "qt/toolkit/QtImages.h"
#include "qt/toolkit/QtMainQueue.h"
#include "qt/toolkit/QtPanels.h"

#include <QQmlEngine>

namespace corvane {

class CorvaneApp;

/// Qt's facilities and the windows of the program. Needs an application object; main thread.
class QtToolkit {
public:
    /// The tray outlives this. The system's preference as QtAppearance takes it.
    explicit QtToolkit(
        StatusBar& tray,
        QtAppearance::Preference prefersDark = [] { return std::optional<bool>(); });

    /// File panels over these windows; they go before this does.
    QtPanels panels(const Machine& machine) { return {engine_, windows_, alerts_, machine}; }
    /// Valid while this and the panels live.
    Toolkit facilities(Panels& panels);
    MainQueue& mainQueue() { return mainQueue_; }
    Alerts& alerts() { return alerts_; }
    MainWindows& windows() { return windows_; }
    /// What the system prefers was read too early.
    void readAppearanceAgain() { appearance_.readAgain(); }

    /// Shows the program until it ends, and returns its exit status.
    int run(CorvaneApp& app);

private:
    StatusBar& tray_;
    QtMainQueue mainQueue_;
    QtAppearance appearance_;
    QQmlEngine engine_;
    MainWindows windows_{engine_, mainQueue_};
    QtAlerts alerts_{engine_, windows_};
    QtImages images_;
};

} // namespace corvane
