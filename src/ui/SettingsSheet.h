#pragma once

#include "foundation/Published.h"

#include <string>
#include <string_view>

namespace corvane {

class Accessibility;
class Applications;
class Bundles;
class MainQueue;
class WorkspaceStore;

/// What the settings sheet says beyond the store's preferences, to which its switches are bound,
/// and what its buttons do. All that it is given outlives it. Main thread.
class SettingsSheet {
public:
    SettingsSheet(WorkspaceStore& store, const Bundles& bundles, Applications& applications,
                  Accessibility& accessibility, MainQueue& mainQueue);

    /// Fires before anything read here changes.
    ChangeSignal objectWillChange;

    /// What can be done on the desktop, as of the last look: "GNOME (Wayland) · windows: yes ·
    /// layouts: yes", and a second line on what is missing, if anything is.
    Published<std::string> desktopLine{objectWillChange};
    void lookAtDesktop();

    static constexpr std::string_view supportAddress = "support@corvane.example";

    std::string_view autoSaveSubtitle() const;
    /// "Version 1.2 (Build 3)".
    std::string versionLine() const;
    /// Where a mail to the support starts: a mailto: URL with subject and body.
    std::string supportMailUrl() const;

    /// Turns the window layouts on or off; an alert follows where the desktop doesn't trust this
    /// process.
    void setAccessibilityFeatures(bool enabled);
    void contactSupport();
    /// Asks first, on a later turn of the main queue.
    void resetPreferences();

private:
    WorkspaceStore& store_;
    const Bundles& bundles_;
    Applications& applications_;
    Accessibility& accessibility_;
    MainQueue& mainQueue_;
    Subscription storeChanges_;
};

} // namespace corvane
