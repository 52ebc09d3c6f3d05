#pragma once

#include "platform/Panels.h"

#include <map>
#include <string>
#include <vector>

namespace corvane {

/// File panels with a scripted user. Each panel goes into the log as "panel Title".
class SimulatedPanels : public Panels {
public:
    explicit SimulatedPanels(std::vector<std::string>& log) : log_(log) {}

    /// The paths that the user chooses, by the panel's title; a panel that isn't named is
    /// cancelled.
    std::map<std::string, std::string> choices;
    /// Every panel that was shown, in order.
    std::vector<SavePanel> savePanels;
    std::vector<OpenPanel> openPanels;

    std::optional<Url> runSavePanel(const SavePanel& panel) override;
    std::optional<Url> runOpenPanel(const OpenPanel& panel) override;

private:
    std::optional<Url> choose(const std::string& title);

    std::vector<std::string>& log_;
};

} // namespace corvane
