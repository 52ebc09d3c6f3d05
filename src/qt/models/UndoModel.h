#pragma once

#include "qt/items/Strings.h"
#include "qt/models/ChangeRelay.h"
#include "ui/UndoOffer.h"

#include <QObject>

#include <QtQml/qqmlregistration.h>

namespace corvane {

/// What can be taken back, for the bar that offers it.
class UndoModel : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("belongs to its window")
    /// Empty where there is nothing.
    Q_PROPERTY(QString text READ text NOTIFY changed)

public:
    /// The state outlives the model.
    explicit UndoModel(UndoOffer& state)
        : state_(state), relay_(state.objectWillChange, [this] { emit changed(); }) {}

    QString text() const { return onOneLine(state_.text()); }
    Q_INVOKABLE void undo() { state_.undo(); }

signals:
    void changed();

private:
    UndoOffer& state_;
    ChangeRelay relay_;
};

} // namespace corvane
