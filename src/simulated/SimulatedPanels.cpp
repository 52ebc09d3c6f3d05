#include "simulated/SimulatedPanels.h"

#include "platform/MainQueue.h"

#include <utility>

namespace corvane {

std::optional<Url> SimulatedPanels::runSavePanel(const SavePanel& panel) {
    savePanels.push_back(panel);
    return choose(panel.title);
}

std::optional<Url> SimulatedPanels::runOpenPanel(const OpenPanel& panel) {
    openPanels.push_back(panel);
    return choose(panel.title);
}

void SimulatedPanels::beginOpenPanel(const OpenPanel& panel,
                                     std::function<void(std::optional<Url>)> completion) {
    queue_.async(
        [completion = std::move(completion), chosen = runOpenPanel(panel)] { completion(chosen); });
}

std::optional<Url> SimulatedPanels::choose(const std::string& title) {
    log_.push_back("panel " + title);
    const auto chosen = choices.find(title);
    return chosen == choices.end() ? std::nullopt : std::optional(Url::fromPath(chosen->second));
}

} // namespace corvane
