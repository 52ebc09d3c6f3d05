#include "qt/tray/HostedItem.h"

#include "qt/items/Pictures.h"
#include "qt/items/Strings.h"
#include "qt/tray/TrayMenu.h"
#include "qt/tray/TrayWatch.h"

#include <QCoreApplication>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QPixmap>
#include <QtEndian>

namespace corvane {

namespace {

const auto itemPath = QStringLiteral("/StatusNotifierItem");
const auto menuPath = QStringLiteral("/MenuBar");

QString nextService() {
    static int count = 0;
    return QStringLiteral("org.kde.StatusNotifierItem-%1-%2")
        .arg(QCoreApplication::applicationPid())
        .arg(++count);
}

bus::Pixmap pixmapOf(const QImage& picture) {
    const auto image = picture.convertToFormat(QImage::Format_ARGB32);
    bus::Pixmap pixmap{image.width(), image.height(), {}};
    for (int y = 0; y < image.height(); ++y) {
        const auto* line = reinterpret_cast<const quint32*>(image.constScanLine(y));
        for (int x = 0; x < image.width(); ++x) {
            const auto pixel = qToBigEndian(line[x]);
            pixmap.pixels.append(reinterpret_cast<const char*>(&pixel), sizeof pixel);
        }
    }
    return pixmap;
}

} // namespace

HostedItem::HostedItem(const StatusButton& button, TrayMenu& menu)
    : title_(toQString(button.title)), toolTip_(toQString(button.toolTip)),
      service_(nextService()) {
    bus::registerTypes();
    if (button.image) {
        const auto icon = iconOf(*button.image);
        for (const auto& size : icon.availableSizes())
            pixmaps_.append(pixmapOf(icon.pixmap(size).toImage()));
    }
    auto bus = QDBusConnection::sessionBus();
    const auto methodsAndProperties =
        QDBusConnection::ExportAllSlots | QDBusConnection::ExportAllProperties;
    bus.registerObject(itemPath, this, methodsAndProperties);
    bus.registerObject(menuPath, &menu, methodsAndProperties | QDBusConnection::ExportAllSignals);
    bus.registerService(service_);
    auto call = QDBusMessage::createMethodCall(TrayWatch::watcherName(), TrayWatch::watcherPath(),
                                               TrayWatch::watcherName(),
                                               QStringLiteral("RegisterStatusNotifierItem"));
    call << service_;
    auto* answer = new QDBusPendingCallWatcher(bus.asyncCall(call), this);
    connect(answer, &QDBusPendingCallWatcher::finished, this, [this, answer] {
        if (answer->isError()) emit refused();
        answer->deleteLater();
    });
}

HostedItem::~HostedItem() {
    auto bus = QDBusConnection::sessionBus();
    bus.unregisterService(service_);
    bus.unregisterObject(itemPath);
    bus.unregisterObject(menuPath);
}

QDBusObjectPath HostedItem::menu() const {
    return QDBusObjectPath(menuPath);
}

} // namespace corvane
