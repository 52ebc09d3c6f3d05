#include "qt/tray/Popup.h"

#include "qt/items/Pictures.h"
#include "qt/items/Strings.h"

#include <QApplication>
#include <QMenu>

namespace corvane {

namespace {

void add(QMenu& menu, const MenuItem& item) {
    // An ampersand would mark the letter behind it, and a tab begin another column.
    auto* shown = menu.addAction(toQString(item.title).replace('&', "&&").replace('\t', ' '));
    shown->setSeparator(item.isSeparator);
    shown->setEnabled(item.isEnabled);
    shown->setCheckable(item.state.has_value());
    shown->setChecked(item.state.value_or(false));
    if (item.image) shown->setIcon(iconOf(*item.image));
    if (!item.action) return;
    QObject::connect(
        shown, &QAction::triggered, qApp, [action = item.action] { action(); },
        Qt::QueuedConnection);
}

} // namespace

std::unique_ptr<QMenu> makePopup(const Menu& menu) {
    auto popup = std::make_unique<QMenu>();
    for (const auto& item : menu)
        add(*popup, item);
    return popup;
}

} // namespace corvane
