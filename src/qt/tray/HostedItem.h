#pragma once

#include "platform/StatusBar.h"
#include "qt/tray/BusTypes.h"

#include <QDBusObjectPath>
#include <QObject>
#include <QPoint>

namespace corvane {

class TrayMenu;

/// The status item in a host of StatusNotifier items, as long as this lives: the interface
/// org.kde.StatusNotifierItem, whose names and types the properties and operations below have.
class HostedItem final : public QObject {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.kde.StatusNotifierItem")
    Q_PROPERTY(QString Category READ category CONSTANT)
    Q_PROPERTY(QString Id READ id CONSTANT)
    Q_PROPERTY(QString Title READ title CONSTANT)
    Q_PROPERTY(QString Status READ status CONSTANT)
    Q_PROPERTY(int WindowId READ windowId CONSTANT)
    Q_PROPERTY(QString IconName READ iconName CONSTANT)
    Q_PROPERTY(QList<corvane::bus::Pixmap> IconPixmap READ iconPixmap CONSTANT)
    Q_PROPERTY(corvane::bus::ToolTip ToolTip READ toolTip CONSTANT)
    Q_PROPERTY(bool ItemIsMenu READ itemIsMenu CONSTANT)
    Q_PROPERTY(QDBusObjectPath Menu READ menu CONSTANT)

public:
    /// Registers with the watcher on the session bus, together with the menu, which outlives this.
    HostedItem(const StatusButton& button, TrayMenu& menu);
    ~HostedItem() override;

    QString category() const { return QStringLiteral("ApplicationStatus"); }
    QString id() const { return QStringLiteral("corvane"); }
    QString title() const { return title_; }
    QString status() const { return QStringLiteral("Active"); }
    int windowId() const { return 0; }
    QString iconName() const { return {}; }
    QList<bus::Pixmap> iconPixmap() const { return pixmaps_; }
    bus::ToolTip toolTip() const { return {{}, {}, toolTip_, {}}; }
    /// Each click opens the menu.
    bool itemIsMenu() const { return true; }
    QDBusObjectPath menu() const;

public slots:
    void Activate(int x, int y) { emit menuWanted({x, y}); }
    void SecondaryActivate(int x, int y) { emit menuWanted({x, y}); }
    void ContextMenu(int x, int y) { emit menuWanted({x, y}); }
    void Scroll(int, const QString&) {}

signals:
    /// By a host that doesn't show the menu itself; in pixels of the screen.
    void menuWanted(QPoint where);
    /// The watcher doesn't take the item.
    void refused();

private:
    const QString title_;
    const QString toolTip_;
    const QString service_;
    QList<bus::Pixmap> pixmaps_;
};

} // namespace corvane
