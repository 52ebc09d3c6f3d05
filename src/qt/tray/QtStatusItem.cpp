#include "qt/tray/QtStatusItem.h"

#include "qt/items/Pictures.h"
#include "qt/items/Strings.h"
#include "qt/tray/HostedItem.h"
#include "qt/tray/Popup.h"

#include <QCursor>
#include <QMenu>
#include <utility>

namespace corvane {

QtStatusItem::QtStatusItem(TrayWatch& tray) : tray_(tray) {
    connect(&tray_, &TrayWatch::changed, this, &QtStatusItem::place);
}

QtStatusItem::~QtStatusItem() = default;

void QtStatusItem::setButton(StatusButton button) {
    button_ = std::move(button);
    icon_.reset();
    place();
}

bool QtStatusItem::isPlacedIn(TrayKind kind) const {
    return (kind == TrayKind::host && hosted_) || (kind == TrayKind::display && icon_);
}

/// Another host has to hear of the item anew. The toolkit's icon, which it would put into a host
/// too if there were one when it makes its first, moves from tray to tray on the display by itself.
void QtStatusItem::place() {
    const auto kind = tray_.kind();
    hosted_.reset();
    if (kind != TrayKind::display) icon_.reset();
    if (kind == TrayKind::display && !icon_) placeOnDisplay();
    if (kind != TrayKind::host) return;
    hosted_ = std::make_unique<HostedItem>(button_, menu_);
    connect(hosted_.get(), &HostedItem::menuWanted, this, &QtStatusItem::popUp);
    connect(
        hosted_.get(), &HostedItem::refused, this, [this] { hosted_.reset(); },
        Qt::QueuedConnection);
}

void QtStatusItem::placeOnDisplay() {
    icon_ = std::make_unique<QSystemTrayIcon>();
    if (button_.image) icon_->setIcon(iconOf(*button_.image));
    icon_->setToolTip(toQString(button_.toolTip));
    connect(icon_.get(), &QSystemTrayIcon::activated, this, [this](auto reason) {
        const bool isClick =
            reason == QSystemTrayIcon::Trigger || reason == QSystemTrayIcon::Context;
        if (isClick) popUp(QCursor::pos());
    });
    icon_->show();
}

void QtStatusItem::setMenu(Menu menu) {
    next_ = std::move(menu);
    if (std::exchange(isScheduled_, true)) return;
    QMetaObject::invokeMethod(this, &QtStatusItem::refresh, Qt::QueuedConnection);
}

void QtStatusItem::refresh() {
    isScheduled_ = false;
    menu_.show(*std::exchange(next_, std::nullopt));
}

void QtStatusItem::popUp(QPoint where) {
    poppedUp_ = makePopup(menu_.shown());
    poppedUp_->popup(where);
}

} // namespace corvane
