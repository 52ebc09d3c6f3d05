#include "qt/items/DashedFrame.h"

#include <QPainter>
#include <QPen>

namespace corvane {

void DashedFrame::paint(QPainter* painter) {
    QPen pen(color_, 1);
    pen.setDashPattern({4, 3});
    painter->setPen(pen);
    painter->setBrush(Qt::NoBrush);
    painter->drawRoundedRect(boundingRect().adjusted(0.5, 0.5, -0.5, -0.5), radius_, radius_);
}

} // namespace corvane
