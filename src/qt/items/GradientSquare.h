#pragma once

#include <QColor>
#include <QQuickPaintedItem>

#include <QtQml/qqmlregistration.h>

namespace corvane {

/// A rounded rectangle with a gradient from its top left to its bottom right corner, which a
/// Rectangle can't have.
class GradientSquare : public QQuickPaintedItem {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(QColor from MEMBER from_ NOTIFY changed)
    Q_PROPERTY(QColor to MEMBER to_ NOTIFY changed)
    Q_PROPERTY(qreal radius MEMBER radius_ NOTIFY changed)

public:
    explicit GradientSquare(QQuickItem* parent = nullptr) : QQuickPaintedItem(parent) {
        setAntialiasing(true);
        connect(this, &GradientSquare::changed, this, [this] { update(); });
    }
    void paint(QPainter* painter) override;

signals:
    void changed();

private:
    QColor from_;
    QColor to_;
    qreal radius_ = 0;
};

} // namespace corvane
