#include "simulated/SimulatedStatusBar.h"

#include "foundation/Text.h"

#include <algorithm>

namespace corvane {

namespace {

class SimulatedStatusItem : public StatusItem {
public:
    explicit SimulatedStatusItem(SimulatedStatusBar& bar) : bar_(bar) { bar_.hasItem = true; }
    ~SimulatedStatusItem() override { bar_.hasItem = false; }

    bool hasButton() const override { return bar_.itemsHaveButtons; }
    void setButton(StatusButton button) override { bar_.button = std::move(button); }
    void setMenu(Menu menu) override {
        bar_.menu = std::move(menu);
        ++bar_.rebuilds;
    }

private:
    SimulatedStatusBar& bar_;
};

std::string shown(const MenuItem& item) {
    if (item.isSeparator) return "-";
    const std::string state = item.state ? (*item.state ? "[x] " : "[ ] ") : "";
    return state + (item.isEnabled ? item.title : "(" + item.title + ")");
}

} // namespace

std::string SimulatedStatusBar::shownMenu() const {
    std::vector<std::string> lines;
    for (const auto& item : menu)
        lines.push_back(shown(item));
    return text::joined(lines, "|");
}

bool SimulatedStatusBar::press(std::string_view title) {
    const auto found = std::ranges::find_if(menu, [&](const MenuItem& item) {
        return item.title.starts_with(title) && item.isEnabled && item.action;
    });
    if (found == menu.end()) return false;
    // A copy, as what it does may replace the menu.
    const auto action = found->action;
    action();
    return true;
}

std::unique_ptr<StatusItem> SimulatedStatusBar::statusItem(double itemLength) {
    length = itemLength;
    return std::make_unique<SimulatedStatusItem>(*this);
}

std::optional<Image> SimulatedStatusBar::named(const std::string& name) const {
    if (!assets.contains(name)) return std::nullopt;
    return Image{.source = Image::Source::asset, .name = name};
}

std::optional<Image> SimulatedStatusBar::applicationIcon() const {
    if (!hasApplicationIcon) return std::nullopt;
    return Image{.source = Image::Source::applicationIcon};
}

std::optional<Image>
SimulatedStatusBar::systemSymbol(const std::string& name,
                                 const std::string& accessibilityDescription) const {
    if (unknownSymbols.contains(name)) return std::nullopt;
    return Image{.source = Image::Source::symbol,
                 .name = name,
                 .accessibilityDescription = accessibilityDescription};
}

} // namespace corvane
