#pragma once

#include "qt/models/ChangeRelay.h"

#include <QObject>

#include <QtQml/qqmlregistration.h>

namespace corvane {

class SettingsSheet;

/// The settings for their view. Every switch is a preference of the store.
class SettingsModel : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("belongs to its window")
    Q_PROPERTY(bool focusMode READ focusMode WRITE setFocusMode NOTIFY changed)
    Q_PROPERTY(bool accessibilityFeatures READ accessibilityFeatures WRITE setAccessibilityFeatures
                   NOTIFY changed)
    Q_PROPERTY(bool autoSaveLayouts READ autoSaveLayouts WRITE setAutoSaveLayouts NOTIFY changed)
    Q_PROPERTY(QString autoSaveSubtitle READ autoSaveSubtitle NOTIFY changed)
    /// "first" or "last".
    Q_PROPERTY(QString fullscreenPriority READ fullscreenPriority WRITE setFullscreenPriority NOTIFY
                   changed)
    Q_PROPERTY(bool showLayoutSavedAlert READ showLayoutSavedAlert WRITE setShowLayoutSavedAlert
                   NOTIFY changed)
    Q_PROPERTY(bool showWorkspaceClosedAlert READ showWorkspaceClosedAlert WRITE
                   setShowWorkspaceClosedAlert NOTIFY changed)
    Q_PROPERTY(bool showLayoutsDisabledAlert READ showLayoutsDisabledAlert WRITE
                   setShowLayoutsDisabledAlert NOTIFY changed)
    Q_PROPERTY(bool showApplicationsClosedAlert READ showApplicationsClosedAlert WRITE
                   setShowApplicationsClosedAlert NOTIFY changed)
    Q_PROPERTY(QString versionLine READ versionLine CONSTANT)
    Q_PROPERTY(QString supportAddress READ supportAddress CONSTANT)

public:
    /// The state outlives the model.
    explicit SettingsModel(SettingsSheet& state);

    bool focusMode() const;
    void setFocusMode(bool on);
    bool accessibilityFeatures() const;
    void setAccessibilityFeatures(bool on);
    bool autoSaveLayouts() const;
    void setAutoSaveLayouts(bool on);
    QString autoSaveSubtitle() const;
    QString fullscreenPriority() const;
    void setFullscreenPriority(const QString& priority);
    bool showLayoutSavedAlert() const;
    void setShowLayoutSavedAlert(bool on);
    bool showWorkspaceClosedAlert() const;
    void setShowWorkspaceClosedAlert(bool on);
    bool showLayoutsDisabledAlert() const;
    void setShowLayoutsDisabledAlert(bool on);
    bool showApplicationsClosedAlert() const;
    void setShowApplicationsClosedAlert(bool on);
    QString versionLine() const;
    QString supportAddress() const;

    Q_INVOKABLE void resetConfirmations();
    Q_INVOKABLE void importWorkspaces();
    Q_INVOKABLE void importKeptCopy();
    Q_INVOKABLE void exportWorkspaces();
    Q_INVOKABLE void resetPreferences();
    Q_INVOKABLE void contactSupport();

signals:
    void changed();

private:
    SettingsSheet& state_;
    ChangeRelay relay_;
};

} // namespace corvane
