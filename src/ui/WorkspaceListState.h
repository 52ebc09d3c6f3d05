#pragma once

#include "core/Records.h"
#include "foundation/Published.h"
#include "ui/MissingFiles.h"
#include "ui/WorkspaceCardState.h"

#include <map>
#include <memory>
#include <string>
#include <vector>

namespace corvane {

/// What the list shows under the header.
enum class ListContent { cards, emptySearch, emptyWorkspaces };

/// The list of workspace cards of one main window. What it is given outlives it. Main thread.
class WorkspaceListState {
public:
    WorkspaceListState(WorkspaceStore& store, MainQueue& mainQueue, Alerts& alerts, UndoOffer& undo,
                       MissingFiles& missing);

    /// Fires before anything read here changes, the state of any card included.
    ChangeSignal objectWillChange;

    /// The store's workspaces whose name contains the search text, in stored order. Valid until the
    /// store's list changes.
    std::vector<const Workspace*> filteredWorkspaces() const;
    /// What to show when the filter let `count` workspaces through.
    ListContent content(std::size_t count) const;
    /// The second line of the empty search.
    std::string emptySearchMessage() const;

    MissingFiles& missing() const { return missing_; }
    /// Made at the first call for an identifier, and kept while the store has the workspace.
    WorkspaceCardState& card(const Uuid& workspaceId);
    /// Lets cards go whose workspaces have gone, and questions that nobody sees any more.
    void tidy();

private:
    struct Card {
        std::shared_ptr<WorkspaceCardState> state;
        Subscription changes;
    };

    WorkspaceStore& store_;
    MainQueue& mainQueue_;
    Alerts& alerts_;
    UndoOffer& undo_;
    MissingFiles& missing_;
    std::map<Uuid, Card> cards_;
    Subscription storeChanges_;
    Subscription missingChanges_;
};

} // namespace corvane
