#include "core/WorkspaceStore.h"
#include "foundation/Diagnostics.h"
#include "launch/ResourceLauncher.h"

namespace corvane {

std::shared_ptr<ResourceLauncher> WorkspaceStore::makeResourceLauncher() const {
    const auto& p = platform_;
    const ApplicationLookup lookup(p.applications, p.bundles, p.tasks, p.metadataQuery);
    return std::make_shared<ResourceLauncher>(bookmarks_, p.fileSystem, p.applications, lookup,
                                              p.tasks, p.scripts, p.alerts, p.mainQueue,
                                              p.backgroundQueue);
}

void WorkspaceStore::startWorkspace(const Workspace& workspace) {
    if (workspace.resources.empty()) return;
    if (focusMode) quitNonWorkspaceApplications(workspace);
    if (!runningResources->contains(workspace.id)) {
        runningResources.mutate([&](auto& running) { running[workspace.id]; });
    }
    resourceLauncher_->beginStart();
    for (const auto& resource : workspace.resources) {
        if (!resource.enabled || resource.type == ResourceType::separator) continue;
        resourceLauncher_->launchResource(resource);
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
    resourceLauncher_->beginStart();
    if (!resource.associatedApps.empty()) {
        resourceLauncher_->launchResourceWithApp(resource, resource.associatedApps.front());
    } else if (const auto appName = appNameForResource(resource)) {
        resourceLauncher_->launchResourceWithApp(resource, *appName);
    } else {
        resourceLauncher_->launchResource(resource);
    }
    markRunning(resource.id, workspace.id);
}

void WorkspaceStore::toggle(const Resource& resource, const Workspace& workspace) {
    if (isRunning(resource.id, workspace.id)) {
        quitIndividualResource(resource, workspace);
    } else {
        launchIndividualResource(resource, workspace);
    }
}

void WorkspaceStore::markRunning(const Uuid& resourceId, const Uuid& workspaceId) {
    runningResources.mutate([&](auto& running) { running[workspaceId].insert(resourceId); });
}

} // namespace corvane
