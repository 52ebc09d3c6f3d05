#pragma once

#include "qt/models/ChangeRelay.h"

#include <QObject>
#include <QStringList>
#include <memory>

#include <QtQml/qqmlregistration.h>

namespace corvane {

class WorkspaceSheet;

/// The sheet that makes or changes a workspace, for its view, which shows it until `closed`.
class WorkspaceSheetModel : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("made by the program for each sheet")
    Q_PROPERTY(QString title READ title CONSTANT)
    Q_PROPERTY(QString commitTitle READ commitTitle CONSTANT)
    Q_PROPERTY(QStringList availableIcons READ availableIcons CONSTANT)
    Q_PROPERTY(QString name READ name WRITE setName NOTIFY changed)
    Q_PROPERTY(QString description READ description WRITE setDescription NOTIFY changed)
    Q_PROPERTY(QString selectedIcon READ selectedIcon WRITE setSelectedIcon NOTIFY changed)
    Q_PROPERTY(bool canCommit READ canCommit NOTIFY changed)

public:
    explicit WorkspaceSheetModel(std::unique_ptr<WorkspaceSheet> sheet);
    ~WorkspaceSheetModel() override;

    QString title() const;
    QString commitTitle() const;
    QStringList availableIcons() const;
    QString name() const;
    void setName(const QString& name);
    QString description() const;
    void setDescription(const QString& description);
    QString selectedIcon() const;
    void setSelectedIcon(const QString& icon);
    bool canCommit() const;

    /// Create or Save, and close; nothing while `canCommit` is false.
    Q_INVOKABLE void commit();
    Q_INVOKABLE void cancel() { emit closed(); }

signals:
    void changed();
    void closed();

private:
    std::unique_ptr<WorkspaceSheet> sheet_;
    ChangeRelay relay_;
};

} // namespace corvane
