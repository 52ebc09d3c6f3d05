#pragma once

#include "qt/ChangeRelay.h"
#include "ui/HeaderState.h"

#include <QObject>

#include <QtQml/qqmlregistration.h>

namespace corvane {

/// The header for its view.
class HeaderModel : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("belongs to its window")
    Q_PROPERTY(QString searchText READ searchText WRITE setSearchText NOTIFY changed)
    Q_PROPERTY(bool isDarkMode READ isDarkMode NOTIFY changed)
    Q_PROPERTY(QString themeSymbol READ themeSymbol NOTIFY changed)
    Q_PROPERTY(QString themeTooltip READ themeTooltip NOTIFY changed)
    Q_PROPERTY(bool focusMode READ focusMode NOTIFY changed)
    Q_PROPERTY(QString focusModeTooltip READ focusModeTooltip NOTIFY changed)

public:
    explicit HeaderModel(HeaderState& state);

    QString searchText() const { return QString::fromStdString(state_.searchText()); }
    void setSearchText(const QString& text) { state_.setSearchText(text.toStdString()); }
    bool isDarkMode() const { return state_.isDarkMode(); }
    QString themeSymbol() const;
    QString themeTooltip() const;
    bool focusMode() const { return state_.focusMode(); }
    QString focusModeTooltip() const { return QString::fromStdString(state_.focusModeTooltip()); }

    Q_INVOKABLE void toggleTheme() { state_.toggleTheme(); }
    Q_INVOKABLE void toggleFocusMode() { state_.toggleFocusMode(); }

signals:
    void changed();

private:
    HeaderState& state_;
    ChangeRelay relay_;
};

} // namespace corvane
