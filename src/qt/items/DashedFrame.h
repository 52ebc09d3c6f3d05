#pragma once

#include <QColor>
#include <QQuickPaintedItem>

#include <QtQml/qqmlregistration.h>

namespace corvane {

/// The outline of a rounded rectangle, one wide, in dashes.
class DashedFrame : public QQuickPaintedItem {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(QColor color MEMBER color_ NOTIFY changed)
    Q_PROPERTY(qreal radius MEMBER radius_ NOTIFY changed)

public:
    explicit DashedFrame(QQuickItem* parent = nullptr) : QQuickPaintedItem(parent) {
        setAntialiasing(true);
        connect(this, &DashedFrame::changed, this, [this] { update(); });
    }
    void paint(QPainter* painter) override;

signals:
    void changed();

private:
    QColor color_;
    qreal radius_ = 0;
};

} // namespace corvane
