#include "qt/models/SettingsModel.h"

#include "core/WorkspaceStore.h"
#include "qt/items/Strings.h"
#include "ui/SettingsSheet.h"

namespace corvane {

SettingsModel::SettingsModel(SettingsSheet& state)
    : state_(state), relay_(state.objectWillChange, [this] { emit changed(); }) {}

bool SettingsModel::focusMode() const {
    return state_.store().focusMode;
}

void SettingsModel::setFocusMode(bool on) {
    state_.store().focusMode = on;
}

bool SettingsModel::accessibilityFeatures() const {
    return state_.store().enableAccessibilityFeatures;
}

void SettingsModel::setAccessibilityFeatures(bool on) {
    state_.setAccessibilityFeatures(on);
}

bool SettingsModel::autoSaveLayouts() const {
    return state_.store().autoSaveLayouts;
}

void SettingsModel::setAutoSaveLayouts(bool on) {
    state_.store().autoSaveLayouts = on;
}

QString SettingsModel::autoSaveSubtitle() const {
    return toQString(state_.autoSaveSubtitle());
}

QString SettingsModel::fullscreenPriority() const {
    return toQString(state_.store().fullscreenPriority.get());
}

void SettingsModel::setFullscreenPriority(const QString& priority) {
    state_.store().fullscreenPriority = priority.toStdString();
}

bool SettingsModel::showLayoutSavedAlert() const {
    return state_.store().showLayoutSavedAlert;
}

void SettingsModel::setShowLayoutSavedAlert(bool on) {
    state_.store().showLayoutSavedAlert = on;
}

bool SettingsModel::showWorkspaceClosedAlert() const {
    return state_.store().showWorkspaceClosedAlert;
}

void SettingsModel::setShowWorkspaceClosedAlert(bool on) {
    state_.store().showWorkspaceClosedAlert = on;
}

bool SettingsModel::showLayoutsDisabledAlert() const {
    return state_.store().showLayoutsDisabledAlert;
}

void SettingsModel::setShowLayoutsDisabledAlert(bool on) {
    state_.store().showLayoutsDisabledAlert = on;
}

bool SettingsModel::showApplicationsClosedAlert() const {
    return state_.store().showApplicationsClosedAlert;
}

void SettingsModel::setShowApplicationsClosedAlert(bool on) {
    state_.store().showApplicationsClosedAlert = on;
}

QString SettingsModel::versionLine() const {
    return toQString(state_.versionLine());
}

QString SettingsModel::supportAddress() const {
    return toQString(SettingsSheet::supportAddress);
}

void SettingsModel::resetConfirmations() {
    state_.store().resetConfirmations();
}

void SettingsModel::importWorkspaces() {
    state_.store().importWorkspaces();
}

void SettingsModel::importKeptCopy() {
    state_.store().importKeptCopy();
}

void SettingsModel::exportWorkspaces() {
    state_.store().exportWorkspaces();
}

void SettingsModel::resetPreferences() {
    state_.resetPreferences();
}

void SettingsModel::contactSupport() {
    state_.contactSupport();
}

} // namespace corvane
