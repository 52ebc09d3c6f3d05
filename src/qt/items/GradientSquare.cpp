#include "qt/items/GradientSquare.h"

#include <QLinearGradient>
#include <QPainter>

namespace corvane {

void GradientSquare::paint(QPainter* painter) {
    QLinearGradient gradient(boundingRect().topLeft(), boundingRect().bottomRight());
    gradient.setColorAt(0, from_);
    gradient.setColorAt(1, to_);
    painter->setPen(Qt::NoPen);
    painter->setBrush(gradient);
    painter->drawRoundedRect(boundingRect(), radius_, radius_);
}

} // namespace corvane
