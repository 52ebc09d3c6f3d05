#include "core/WorkspaceStore.h"

#include <array>

namespace corvane {

namespace {

/// In the order of the types.
constexpr std::array showFlags{
    &WorkspaceStore::showLayoutSavedAlert, &WorkspaceStore::showWorkspaceClosedAlert,
    &WorkspaceStore::showLayoutsDisabledAlert, &WorkspaceStore::showApplicationsClosedAlert};

} // namespace

Preference<bool>& WorkspaceStore::preferenceOf(DismissibleAlertType type) {
    return this->*showFlags[static_cast<std::size_t>(type)];
}

void WorkspaceStore::resetConfirmations() {
    for (const auto flag : showFlags)
        this->*flag = true;
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
