#pragma once

#include "platform/StatusBar.h"
#include "qt/tray/TrayMenu.h"
#include "qt/tray/TrayWatch.h"

#include <QObject>
#include <QSystemTrayIcon>
#include <memory>
#include <optional>

class QMenu;

namespace corvane {

class HostedItem;

/// One item in the tray, whenever there is one, of the kind that `TrayWatch` tells. A burst of
/// menus becomes one, on the next turn of the event loop; one that looks like the last only acts
/// differently.
class QtStatusItem final : public QObject, public StatusItem {
public:
    explicit QtStatusItem(TrayWatch& tray);
    ~QtStatusItem() override;

    bool hasButton() const override { return true; }
    void setButton(StatusButton button) override;
    void setMenu(Menu menu) override;

    bool isPlacedIn(TrayKind kind) const;

private:
    void place();
    void placeOnDisplay();
    void refresh();
    /// As the menu is now, whatever it becomes while it is on the screen.
    void popUp(QPoint where);

    TrayWatch& tray_;
    StatusButton button_;
    TrayMenu menu_;
    /// What `menu_` is to show next.
    std::optional<Menu> next_;
    bool isScheduled_ = false;
    std::unique_ptr<HostedItem> hosted_;
    std::unique_ptr<QSystemTrayIcon> icon_;
    std::unique_ptr<QMenu> poppedUp_;
};

} // namespace corvane
