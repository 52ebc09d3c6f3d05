#include "qt/items/IconProvider.h"

#include "qt/items/Strings.h"

#include <QIcon>
#include <QImage>
#include <QPainter>
#include <QPixmap>
#include <QUrl>

namespace corvane {

namespace {

constexpr QSize usualSize(40, 40);

/// Of some vector pictures, those made of letters for one, Qt draws next to nothing.
bool isNearlyBlank(const QPixmap& picture) {
    constexpr int enough = 20;
    const auto image = picture.toImage().convertToFormat(QImage::Format_ARGB32);
    int painted = 0;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x)
            painted += qAlpha(image.pixel(x, y)) > 0 ? 1 : 0;
    }
    return painted * enough < image.width() * image.height() || image.isNull();
}

/// With rounded corners, as every icon of an application is shown.
QPixmap rounded(QPixmap picture) {
    constexpr qreal radius = 0.15;
    const auto ratio = picture.devicePixelRatio();
    picture.setDevicePixelRatio(1);
    QPixmap result(picture.size());
    result.fill(Qt::transparent);
    QPainter painter(&result);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(QBrush(picture));
    const auto corner = radius * picture.width();
    painter.drawRoundedRect(result.rect(), corner, corner);
    painter.end();
    result.setDevicePixelRatio(ratio);
    return result;
}

} // namespace

QPixmap IconProvider::requestPixmap(const QString& id, QSize* size, const QSize& requestedSize) {
    const auto wanted = requestedSize.isEmpty() ? usualSize : requestedSize;
    const auto picture = QIcon::fromTheme(QUrl::fromPercentEncoding(id.toUtf8())).pixmap(wanted);
    if (size) *size = picture.size();
    return picture.isNull() ? picture : rounded(picture);
}

QString iconSource(const std::optional<std::string>& icon) {
    if (!icon || icon->empty()) return {};
    const auto name = toQString(*icon);
    if (isNearlyBlank(QIcon::fromTheme(name).pixmap(usualSize))) return {};
    return "image://icon/" + QString::fromLatin1(QUrl::toPercentEncoding(name));
}

} // namespace corvane
