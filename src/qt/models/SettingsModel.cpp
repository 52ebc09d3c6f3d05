#include "qt/models/SettingsModel.h"

#include "core/WorkspaceStore.h"
#include "qt/items/Strings.h"
#include "ui/SettingsSheet.h"

namespace corvane {

namespace {

std::function<bool()> reads(const Preference<bool>& preference) {
    return [&preference] { return preference.get(); };
}

std::function<void(bool)> writes(Preference<bool>& preference) {
    return [&preference](bool on) { preference = on; };
}

} // namespace

SettingsModel::SettingsModel(SettingsSheet& state)
    : state_(state), focusMode_(state.objectWillChange, reads(state.store().focusMode),
                                writes(state.store().focusMode)),
      accessibilityFeatures_(
          state.objectWillChange,
          [&state] { return state.store().enableAccessibilityFeatures.get(); },
          [&state](bool on) { state.setAccessibilityFeatures(on); }),
      autoSaveLayouts_(state.objectWillChange, reads(state.store().autoSaveLayouts),
                       writes(state.store().autoSaveLayouts)),
      showLayoutSavedAlert_(state.objectWillChange, reads(state.store().showLayoutSavedAlert),
                            writes(state.store().showLayoutSavedAlert)),
      showWorkspaceClosedAlert_(state.objectWillChange,
                                reads(state.store().showWorkspaceClosedAlert),
                                writes(state.store().showWorkspaceClosedAlert)),
      showLayoutsDisabledAlert_(state.objectWillChange,
                                reads(state.store().showLayoutsDisabledAlert),
                                writes(state.store().showLayoutsDisabledAlert)),
      showApplicationsClosedAlert_(state.objectWillChange,
                                   reads(state.store().showApplicationsClosedAlert),
                                   writes(state.store().showApplicationsClosedAlert)),
      relay_(state.objectWillChange, [this] { emit changed(); }) {}

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
