#include "core/WorkspaceStore.h"
#include "foundation/Text.h"

#include <algorithm>
#include <map>
#include <string>
#include <string_view>
#include <utility>

namespace corvane {

namespace {

constexpr int replaceAll = AlertResponse::firstButton;
constexpr int merge = AlertResponse::secondButton;

std::string counted(std::size_t count, std::string_view noun, std::string_view nouns) {
    return std::to_string(count) + " " + std::string(count == 1 ? noun : nouns);
}

/// "2 workspaces; 1 file; 4 terminal commands:", with the first three commands below; empty where
/// there are no resources. What a press would run is to be seen before it comes in.
std::string contentOf(const std::vector<Workspace>& imported) {
    constexpr std::size_t commandsShown = 3;
    constexpr std::size_t mostCharacters = 300;
    std::map<ResourceType, std::size_t> counts;
    std::string commands;
    for (const auto& workspace : imported) {
        for (const auto& resource : workspace.resources) {
            const auto count = ++counts[resource.type];
            if (resource.type != ResourceType::terminal || count > commandsShown) continue;
            commands += "\n• " + text::onOneLine(resource.path, mostCharacters);
        }
    }
    std::string content;
    for (const auto& [type, count] : counts) {
        const auto& facts = factsOf(type);
        if (!facts.noun.empty()) content += "; " + counted(count, facts.noun, facts.nouns);
    }
    if (content.empty()) return content;
    const auto commandCount = counts[ResourceType::terminal];
    if (commandCount > 0) content += ":" + commands;
    if (commandCount > commandsShown)
        content += "\nand " + std::to_string(commandCount - commandsShown) + " more";
    return "\n\n" + counted(imported.size(), "workspace", "workspaces") + content;
}

/// "3 of 5 are here already"; empty where none is.
std::string knownOf(const std::vector<Workspace>& imported, const std::vector<Workspace>& here) {
    const auto isHere = [&](const Workspace& workspace) { return findById(here, workspace.id); };
    const auto known = std::ranges::count_if(imported, isHere);
    if (known == 0) return "";
    return "\n\n" + std::to_string(known) + " of " + std::to_string(imported.size()) +
           " are here already. Merging adds them a second time.";
}

} // namespace

void WorkspaceStore::importWorkspaces() {
    importWorkspacesFrom("");
}

void WorkspaceStore::importKeptCopy() {
    importWorkspacesFrom(persistence_.copiesDirectory());
}

void WorkspaceStore::importWorkspacesFrom(const std::string& folder) {
    auto imported = persistence_.importWorkspaces(folder);
    if (!imported) return;
    const auto count = std::to_string(imported->size());
    const auto answer = platform_.alerts.runModal(
        {.title = "Import Workspaces",
         .message = "Found " + count + " workspace(s). How would you like to import them?" +
                    contentOf(*imported) + knownOf(*imported, workspaces),
         .buttons = {"Replace All", "Merge", "Cancel"}});
    if (answer.button == replaceAll) {
        persistence_.keepCopy(workspaces);
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
