#pragma once

#include "foundation/Text.h"
#include "platform/Alerts.h"

#include <QObject>
#include <QStringList>

#include <QtQml/qqmlregistration.h>

namespace corvane {

/// One alert for the window that shows it.
class AlertModel : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("made by the program for each alert")
    Q_PROPERTY(QString title READ title CONSTANT)
    Q_PROPERTY(QString message READ message CONSTANT)
    Q_PROPERTY(QString symbol READ symbol CONSTANT)
    Q_PROPERTY(bool isWarning READ isWarning CONSTANT)
    /// The most important first.
    Q_PROPERTY(QStringList buttons READ buttons CONSTANT)
    Q_PROPERTY(bool firstButtonIsDestructive READ firstButtonIsDestructive CONSTANT)
    /// Empty where there is no checkbox.
    Q_PROPERTY(QString checkbox READ checkbox CONSTANT)

public:
    explicit AlertModel(Alert alert) : alert_(std::move(alert)) {}

    QString title() const {
        return QString::fromStdString(text::onOneLine(alert_.title, mostCharacters));
    }
    QString message() const {
        return QString::fromStdString(text::withShortLines(alert_.message, mostCharacters));
    }
    bool isWarning() const { return alert_.style != AlertStyle::informational; }
    QString symbol() const {
        return isWarning() ? QStringLiteral("exclamationmark.triangle.fill")
                           : QStringLiteral("info.circle");
    }
    QStringList buttons() const {
        QStringList titles;
        for (const auto& button : alert_.buttons)
            titles.append(QString::fromStdString(button));
        return titles;
    }
    bool firstButtonIsDestructive() const { return alert_.firstButtonIsDestructive; }
    QString checkbox() const { return QString::fromStdString(alert_.checkbox); }

    /// The user pressed the button of that index.
    Q_INVOKABLE void press(int index, bool checkboxIsOn) {
        emit answered(AlertResponse::firstButton + index, checkboxIsOn);
    }
    /// The window went without a press.
    Q_INVOKABLE void dismiss(bool checkboxIsOn) { emit answered(0, checkboxIsOn); }

signals:
    void answered(int button, bool checkboxIsOn);

private:
    /// Of a line: a file may hold names and paths that would take minutes to draw.
    static constexpr std::size_t mostCharacters = 1000;

    const Alert alert_;
};

} // namespace corvane
