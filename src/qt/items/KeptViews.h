#pragma once

#include <QQmlComponent>
#include <QQuickItem>
#include <QUrl>
#include <memory>

#include <QtQml/qqmlregistration.h>

namespace corvane {

/// Views that were in sight lately, each of one model. To make one takes long, and a search takes
/// cards away and brings them back with each key. Those that wait are its children: it must not be
/// visible itself.
class KeptViews : public QQuickItem {
    Q_OBJECT
    QML_ELEMENT
    /// The file of the views, which have a property "resources". Isn't read before one is wanted.
    Q_PROPERTY(QUrl file MEMBER file_ REQUIRED)

public:
    /// As many wait at most. Those that have waited longest go.
    static constexpr qsizetype mostWaiting = 8;

    /// A view of these resources as a child of that item, which has it alone until it gives it back
    /// or the resources go. Null where the file can't be read.
    Q_INVOKABLE QQuickItem* take(QObject* resources, QQuickItem* parent);
    /// The keyboard doesn't stay in it.
    Q_INVOKABLE void giveBack(QQuickItem* view);

private:
    QQuickItem* make(QObject* resources, QQuickItem* parent);

    QUrl file_;
    std::unique_ptr<QQmlComponent> component_;
};

} // namespace corvane
