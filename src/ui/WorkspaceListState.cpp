#include "ui/WorkspaceListState.h"

#include "core/WorkspaceStore.h"
#include "foundation/Text.h"

#include <set>

namespace corvane {

WorkspaceListState::WorkspaceListState(WorkspaceStore& store, MainQueue& mainQueue, Alerts& alerts,
                                       UndoOffer& undo, MissingFiles& missing)
    : store_(store), mainQueue_(mainQueue), alerts_(alerts), undo_(undo), missing_(missing),
      storeChanges_(store.objectWillChange.subscribe([this] { objectWillChange.fire(); })),
      missingChanges_(missing.objectWillChange.subscribe([this] { objectWillChange.fire(); })) {}

std::vector<const Workspace*> WorkspaceListState::filteredWorkspaces() const {
    const auto& wanted = store_.searchText.get();
    std::vector<const Workspace*> filtered;
    for (const auto& workspace : *store_.workspaces) {
        if (wanted.empty() || text::localizedContainsIgnoringCase(workspace.name, wanted)) {
            filtered.push_back(&workspace);
        }
    }
    return filtered;
}

ListContent WorkspaceListState::content(std::size_t count) const {
    if (count > 0) return ListContent::cards;
    return store_.searchText->empty() ? ListContent::emptyWorkspaces : ListContent::emptySearch;
}

std::string WorkspaceListState::emptySearchMessage() const {
    return "No workspaces match \"" + store_.searchText.get() + "\"";
}

WorkspaceCardState& WorkspaceListState::card(const Uuid& workspaceId) {
    auto& card = cards_[workspaceId];
    if (!card.state) {
        card.state =
            std::make_shared<WorkspaceCardState>(workspaceId, store_, mainQueue_, alerts_, undo_);
        card.changes = card.state->objectWillChange.subscribe([this] { objectWillChange.fire(); });
    }
    return *card.state;
}

void WorkspaceListState::tidy() {
    std::set<Uuid> shown, present;
    for (const auto* workspace : filteredWorkspaces())
        shown.insert(workspace->id);
    for (const auto& workspace : *store_.workspaces)
        present.insert(workspace.id);
    std::erase_if(cards_, [&](const auto& entry) { return !present.contains(entry.first); });
    for (const auto& [id, card] : cards_) {
        const bool isUnseen = !shown.contains(id) && card.state->showingFinishConfirm;
        if (isUnseen) card.state->showingFinishConfirm = false;
    }
}

} // namespace corvane
