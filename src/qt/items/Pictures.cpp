#include "qt/items/Pictures.h"

#include "platform/Bundles.h"
#include "qt/items/Symbols.h"

#include <QFont>
#include <QPainter>
#include <QPixmap>
#include <QSvgRenderer>

namespace corvane {

namespace {

/// Of title bars, panels and task switchers.
constexpr int iconSizes[]{16, 18, 22, 24, 32, 36, 44, 48, 64, 128};
/// Where an image has no size of its own, and how much larger than its size it may be shown.
constexpr int largestIcon = 128;
constexpr double largestScale = 2;
/// Seen on a light menu as well as on a dark one.
constexpr QRgb symbolColor = 0xff808086;

void drawSymbol(QPainter& painter, const Image& image, const QRect& place) {
    QFont font(Symbols::fontFamily());
    font.setPixelSize(place.height());
    painter.setFont(font);
    painter.setPen(QColor::fromRgb(symbolColor));
    painter.drawText(place, Qt::AlignCenter, Symbols::glyph(QString::fromStdString(image.name)));
}

} // namespace

QString drawingOf(const Image& image) {
    const auto name = image.source == Image::Source::applicationIcon
                          ? QString(programIdentifier)
                          : QString::fromStdString(image.name);
    return ":/data/" + name + ".svg";
}

QIcon iconOf(const Image& image) {
    QIcon icon;
    QSvgRenderer drawing;
    if (image.source != Image::Source::symbol) drawing.load(drawingOf(image));
    const double largest = image.size > 0 ? image.size * largestScale : largestIcon;
    for (const int size : iconSizes) {
        if (size < image.size || size > largest) continue;
        QPixmap pixmap(size, size);
        pixmap.fill(Qt::transparent);
        QPainter painter(&pixmap);
        painter.setRenderHint(QPainter::Antialiasing);
        if (image.source == Image::Source::symbol) {
            drawSymbol(painter, image, pixmap.rect());
        } else {
            drawing.render(&painter, pixmap.rect());
        }
        icon.addPixmap(pixmap);
    }
    return icon;
}

} // namespace corvane
