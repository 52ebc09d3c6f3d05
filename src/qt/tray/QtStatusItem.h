#pragma once

#include "platform/StatusBar.h"

#include <QHash>
#include <QIcon>
#include <QMenu>
#include <QObject>
#include <QSystemTrayIcon>
#include <memory>
#include <optional>

namespace corvane {

class TrayWatch;

/// One item in the tray, whenever there is one. A burst of menus becomes one, on the next turn of
/// the event loop; one that looks like the last only acts differently.
class QtStatusItem final : public QObject, public StatusItem {
public:
    explicit QtStatusItem(TrayWatch& tray);

    bool hasButton() const override { return true; }
    void setButton(StatusButton button) override;
    void setMenu(Menu menu) override;

    bool isPlaced() const { return icon_ != nullptr; }

private:
    void place();
    void scheduleRefresh();
    void refresh();
    void replaceWhatLooksNew(const Menu& next);
    QAction* makeAction(const MenuItem& item);
    QIcon menuIcon(const Image& image);
    void choose(QAction* chosen) const;

    TrayWatch& tray_;
    StatusButton button_;
    /// What `menu_` shows, and what it is to show next.
    Menu shown_;
    std::optional<Menu> next_;
    bool isScheduled_ = false;
    /// The menu is shown by a host, not by this program.
    bool goesOverBus_ = false;
    QHash<QString, QIcon> menuIcons_;
    QMenu menu_;
    std::unique_ptr<QSystemTrayIcon> icon_;
};

} // namespace corvane
