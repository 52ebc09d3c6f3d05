#include "ui/WorkspaceCardState.h"

#include "core/WorkspaceStore.h"

#include <algorithm>
#include <functional>

namespace corvane {

namespace {

constexpr double startDelay = 0.5;
constexpr double spinnerAfterStart = 1.0;

} // namespace

WorkspaceCardState::WorkspaceCardState(const Uuid& workspaceId, WorkspaceStore& store,
                                       MainQueue& mainQueue)
    : workspaceId_(workspaceId), store_(store), mainQueue_(mainQueue) {}

bool WorkspaceCardState::isRunning() const {
    return store_.runningWorkspaces->contains(workspaceId_);
}

std::string_view WorkspaceCardState::startTitle() const {
    return isLoading ? "Starting..." : "Start";
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
            store.activeWorkspace = workspace;
            store.hasLaunchedResources = false;
            store.startWorkspace(workspace);
            mainQueue.after(spinnerAfterStart, [card] {
                if (const auto present = card.lock()) present->isLoading = false;
            });
        });
}

std::size_t runningResourceCount(const Workspace& workspace, const WorkspaceStore& store) {
    const auto running = store.runningResources->find(workspace.id);
    if (running == store.runningResources->end()) return 0;
    return std::count_if(workspace.resources.begin(), workspace.resources.end(),
                         [&](const Resource& resource) {
                             return resource.type != ResourceType::separator &&
                                    running->second.contains(resource.id);
                         });
}

std::size_t cardGradientIndex(const std::string& workspaceName) {
    return std::hash<std::string>()(workspaceName) % cardGradientCount;
}

} // namespace corvane
