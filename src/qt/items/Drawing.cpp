#include "qt/items/Drawing.h"

#include <QSvgRenderer>

namespace corvane {

void Drawing::paint(QPainter* painter) {
    QSvgRenderer(source_).render(painter, boundingRect());
}

} // namespace corvane
