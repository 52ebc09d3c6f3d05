#pragma once

#include "platform/StatusBar.h"
#include "qt/tray/BusTypes.h"

#include <QHash>
#include <QObject>
#include <vector>

namespace corvane {

/// The menu of the status item, for a host to read and to press: com.canonical.dbusmenu, whose
/// names and types the operations below have. An item keeps its number as long as it looks the
/// same; a number that has gone is nobody's, so that a press that comes late does nothing else.
class TrayMenu final : public QObject {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "com.canonical.dbusmenu")
    Q_PROPERTY(uint Version READ version CONSTANT)
    Q_PROPERTY(QString TextDirection READ textDirection CONSTANT)
    Q_PROPERTY(QString Status READ status CONSTANT)
    Q_PROPERTY(QStringList IconThemePath READ iconThemePath CONSTANT)

public:
    /// Tells the host where the menu looks different.
    void show(Menu menu);
    const Menu& shown() const { return menu_; }

    uint version() const { return 3; }
    QString textDirection() const { return QStringLiteral("ltr"); }
    QString status() const { return QStringLiteral("normal"); }
    QStringList iconThemePath() const { return {}; }

public slots:
    uint GetLayout(int parentId, int recursionDepth, const QStringList& propertyNames,
                   corvane::bus::MenuNode& layout);
    QList<corvane::bus::MenuProperties> GetGroupProperties(const QList<int>& ids,
                                                           const QStringList& propertyNames);
    QDBusVariant GetProperty(int id, const QString& name);
    /// A press runs once the host has its answer.
    void Event(int id, const QString& eventId, const QDBusVariant& data, uint timestamp);
    QList<int> EventGroup(const QList<corvane::bus::MenuEvent>& events);
    bool AboutToShow(int id);
    QList<int> AboutToShowGroup(const QList<int>& ids, QList<int>& idErrors);

signals:
    void LayoutUpdated(uint revision, int parent);

private:
    std::ptrdiff_t indexOf(int id) const;
    QVariantMap propertiesOf(int id);

    Menu menu_;
    /// Of the items in their order.
    std::vector<int> ids_;
    int lastId_ = 0;
    uint revision_ = 1;
    QHash<QString, QByteArray> pictures_;
};

} // namespace corvane
