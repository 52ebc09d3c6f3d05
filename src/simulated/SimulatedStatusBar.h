#pragma once

#include "platform/StatusBar.h"

#include <functional>
#include <set>
#include <string>
#include <string_view>

namespace corvane {

/// A status bar in memory, for one item, and the images that are there. A test reads the item and
/// presses what is in its menu.
class SimulatedStatusBar : public StatusBar, public Images {
public:
    // The scene.

    bool itemsHaveButtons = true;
    std::set<std::string> assets{"MenuBarIcon"};
    bool hasApplicationIcon = true;
    /// Symbols that aren't known; all others are.
    std::set<std::string> unknownSymbols;

    // What is shown.

    bool hasItem = false;
    double length = 0;
    StatusButton button;
    Menu menu;
    /// How often the menu was replaced.
    int rebuilds = 0;
    /// "Title|-|(Disabled)|[x] On|[ ] Off": the items from top to bottom, with "-" for a separator.
    std::string shownMenu() const;
    /// Chooses the first item whose title starts with that text, as a user does; false where there
    /// is none that can be chosen.
    bool press(std::string_view title);

    std::unique_ptr<StatusItem> statusItem(double itemLength) override;
    bool isShown() const override { return hasItem; }
    std::optional<Image> named(const std::string& name) const override;
    std::optional<Image> applicationIcon() const override;
    std::optional<Image> systemSymbol(const std::string& name,
                                      const std::string& accessibilityDescription) const override;
};

} // namespace corvane
