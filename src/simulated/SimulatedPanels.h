#pragma once

#include "platform/Panels.h"

#include <map>
#include <string>
#include <vector>

namespace corvane {

class MainQueue;

/// File panels with a scripted user. Each panel goes into the log as "panel Title".
class SimulatedPanels : public Panels {
public:
    SimulatedPanels(std::vector<std::string>& log, MainQueue& queue) : log_(log), queue_(queue) {}

    /// The paths that the user chooses, by the panel's title; a panel that isn't named is
    /// cancelled.
    std::map<std::string, std::string> choices;
    /// Every panel that was shown, in order.
    std::vector<SavePanel> savePanels;
    std::vector<OpenPanel> openPanels;

    std::optional<Url> runSavePanel(const SavePanel& panel) override;
    std::optional<Url> runOpenPanel(const OpenPanel& panel) override;
    void beginOpenPanel(const OpenPanel& panel,
                        std::function<void(std::optional<Url>)> completion) override;

private:
    std::optional<Url> choose(const std::string& title);

    std::vector<std::string>& log_;
    MainQueue& queue_;
};

} // namespace corvane
