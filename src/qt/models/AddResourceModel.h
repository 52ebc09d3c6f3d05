#pragma once

#include "qt/models/ChangeRelay.h"

#include <QObject>
#include <QVariantList>
#include <memory>

#include <QtQml/qqmlregistration.h>

namespace corvane {

class AddResourceSheet;

/// The sheet that adds a resource, for its view, which shows it until `closed`.
class AddResourceModel : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("made by the program for each sheet")
    Q_PROPERTY(QString title READ title CONSTANT)
    Q_PROPERTY(QString subtitle READ subtitle CONSTANT)
    Q_PROPERTY(QString addTitle READ addTitle CONSTANT)
    Q_PROPERTY(QString enabledTitle READ enabledTitle CONSTANT)
    /// Objects with `type`, `title` and `symbol`.
    Q_PROPERTY(QVariantList tiles READ tiles CONSTANT)
    Q_PROPERTY(QString type READ type NOTIFY changed)
    Q_PROPERTY(QString name READ name WRITE setName NOTIFY changed)
    Q_PROPERTY(QString path READ path WRITE setPath NOTIFY changed)
    Q_PROPERTY(bool enabledByDefault READ enabledByDefault WRITE setEnabledByDefault NOTIFY changed)
    Q_PROPERTY(QString pathHeading READ pathHeading NOTIFY changed)
    Q_PROPERTY(QString pathPrompt READ pathPrompt NOTIFY changed)
    /// The path is picked, not typed.
    Q_PROPERTY(bool isPicked READ isPicked NOTIFY changed)
    Q_PROPERTY(QString pickerTitle READ pickerTitle NOTIFY changed)
    Q_PROPERTY(QString pickerSymbol READ pickerSymbol NOTIFY changed)
    Q_PROPERTY(QString statusText READ statusText NOTIFY changed)
    Q_PROPERTY(bool isStatusValid READ isStatusValid NOTIFY changed)
    Q_PROPERTY(bool canAdd READ canAdd NOTIFY changed)

public:
    explicit AddResourceModel(std::unique_ptr<AddResourceSheet> sheet);
    ~AddResourceModel() override;

    QString title() const;
    QString subtitle() const;
    QString addTitle() const;
    QString enabledTitle() const;
    QVariantList tiles() const;
    QString type() const;
    QString name() const;
    void setName(const QString& name);
    QString path() const;
    void setPath(const QString& path);
    bool enabledByDefault() const;
    void setEnabledByDefault(bool enabled);
    QString pathHeading() const;
    QString pathPrompt() const;
    bool isPicked() const;
    QString pickerTitle() const;
    QString pickerSymbol() const;
    QString statusText() const;
    bool isStatusValid() const;
    bool canAdd() const;

    Q_INVOKABLE void select(const QString& type);
    Q_INVOKABLE void pick();
    Q_INVOKABLE void add();
    Q_INVOKABLE void cancel() { emit closed(); }

signals:
    void changed();
    void closed();

private:
    std::unique_ptr<AddResourceSheet> sheet_;
    ChangeRelay relay_;
};

} // namespace corvane
