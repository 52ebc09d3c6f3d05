#include "core/WorkspaceStore.h"
#include "foundation/Diagnostics.h"
#include "launch/ResourceLauncher.h"

namespace corvane {

std::shared_ptr<ResourceLauncher> WorkspaceStore::makeResourceLauncher() const {
    return std::make_shared<ResourceLauncher>(platform_, bookmarks_);
}

void WorkspaceStore::startWorkspace(const Workspace& workspace) {
    if (workspace.resources.empty()) return;
    if (focusMode) quitNonWorkspaceApplications(workspace);
    if (!runningResources->contains(workspace.id)) {
        runningResources.mutate([&](auto& running) { running[workspace.id]; });
    }
    for (const auto& resource : workspace.resources) {
        if (!resource.enabled || resource.type == ResourceType::separator) continue;
        diagnostic({"Launching resource: ", resource.name, " at ", resource.path});
        switch (resource.type) {
        case ResourceType::url:
            resourceLauncher_->launchURLResource(resource);
            break;
        case ResourceType::terminal:
            resourceLauncher_->launchTerminalResource(resource);
            break;
        default:
            resourceLauncher_->launchFileResource(resource);
        }
        markRunning(resource.id, workspace.id);
    }
    hasLaunchedResources = true;
    runningWorkspaces.mutate([&](auto& running) { running.insert(workspace.id); });
    restoreWorkspaceLayout(workspace);
}

void WorkspaceStore::launchIndividualResource(const Resource& resource,
                                              const Workspace& workspace) {
    if (resource.type == ResourceType::separator) return;
    diagnostic({"Launching individual resource: ", resource.name});
    if (!resource.associatedApps.empty()) {
        resourceLauncher_->launchResourceWithApp(resource, resource.associatedApps.front());
    } else if (const auto appName = appNameForResource(resource)) {
        resourceLauncher_->launchResourceWithApp(resource, *appName);
    } else {
        resourceLauncher_->launchResource(resource);
    }
    markRunning(resource.id, workspace.id);
}

void WorkspaceStore::markRunning(const Uuid& resourceId, const Uuid& workspaceId) {
    runningResources.mutate([&](auto& running) { running[workspaceId].insert(resourceId); });
}

} // namespace corvane
