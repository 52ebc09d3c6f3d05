#pragma once

#include <QObject>
#include <QQuickItem>

#include <QtQml/qqmlregistration.h>

namespace corvane {

/// Puts items into the order in which the Tab key reaches them, which is the one among their
/// parent's children. A list makes and reuses its items in any order.
class TabOrder : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_SINGLETON

public:
    /// Orders the children from top to bottom.
    Q_INVOKABLE static void sortChildren(QQuickItem* parent);
};

} // namespace corvane
