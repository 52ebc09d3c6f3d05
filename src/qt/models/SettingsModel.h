#pragma once

#include "core/WorkspaceStore.h"
#include "qt/models/ChangeRelay.h"
#include "qt/models/SwitchModel.h"
#include "ui/SettingsSheet.h"

#include <QObject>

#include <QtQml/qqmlregistration.h>

namespace corvane {

/// The settings for their view.
class SettingsModel : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("belongs to its window")
    Q_PROPERTY(corvane::SwitchModel* focusMode READ focusMode CONSTANT)
    Q_PROPERTY(corvane::SwitchModel* accessibilityFeatures READ accessibilityFeatures CONSTANT)
    Q_PROPERTY(corvane::SwitchModel* autoSaveLayouts READ autoSaveLayouts CONSTANT)
    Q_PROPERTY(corvane::SwitchModel* showLayoutSavedAlert READ showLayoutSavedAlert CONSTANT)
    Q_PROPERTY(
        corvane::SwitchModel* showWorkspaceClosedAlert READ showWorkspaceClosedAlert CONSTANT)
    Q_PROPERTY(
        corvane::SwitchModel* showLayoutsDisabledAlert READ showLayoutsDisabledAlert CONSTANT)
    Q_PROPERTY(
        corvane::SwitchModel* showApplicationsClosedAlert READ showApplicationsClosedAlert CONSTANT)
    Q_PROPERTY(QString autoSaveSubtitle READ autoSaveSubtitle NOTIFY changed)
    /// "first" or "last".
    Q_PROPERTY(QString fullscreenPriority READ fullscreenPriority WRITE setFullscreenPriority NOTIFY
                   changed)
    /// As SettingsSheet::desktopLine.
    Q_PROPERTY(QString desktopLine READ desktopLine NOTIFY changed)
    Q_PROPERTY(QString versionLine READ versionLine CONSTANT)
    Q_PROPERTY(QString supportAddress READ supportAddress CONSTANT)

public:
    /// Both outlive the model.
    SettingsModel(SettingsSheet& state, WorkspaceStore& store);

    SwitchModel* focusMode() { return &focusMode_; }
    SwitchModel* accessibilityFeatures() { return &accessibilityFeatures_; }
    SwitchModel* autoSaveLayouts() { return &autoSaveLayouts_; }
    SwitchModel* showLayoutSavedAlert() { return &showLayoutSavedAlert_; }
    SwitchModel* showWorkspaceClosedAlert() { return &showWorkspaceClosedAlert_; }
    SwitchModel* showLayoutsDisabledAlert() { return &showLayoutsDisabledAlert_; }
    SwitchModel* showApplicationsClosedAlert() { return &showApplicationsClosedAlert_; }
    QString autoSaveSubtitle() const;
    QString fullscreenPriority() const;
    void setFullscreenPriority(const QString& priority);
    QString desktopLine() const;
    QString versionLine() const;
    QString supportAddress() const;

    Q_INVOKABLE void lookAtDesktop();
    Q_INVOKABLE void resetConfirmations();
    Q_INVOKABLE void importWorkspaces();
    Q_INVOKABLE void importKeptCopy();
    Q_INVOKABLE void exportWorkspaces();
    Q_INVOKABLE void resetPreferences();
    Q_INVOKABLE void contactSupport();

signals:
    void changed();
    /// An answer to it may have changed what the desktop can.
    void alertHasGone();

private:
    /// Outside of the press that led here, since a panel comes up.
    template <typename Action>
    void later(Action action);

    SettingsSheet& state_;
    WorkspaceStore& store_;
    SwitchModel focusMode_{state_.objectWillChange, store_.focusMode};
    SwitchModel accessibilityFeatures_{state_.objectWillChange,
                                       [this] { return store_.enableAccessibilityFeatures.get(); },
                                       [this](bool on) { state_.setAccessibilityFeatures(on); }};
    SwitchModel autoSaveLayouts_{state_.objectWillChange, store_.autoSaveLayouts};
    SwitchModel showLayoutSavedAlert_{state_.objectWillChange, store_.showLayoutSavedAlert};
    SwitchModel showWorkspaceClosedAlert_{state_.objectWillChange, store_.showWorkspaceClosedAlert};
    SwitchModel showLayoutsDisabledAlert_{state_.objectWillChange, store_.showLayoutsDisabledAlert};
    SwitchModel showApplicationsClosedAlert_{state_.objectWillChange,
                                             store_.showApplicationsClosedAlert};
    ChangeRelay relay_;
};

} // namespace corvane
