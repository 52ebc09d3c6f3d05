#include "qt/items/ControlAccessible.h"

#include <QAccessibleObject>
#include <QQuickItem>
#include <QQuickWindow>

namespace corvane {

namespace {

/// What `Accessible` was given in a view.
QObject* saidOf(const QObject& control) {
    for (auto* child : control.children()) {
        if (qstrcmp(child->metaObject()->className(), "QQuickAccessibleAttached") == 0)
            return child;
    }
    return nullptr;
}

QRect onScreen(const QQuickItem& item) {
    const auto* window = item.window();
    if (!window) return {};
    const auto place = item.mapRectToScene(QRectF(0, 0, item.width(), item.height())).toRect();
    return place.translated(window->mapToGlobal(QPoint(0, 0)));
}

/// A control that has been scrolled out of its list, or out of the window.
bool isOutOfSight(const QQuickItem& item, const QRect& place) {
    for (const auto* above = item.parentItem(); above; above = above->parentItem()) {
        if (above->clip() && !onScreen(*above).intersects(place)) return true;
    }
    return !QRect(item.window()->mapToGlobal(QPoint(0, 0)), item.window()->size())
                .intersects(place);
}

class ControlAccessible final : public QAccessibleObject, public QAccessibleActionInterface {
public:
    explicit ControlAccessible(QQuickItem* item) : QAccessibleObject(item) {}

    QWindow* window() const override { return item().window(); }
    QRect rect() const override { return onScreen(item()); }
    QAccessibleInterface* parent() const override {
        for (auto* above = item().parentItem(); above; above = above->parentItem()) {
            if (item().window() && above == item().window()->contentItem()) break;
            if (auto* found = QAccessible::queryAccessibleInterface(above)) return found;
        }
        return QAccessible::queryAccessibleInterface(item().window());
    }
    QAccessibleInterface* child(int) const override { return nullptr; }
    QAccessibleInterface* childAt(int, int) const override { return nullptr; }
    int childCount() const override { return 0; }
    int indexOfChild(const QAccessibleInterface*) const override { return -1; }

    QString text(QAccessible::Text kind) const override {
        if (kind == QAccessible::Name) return said("name").toString();
        if (kind == QAccessible::Description) return said("description").toString();
        return {};
    }
    QAccessible::Role role() const override {
        return QAccessible::Role(told("spokenRole", "role").toInt());
    }
    QAccessible::State state() const override {
        QAccessible::State state;
        const bool isShown = item().window() && item().window()->isVisible() &&
                             item().isVisible() && !qFuzzyIsNull(item().opacity());
        state.invisible = !isShown;
        state.offscreen = isShown && isOutOfSight(item(), rect());
        state.disabled = !item().isEnabled();
        state.focusable = item().activeFocusOnTab() && item().isEnabled();
        state.focused = item().hasActiveFocus();
        state.checkable = told("isToggle", "checkable").toBool();
        state.checked = told("isToggledOn", "checked").toBool();
        state.selectable = said("selectable").toBool();
        state.selected = said("selected").toBool();
        state.hasPopup = hasMenu();
        const auto isExpanded = item().property("isExpanded");
        state.expandable = isExpanded.isValid();
        state.expanded = isExpanded.toBool();
        state.collapsed = state.expandable && !state.expanded;
        return state;
    }

    void* interface_cast(QAccessible::InterfaceType type) override {
        if (type != QAccessible::ActionInterface) return QAccessibleObject::interface_cast(type);
        return static_cast<QAccessibleActionInterface*>(this);
    }
    QStringList actionNames() const override {
        QStringList names;
        if (!item().isEnabled()) return names;
        names << pressAction();
        if (told("isToggle", "checkable").toBool()) names << toggleAction();
        if (hasMenu()) names << showMenuAction();
        if (item().activeFocusOnTab()) names << setFocusAction();
        return names;
    }
    void doAction(const QString& name) override {
        if (!actionNames().contains(name)) return;
        if (name == setFocusAction()) return item().forceActiveFocus(Qt::TabFocusReason);
        // Later, as whoever asks waits for the answer, and a press may put a question.
        QMetaObject::invokeMethod(&item(), "press", Qt::QueuedConnection);
    }
    QStringList keyBindingsForAction(const QString&) const override { return {}; }

private:
    QQuickItem& item() const { return *static_cast<QQuickItem*>(object()); }
    QVariant said(const char* what) const {
        const auto* attached = saidOf(*object());
        return attached ? attached->property(what) : QVariant();
    }
    /// What the control says of itself, before what `Accessible` was given: see PressButton.
    QVariant told(const char* own, const char* what) const {
        const auto value = object()->property(own);
        return value.isValid() ? value : said(what);
    }
    bool hasMenu() const {
        return role() == QAccessible::ButtonMenu || role() == QAccessible::ComboBox;
    }
};

QAccessibleInterface* make(const QString& className, QObject* object) {
    if (className != QLatin1String("QQuickAbstractButton")) return nullptr;
    const auto* attached = saidOf(*object);
    if (!attached || attached->property("ignored").toBool()) return nullptr;
    auto* item = qobject_cast<QQuickItem*>(object);
    // The toolkit tells of a change only on what it describes itself.
    QObject::connect(item, &QQuickItem::enabledChanged, item, [item] {
        QAccessible::State changed;
        changed.disabled = true;
        QAccessibleStateChangeEvent event(item, changed);
        QAccessible::updateAccessibility(&event);
    });
    return new ControlAccessible(item);
}

} // namespace

void describeControls() {
    QAccessible::installFactory(make);
}

} // namespace corvane
