#include "core/WorkspaceStore.h"

#include <string>
#include <utility>

namespace corvane {

namespace {

constexpr int replaceAll = AlertResponse::firstButton;
constexpr int merge = AlertResponse::secondButton;

} // namespace

void WorkspaceStore::importWorkspaces() {
    auto imported = persistence_.importWorkspaces();
    if (!imported) return;
    const auto count = std::to_string(imported->size());
    const auto answer = platform_.alerts.runModal(
        {.title = "Import Workspaces",
         .message = "Found " + count + " workspace(s). How would you like to import them?",
         .buttons = {"Replace All", "Merge", "Cancel"}});
    if (answer.button == replaceAll) {
        workspaces = std::move(*imported);
        activateFirstWorkspace();
    } else if (answer.button == merge) {
        workspaces.mutate([&](auto& list) {
            for (auto& workspace : *imported)
                list.push_back(std::move(workspace));
        });
    } else {
        return;
    }
    saveWorkspaces();
    if (!savingProblem->empty()) {
        return showInfoAlert(
            "Import Not Saved",
            "The " + count +
                " imported workspace(s) are here, but can't be saved: " + *savingProblem);
    }
    showInfoAlert("Import Successful", "Successfully imported " + count + " workspace(s)!");
}

void WorkspaceStore::exportWorkspaces() {
    const auto url = persistence_.exportWorkspaces(workspaces);
    if (!url) return;
    showInfoAlert("Export Successful", "Workspaces exported to: " + url->lastPathComponent());
}

} // namespace corvane
