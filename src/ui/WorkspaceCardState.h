#pragma once

#include "core/Records.h"
#include "foundation/Published.h"

#include <memory>
#include <string>
#include <string_view>

namespace corvane {

class Alerts;
class MainQueue;
class UndoOffer;
class WorkspaceStore;

/// What the card of one workspace keeps and does. What it keeps belongs to the view and is never
/// stored; whether the workspace runs is the store's to say. Held by a shared pointer, as a start
/// under way outlives the card; store, queue, alerts and undo outlive both. Main thread.
class WorkspaceCardState : public std::enable_shared_from_this<WorkspaceCardState> {
public:
    WorkspaceCardState(const Uuid& workspaceId, WorkspaceStore& store, MainQueue& mainQueue,
                       Alerts& alerts, UndoOffer& undo);

    /// Fires before a field below changes.
    ChangeSignal objectWillChange;
    Published<bool> isExpanded{objectWillChange};
    /// A start or finish is under way.
    Published<bool> isLoading{objectWillChange};
    Published<std::string> loadingMessage{objectWillChange};
    /// The finish dialog is up.
    Published<bool> showingFinishConfirm{objectWillChange};

    bool isRunning() const;
    /// Whether a running card offers to save the layout.
    bool canSaveLayout() const;
    /// The text of the Start button.
    std::string startTitle() const;
    /// What a running card says of itself.
    std::string statusText(const Workspace& workspace) const;

    /// Starts the workspace as it is now, half a second from now; `isLoading` ends a second after
    /// that, whatever the launching still does. Does nothing while `isLoading`.
    void start(const Workspace& workspace);
    /// Finishes the workspace at once; `isLoading` ends one and a half seconds later.
    void finish(const Workspace& workspace);
    /// Saves the layout of a running workspace, and says so if the user wants to hear of it.
    void saveLayout(const Workspace& workspace);
    /// Deletes the workspace, running or not, if the user confirms it; it can be undone all the
    /// same.
    void deleteWorkspace(const Workspace& workspace);

private:
    void showLayoutSavedAlert(const std::string& workspaceName);

    const Uuid workspaceId_;
    WorkspaceStore& store_;
    MainQueue& mainQueue_;
    Alerts& alerts_;
    UndoOffer& undo_;
};

/// The second line of the finish dialog.
std::string finishMessage(const std::string& workspaceName);

/// The resources of the workspace that the store counts as launched, separators apart.
std::size_t runningResourceCount(const Workspace& workspace, const WorkspaceStore& store);

inline constexpr std::size_t cardGradientCount = 6;
/// Which of the gradients the icon tile of a workspace of that name has; may differ from run to
/// run.
std::size_t cardGradientIndex(const std::string& workspaceName);

} // namespace corvane
