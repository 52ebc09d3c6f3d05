#pragma once

#include "bus/BusService.h"

#include <optional>
#include <string>
#include <vector>

namespace corvane::desktop {

/// One item of a menu that a tray shows.
struct TrayMenuItem {
    int id = 0;
    /// As the tray shows it; "-" for a separator.
    std::string label;
    bool isEnabled = true;
    std::optional<bool> state;
};

/// A tray for StatusNotifier items, as a panel is one: items register with it, and it reads and
/// presses what is in their menus.
class TrayHost {
public:
    explicit TrayHost(const std::string& busAddress);

    /// How many items have come, those that went again included.
    std::size_t arrivals() const { return watcher_.calls().size(); }
    /// The menu of the last item; empty where there is none.
    std::vector<TrayMenuItem> menu() const;
    /// "Title|-|(Disabled)|[x] On|[ ] Off"
    std::string shownMenu() const;
    /// Chooses the item whose label starts with that text; false where there is none soon.
    bool press(const std::string& label) const;
    /// A host that shows no menus: the item is told of a click there. False where there is no item.
    bool click(int x, int y) const;
    /// The tool tip of the last item, and whether it has a picture for a panel of 22 pixels and
    /// says that each click is for the menu.
    std::string toolTip() const;
    bool hasPicture() const;
    bool isMenu() const;

private:
    std::string item() const;
    std::shared_ptr<GVariant> property(const std::string& name) const;

    mutable std::mutex mutex_;
    std::string item_;
    BusService watcher_;
};

} // namespace corvane::desktop
