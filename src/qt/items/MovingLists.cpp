#include "qt/items/MovingLists.h"

#include <QCoreApplication>
#include <QEvent>
#include <QQuickItem>
#include <QQuickWindow>

namespace corvane {
namespace {

void stopLists(QQuickItem& item) {
    if (item.inherits("QQuickFlickable")) QMetaObject::invokeMethod(&item, "cancelFlick");
    for (auto* child : item.childItems())
        if (child->isVisible()) stopLists(*child);
}

class ListStopper final : public QObject {
public:
    using QObject::QObject;
    bool eventFilter(QObject* watched, QEvent* event) override {
        if (event->type() != QEvent::MouseButtonPress) return false;
        if (auto* const window = qobject_cast<QQuickWindow*>(watched))
            stopLists(*window->contentItem());
        return false;
    }
};

} // namespace

void stopMovingListsAtClicks(QCoreApplication& application) {
    application.installEventFilter(new ListStopper(&application));
}

} // namespace corvane
