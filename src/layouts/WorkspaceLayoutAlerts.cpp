#include "core/WorkspaceStore.h"

namespace corvane {

namespace {

constexpr double alertDelay = 0.1;

void showPermissionAlert(Alerts& alerts, Applications& applications, std::string message) {
    const auto response = alerts.runModal({.title = "Accessibility Permission Required",
                                           .message = std::move(message),
                                           .style = AlertStyle::informational,
                                           .buttons = {"Open System Preferences", "Cancel"}});
    if (response.button != AlertResponse::firstButton) return;
    const auto url =
        Url::parse("x-apple.systempreferences:com.apple.preference.security?Privacy_Accessibility");
    if (url) applications.openUrl(*url);
}

} // namespace

void WorkspaceStore::showAccessibilityPermissionAlert() {
    platform_.mainQueue.async([this] {
        showPermissionAlert(
            platform_.alerts, platform_.applications,
            "Corvane needs accessibility permissions to save and restore window layouts.\n\n"
            "To enable this:\n"
            "1. Click 'Open System Preferences'\n"
            "2. In Privacy & Security → Accessibility\n"
            "3. Add Corvane to the list and enable it\n"
            "4. Restart Corvane\n\n"
            "Note: This replaces the need for AppleScript permissions and works better with fullscreen windows.");
    });
}

void WorkspaceStore::showAccessibilityRequiredAlert() {
    showPermissionAlert(
        platform_.alerts, platform_.applications,
        "Window layout features require Accessibility permission to save and restore window positions.\n\n"
        "To enable this:\n"
        "1. Click 'Open System Preferences'\n"
        "2. In Privacy & Security → Accessibility\n"
        "3. Add Corvane to the list and enable it\n"
        "4. You may need to restart Corvane\n\n"
        "You can disable this feature anytime in Settings if you prefer not to grant this permission.");
}

void WorkspaceStore::accessibilityFeaturesToggled(bool enabled) {
    if (!enabled || platform_.accessibility.isProcessTrusted()) return;
    // Once the control has shown its new value.
    platform_.mainQueue.after(alertDelay, [this] { showAccessibilityRequiredAlert(); });
}

void WorkspaceStore::showFullscreenLimitationAlert(const WindowLayout& chosen) {
    platform_.mainQueue.async([this, appName = chosen.appName] {
        const auto response = platform_.alerts.runModal(
            {.title = "macOS Fullscreen Limitation",
             .message =
                 "macOS only allows one app to be fullscreen at a time. '" + appName +
                 "' will be fullscreen, others will be maximized.\n\nYou can change this behavior in Settings.",
             .style = AlertStyle::informational,
             .buttons = {"OK", "Don't Show Again"}});
        if (response.button == AlertResponse::secondButton) {
            hasShownFullscreenLimitationAlert = true;
        }
    });
}

} // namespace corvane
