#pragma once

#include <QQuickPaintedItem>
#include <QString>

#include <QtQml/qqmlregistration.h>

namespace corvane {

/// One of the program's own drawings, sharp at any size. An Image keeps the picture of a window
/// that is gone until another window paints.
class Drawing : public QQuickPaintedItem {
    Q_OBJECT
    QML_ELEMENT
    /// The resource that holds it.
    Q_PROPERTY(QString source MEMBER source_ NOTIFY changed)

public:
    explicit Drawing(QQuickItem* parent = nullptr) : QQuickPaintedItem(parent) {
        setAntialiasing(true);
        connect(this, &Drawing::changed, this, [this] { update(); });
    }
    void paint(QPainter* painter) override;

signals:
    void changed();

private:
    QString source_;
};

} // namespace corvane
