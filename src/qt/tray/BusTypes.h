#pragma once

#include <QDBusArgument>
#include <QDBusVariant>
#include <QList>
#include <QString>
#include <QVariantMap>
#include <tuple>

/// What goes over the session bus between an item of a tray and its host, as structures.
namespace corvane::bus {

/// One size of a picture: 32 bits a pixel, alpha first.
struct Pixmap {
    int width = 0, height = 0;
    QByteArray pixels;
    static auto fields(auto& of) { return std::tie(of.width, of.height, of.pixels); }
};

struct ToolTip {
    QString iconName;
    QList<Pixmap> icon;
    QString title, text;
    static auto fields(auto& of) { return std::tie(of.iconName, of.icon, of.title, of.text); }
};

struct MenuProperties {
    int id = 0;
    QVariantMap properties;
    static auto fields(auto& of) { return std::tie(of.id, of.properties); }
};

struct MenuNode {
    int id = 0;
    QVariantMap properties;
    /// Each of them a node.
    QList<QDBusVariant> children;
    static auto fields(auto& of) { return std::tie(of.id, of.properties, of.children); }
};

struct MenuEvent {
    int id = 0;
    QString name;
    QDBusVariant data;
    uint timestamp = 0;
    static auto fields(auto& of) { return std::tie(of.id, of.name, of.data, of.timestamp); }
};

template <typename T>
concept Structure = requires(T value) { T::fields(value); };

template <Structure T>
QDBusArgument& operator<<(QDBusArgument& argument, const T& value) {
    argument.beginStructure();
    std::apply([&](const auto&... fields) { (argument << ... << fields); }, T::fields(value));
    argument.endStructure();
    return argument;
}

template <Structure T>
const QDBusArgument& operator>>(const QDBusArgument& argument, T& value) {
    argument.beginStructure();
    std::apply([&](auto&... fields) { (argument >> ... >> fields); }, T::fields(value));
    argument.endStructure();
    return argument;
}

/// Before any of them goes over the bus; more than once does no harm.
void registerTypes();

} // namespace corvane::bus
