#include "qt/items/KeptViews.h"

#include <QQmlContext>
#include <QQuickWindow>

namespace corvane {
namespace {

/// What hands the keyboard on to all that has it within the view; null where nothing there has it.
/// One by one from inside, each would take it before it leaves.
QQuickItem* outermostFocusedIn(const QQuickItem& view) {
    auto* const focused = view.window() ? view.window()->activeFocusItem() : nullptr;
    if (!view.isAncestorOf(focused)) return nullptr;
    auto* outermost = focused;
    for (auto* item = focused; item && item != &view; item = item->parentItem())
        if (item->hasFocus()) outermost = item;
    return outermost;
}

} // namespace

QQuickItem* KeptViews::take(QObject* resources, QQuickItem* parent) {
    for (auto* view : childItems()) {
        if (view->property("resources").value<QObject*>() != resources) continue;
        view->setParentItem(parent);
        return view;
    }
    return make(resources, parent);
}

void KeptViews::giveBack(QQuickItem* view) {
    if (auto* const holder = outermostFocusedIn(*view)) holder->setFocus(false);
    view->setParentItem(this);
    const auto waiting = childItems();
    if (waiting.size() > mostWaiting) delete waiting.front();
}

QQuickItem* KeptViews::make(QObject* resources, QQuickItem* parent) {
    if (!component_) component_ = std::make_unique<QQmlComponent>(qmlEngine(this), file_);
    auto* const view = qobject_cast<QQuickItem*>(component_->beginCreate(qmlContext(this)));
    if (!view) {
        qWarning("%s", qPrintable(component_->errorString()));
        return nullptr;
    }
    component_->setInitialProperties(view, {{"resources", QVariant::fromValue(resources)}});
    view->setParent(this);
    view->setParentItem(parent);
    component_->completeCreate();
    connect(resources, &QObject::destroyed, view, [view] { delete view; });
    return view;
}

} // namespace corvane
