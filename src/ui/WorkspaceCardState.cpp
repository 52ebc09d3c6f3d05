#include "ui/WorkspaceCardState.h"

#include "core/WorkspaceStore.h"
#include "platform/Alerts.h"
#include "platform/MainQueue.h"
#include "ui/UndoOffer.h"

#include <algorithm>
#include <functional>
#include <utility>
#include <vector>

namespace corvane {

namespace {

constexpr double startDelay = 0.5;
constexpr double spinnerAfterStart = 1.0;
constexpr double spinnerAfterFinish = 1.5;

} // namespace

WorkspaceCardState::WorkspaceCardState(const Uuid& workspaceId, WorkspaceStore& store,
                                       MainQueue& mainQueue, Alerts& alerts, UndoOffer& undo)
    : workspaceId_(workspaceId), store_(store), mainQueue_(mainQueue), alerts_(alerts),
      undo_(undo) {}

bool WorkspaceCardState::isRunning() const {
    return store_.isRunning(workspaceId_);
}

bool WorkspaceCardState::canSaveLayout() const {
    return store_.enableAccessibilityFeatures;
}

std::string WorkspaceCardState::startTitle() const {
    return isLoading ? loadingMessage.get() : "Start";
}

std::string WorkspaceCardState::statusText(const Workspace& workspace) const {
    if (isLoading) return loadingMessage;
    return std::to_string(runningResourceCount(workspace, store_)) + " resources running";
}

void WorkspaceCardState::start(const Workspace& workspace) {
    if (isLoading) return;
    isLoading = true;
    loadingMessage = "Starting...";
    mainQueue_.after(
        startDelay, [&store = store_, &mainQueue = mainQueue_, workspace, card = weak_from_this()] {
            store.activate(workspace);
            store.startWorkspace(workspace);
            mainQueue.after(spinnerAfterStart, [card] {
                if (const auto present = card.lock()) present->isLoading = false;
            });
        });
}

void WorkspaceCardState::finish(const Workspace& workspace) {
    isLoading = true;
    loadingMessage = "Closing resources...";
    store_.finishWorkspace(workspace);
    mainQueue_.after(spinnerAfterFinish, [card = weak_from_this()] {
        const auto present = card.lock();
        if (!present) return;
        present->isLoading = false;
        present->showingFinishConfirm = false;
    });
}

void WorkspaceCardState::saveLayout(const Workspace& workspace) {
    if (!isRunning()) {
        alerts_.runModal(
            {.title = "Cannot Save Layout",
             .message =
                 "The workspace '" + workspace.name +
                 "' must be running to save its layout. Please start the workspace first, then save the layout.",
             .style = AlertStyle::warning,
             .buttons = {"OK"}});
        return;
    }
    store_.saveWorkspaceLayout(workspace);
    if (store_.showLayoutSavedAlert) showLayoutSavedAlert(workspace.name);
}

void WorkspaceCardState::showLayoutSavedAlert(const std::string& workspaceName) {
    store_.showDismissibleAlert("Layout Saved",
                                "The current window layout has been saved for '" + workspaceName +
                                    "'. It will be restored when you start this workspace.",
                                DismissibleAlertType::layoutSaved);
}

void WorkspaceCardState::deleteWorkspace(const Workspace& workspace) {
    const auto response =
        alerts_.runModal({.title = "Delete Workspace",
                          .message = "Are you sure you want to delete '" + workspace.name +
                                     "'? This action cannot be undone.",
                          .style = AlertStyle::warning,
                          .buttons = {"Delete", "Cancel"},
                          .firstButtonIsDestructive = true});
    if (response.button != AlertResponse::firstButton) return;
    std::vector<std::pair<std::size_t, Workspace>> deleted;
    const auto& list = *store_.workspaces;
    for (std::size_t i = 0; i < list.size(); ++i) {
        if (list[i].id == workspace.id) deleted.emplace_back(i, list[i]);
    }
    store_.deleteWorkspace(workspace.id);
    if (deleted.empty()) return;
    undo_.offer(deleted.front().second.name, [&store = store_, deleted] {
        for (const auto& [place, record] : deleted)
            store.insertWorkspace(record, place);
    });
}

std::string finishMessage(const std::string& workspaceName) {
    return "This will close all running resources in \"" + workspaceName + "\"";
}

std::size_t runningResourceCount(const Workspace& workspace, const WorkspaceStore& store) {
    return std::ranges::count_if(workspace.resources, [&](const Resource& resource) {
        return resource.type != ResourceType::separator &&
               store.isRunning(resource.id, workspace.id);
    });
}

std::size_t cardGradientIndex(const std::string& workspaceName) {
    return std::hash<std::string>()(workspaceName) % cardGradientCount;
}

} // namespace corvane
