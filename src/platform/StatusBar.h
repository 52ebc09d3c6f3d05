#pragma once

#include "platform/Images.h"

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace corvane {

/// NSMenuItem with no key equivalent.
struct MenuItem {
    std::string title = {};
    /// Called when the user chooses the item; empty where it only says something.
    std::function<void()> action = {};
    bool isEnabled = true;
    /// Whether it is checked, for an item that is a switch.
    std::optional<bool> state = {};
    std::optional<Image> image = {};
    bool isSeparator = false;

    static MenuItem separator() { return {.isSeparator = true}; }
};

/// NSMenu with autoenablesItems off.
using Menu = std::vector<MenuItem>;

/// What the button of a status item shows: its image alone, or its title where there is none.
struct StatusButton {
    std::string title = {};
    std::optional<Image> image = {};
    std::string toolTip = {};

    bool operator==(const StatusButton&) const = default;
};

/// NSStatusItem. It leaves the bar when it goes.
class StatusItem {
public:
    virtual ~StatusItem() = default;
    virtual bool hasButton() const = 0;
    virtual void setButton(StatusButton button) = 0;
    /// Replaces the menu that a click on the item opens. One that is open stays as it is.
    virtual void setMenu(Menu menu) = 0;
};

/// NSStatusBar systemStatusBar. Main thread.
class StatusBar {
public:
    virtual ~StatusBar() = default;
    /// statusItemWithLength:, in points. Where the desktop has no place for it now, it appears once
    /// there is one.
    virtual std::unique_ptr<StatusItem> statusItem(double length) = 0;
    /// The user can see an item of this bar.
    virtual bool isShown() const = 0;
};

} // namespace corvane
