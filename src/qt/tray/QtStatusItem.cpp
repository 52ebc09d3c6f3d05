#include "qt/tray/QtStatusItem.h"

#include "qt/items/Pictures.h"
#include "qt/tray/TrayWatch.h"

#include <QCursor>
#include <algorithm>
#include <utility>

namespace corvane {

namespace {

bool looksLike(const MenuItem& a, const MenuItem& b) {
    return a.title == b.title && a.isEnabled == b.isEnabled && a.state == b.state &&
           a.image == b.image && a.isSeparator == b.isSeparator;
}

/// An ampersand would mark the letter behind it. Where the menu goes over the bus an underscore
/// does so, and the toolkit makes one of the first ampersand alone.
QString menuText(const std::string& title, bool goesOverBus) {
    auto text = QString::fromStdString(title);
    if (!goesOverBus) return text.replace('&', "&&");
    text.replace('_', "__");
    if (const auto first = text.indexOf('&'); first >= 0) text.insert(first, '&');
    return text;
}

} // namespace

QtStatusItem::QtStatusItem(TrayWatch& tray) : tray_(tray) {
    connect(&tray_, &TrayWatch::hostCame, this, &QtStatusItem::place);
    connect(&tray_, &TrayWatch::ownerCame, this, [this] {
        if (!icon_) place();
    });
    connect(&menu_, &QMenu::aboutToHide, this, &QtStatusItem::scheduleRefresh);
}

void QtStatusItem::setButton(StatusButton button) {
    button_ = std::move(button);
    place();
}

/// Makes the icon anew, as the toolkit's doesn't move from a host that went to the next one; on the
/// display it does. The toolkit settles for one kind of tray when it makes its first icon, so none
/// is made before there is one.
void QtStatusItem::place() {
    icon_.reset();
    if (!tray_.isThere()) return;
    goesOverBus_ = tray_.hasHost();
    icon_ = std::make_unique<QSystemTrayIcon>();
    if (button_.image) icon_->setIcon(iconOf(*button_.image));
    icon_->setToolTip(QString::fromStdString(button_.toolTip));
    icon_->setContextMenu(&menu_);
    connect(icon_.get(), &QSystemTrayIcon::activated, this, [this](auto reason) {
        if (reason == QSystemTrayIcon::Trigger) menu_.popup(QCursor::pos());
    });
    icon_->show();
    scheduleRefresh();
}

void QtStatusItem::setMenu(Menu menu) {
    next_ = std::move(menu);
    scheduleRefresh();
}

void QtStatusItem::scheduleRefresh() {
    if (std::exchange(isScheduled_, true)) return;
    QMetaObject::invokeMethod(this, &QtStatusItem::refresh, Qt::QueuedConnection);
}

void QtStatusItem::refresh() {
    isScheduled_ = false;
    // What is on the screen stays under the user's hand.
    if (!next_ || !icon_ || menu_.isVisible()) return;
    replaceWhatLooksNew(*next_);
    shown_ = std::move(*next_);
    next_.reset();
}

/// The items between the first and the last that look new, as a tray is told of each one that comes
/// or goes.
void QtStatusItem::replaceWhatLooksNew(const Menu& next) {
    const auto actions = menu_.actions();
    const auto shorter = std::min(shown_.size(), next.size());
    std::size_t same = 0;
    while (same < shorter && looksLike(shown_[same], next[same]))
        ++same;
    std::size_t sameAtEnd = 0;
    while (sameAtEnd < shorter - same &&
           looksLike(shown_[shown_.size() - 1 - sameAtEnd], next[next.size() - 1 - sameAtEnd]))
        ++sameAtEnd;
    for (std::size_t i = same; i < shown_.size() - sameAtEnd; ++i)
        delete actions[qsizetype(i)];
    auto* before = sameAtEnd > 0 ? actions[qsizetype(shown_.size() - sameAtEnd)] : nullptr;
    for (std::size_t i = same; i < next.size() - sameAtEnd; ++i)
        menu_.insertAction(before, makeAction(next[i]));
}

QAction* QtStatusItem::makeAction(const MenuItem& item) {
    auto* action = new QAction(menuText(item.title, goesOverBus_), &menu_);
    action->setSeparator(item.isSeparator);
    action->setEnabled(item.isEnabled);
    action->setCheckable(item.state.has_value());
    action->setChecked(item.state.value_or(false));
    if (item.image) action->setIcon(menuIcon(*item.image));
    connect(action, &QAction::triggered, this, [this, action] { choose(action); });
    return action;
}

QIcon QtStatusItem::menuIcon(const Image& image) {
    auto& icon = menuIcons_[QString::fromStdString(image.name)];
    if (icon.isNull()) icon = iconOf(image);
    return icon;
}

void QtStatusItem::choose(QAction* chosen) const {
    // A copy, as what it does may replace the menu.
    const auto action = shown_[std::size_t(menu_.actions().indexOf(chosen))].action;
    if (action) action();
}

} // namespace corvane
