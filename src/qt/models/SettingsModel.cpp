#include "qt/models/SettingsModel.h"

#include "qt/items/Strings.h"

namespace corvane {

SettingsModel::SettingsModel(SettingsSheet& state, WorkspaceStore& store)
    : state_(state), store_(store), relay_(state.objectWillChange, [this] { emit changed(); }) {}

QString SettingsModel::autoSaveSubtitle() const {
    return toQString(state_.autoSaveSubtitle());
}

QString SettingsModel::fullscreenPriority() const {
    return toQString(store_.fullscreenPriority.get());
}

void SettingsModel::setFullscreenPriority(const QString& priority) {
    store_.fullscreenPriority = priority.toStdString();
}

QString SettingsModel::desktopLine() const {
    return toQString(state_.desktopLine.get());
}

QString SettingsModel::versionLine() const {
    return toQString(state_.versionLine());
}

QString SettingsModel::supportAddress() const {
    return toQString(SettingsSheet::supportAddress);
}

void SettingsModel::lookAtDesktop() {
    state_.lookAtDesktop();
}

void SettingsModel::resetConfirmations() {
    store_.resetConfirmations();
}

template <typename Action>
void SettingsModel::later(Action action) {
    QMetaObject::invokeMethod(this, [this, action] { action(store_); }, Qt::QueuedConnection);
}

void SettingsModel::importWorkspaces() {
    later([](auto& store) { store.importWorkspaces(); });
}

void SettingsModel::importKeptCopy() {
    store_.importKeptCopy();
}

void SettingsModel::exportWorkspaces() {
    later([](auto& store) { store.exportWorkspaces(); });
}

void SettingsModel::resetPreferences() {
    state_.resetPreferences();
}

void SettingsModel::contactSupport() {
    state_.contactSupport();
}

} // namespace corvane
