#include "core/WorkspaceStore.h"

namespace corvane {

namespace {

/// A show flag that is absent, or stored under another type than a boolean, is on.
bool showFlag(const UserDefaults& defaults, std::string_view key) {
    const auto object = defaults.objectForKey(key);
    if (!object) return true;
    const auto* flag = object->as<bool>();
    return flag ? *flag : true;
}

} // namespace

void WorkspaceStore::readPreferences() {
    const auto& defaults = platform_.userDefaults;
    // Each goes through its setter, so after the first start every key is stored.
    focusMode = defaults.boolForKey(focusMode.key());
    autoSaveLayouts = defaults.boolForKey(autoSaveLayouts.key());
    fullscreenPriority = defaults.stringForKey(fullscreenPriority.key()).value_or("first");
    hasShownFullscreenLimitationAlert =
        defaults.boolForKey(hasShownFullscreenLimitationAlert.key());
    enableAccessibilityFeatures = defaults.boolForKey(enableAccessibilityFeatures.key());
    for (auto* flag : {&showLayoutSavedAlert, &showWorkspaceClosedAlert, &showLayoutsDisabledAlert,
                       &showApplicationsClosedAlert}) {
        *flag = showFlag(defaults, flag->key());
    }
}

Preference<bool>& WorkspaceStore::preferenceOf(DismissibleAlertType type) {
    switch (type) {
    case DismissibleAlertType::layoutSaved:
        return showLayoutSavedAlert;
    case DismissibleAlertType::workspaceClosed:
        return showWorkspaceClosedAlert;
    case DismissibleAlertType::layoutsDisabled:
        return showLayoutsDisabledAlert;
    case DismissibleAlertType::applicationsClosed:
        break;
    }
    return showApplicationsClosedAlert;
}

void WorkspaceStore::resetConfirmations() {
    for (auto* flag : {&showLayoutSavedAlert, &showWorkspaceClosedAlert, &showLayoutsDisabledAlert,
                       &showApplicationsClosedAlert}) {
        *flag = true;
    }
}

void WorkspaceStore::resetPreferences() {
    const auto response = platform_.alerts.runModal(
        {.title = "Reset Preferences",
         .message =
             "Are you sure you want to reset all preferences to default values? This cannot be undone.",
         .style = AlertStyle::warning,
         .buttons = {"Reset", "Cancel"}});
    if (response.button != AlertResponse::firstButton) return;
    platform_.userDefaults.removePersistentDomain();
    platform_.alerts.runModal(
        {.title = "Preferences Reset",
         .message = "Preferences have been reset to defaults. Please restart the app.",
         .style = AlertStyle::informational,
         .buttons = {"OK"}});
}

void WorkspaceStore::showInfoAlert(std::string title, std::string message) {
    platform_.mainQueue.async(
        [&alerts = platform_.alerts, title = std::move(title), message = std::move(message)] {
            alerts.runModal({.title = title,
                             .message = message,
                             .style = AlertStyle::informational,
                             .buttons = {"OK"}});
        });
}

void WorkspaceStore::showDismissibleAlert(std::string title, std::string message,
                                          DismissibleAlertType type) {
    platform_.mainQueue.async([this, title = std::move(title), message = std::move(message), type] {
        const auto response =
            platform_.alerts.runModal({.title = title,
                                       .message = message,
                                       .style = AlertStyle::informational,
                                       .buttons = {"OK"},
                                       .checkbox = "Don't show this message again"});
        if (response.checkboxIsOn) preferenceOf(type) = false;
    });
}

} // namespace corvane
