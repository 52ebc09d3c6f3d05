#include "qt/models/SettingsModel.h"

#include "qt/items/Strings.h"

namespace corvane {

SettingsModel::SettingsModel(SettingsSheet& state)
    : state_(state), relay_(state.objectWillChange, [this] { emit changed(); }) {}

QString SettingsModel::autoSaveSubtitle() const {
    return toQString(state_.autoSaveSubtitle());
}

QString SettingsModel::fullscreenPriority() const {
    return toQString(state_.store().fullscreenPriority.get());
}

void SettingsModel::setFullscreenPriority(const QString& priority) {
    state_.store().fullscreenPriority = priority.toStdString();
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

template <typename Action>
void SettingsModel::later(Action action) {
    QMetaObject::invokeMethod(
        this, [this, action] { action(state_.store()); }, Qt::QueuedConnection);
}

void SettingsModel::importWorkspaces() {
    later([](auto& store) { store.importWorkspaces(); });
}

void SettingsModel::importKeptCopy() {
    state_.store().importKeptCopy();
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
