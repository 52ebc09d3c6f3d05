#include "core/WorkspaceStore.h"
#include "foundation/Diagnostics.h"
#include "foundation/Text.h"

#include <algorithm>
#include <utility>

namespace corvane {

void WorkspaceStore::addWorkspace(Workspace workspace) {
    workspaces.mutate([&](auto& list) { list.push_back(std::move(workspace)); });
    saveWorkspaces();
}

void WorkspaceStore::updateWorkspace(Workspace workspace) {
    if (!find(workspace.id)) return;
    workspaces.mutate([&](auto& list) { *findById(list, workspace.id) = workspace; });
    if (activeWorkspace.get() && activeWorkspace.get()->id == workspace.id) {
        platform_.mainQueue.async([this, workspace] { activeWorkspace = workspace; });
    }
    saveWorkspaces();
}

void WorkspaceStore::deleteWorkspace(const Uuid& workspaceId) {
    // The identifier may be a field of a record that goes now.
    const Uuid id = workspaceId;
    if (find(id)) persistence_.keepCopy(workspaces);
    workspaces.mutate([&](auto& list) {
        std::erase_if(list, [&](const auto& record) { return record.id == id; });
    });
    if (activeWorkspace.get() && activeWorkspace.get()->id == id) activateFirstWorkspace();
    saveWorkspaces();
}

void WorkspaceStore::duplicateWorkspace(const Workspace& workspace) {
    Workspace copy = workspace;
    copy.id = Uuid::random();
    copy.name += " Copy";
    copy.dateCreated = copy.dateModified = platform_.clock.now();
    addWorkspace(std::move(copy));
}

template <typename Change>
void WorkspaceStore::editResources(const Uuid& workspaceId, Change change) {
    if (!find(workspaceId)) return;
    workspaces.mutate([&](auto& list) { change(findById(list, workspaceId)->resources); });
    saveWorkspaces();
}

template <typename Change>
void WorkspaceStore::editResource(const Uuid& resourceId, const Uuid& workspaceId, Change change) {
    if (!find(resourceId, workspaceId)) return;
    editResources(workspaceId, [&](auto& resources) { change(*findById(resources, resourceId)); });
}

const Workspace* WorkspaceStore::find(const Uuid& workspaceId) const {
    return findById(*workspaces, workspaceId);
}

const Resource* WorkspaceStore::find(const Uuid& resourceId, const Uuid& workspaceId) const {
    const auto* workspace = find(workspaceId);
    return workspace ? findById(workspace->resources, resourceId) : nullptr;
}

bool WorkspaceStore::isRunning(const Uuid& workspaceId) const {
    return runningWorkspaces->contains(workspaceId);
}

bool WorkspaceStore::isRunning(const Uuid& resourceId, const Uuid& workspaceId) const {
    const auto entry = runningResources->find(workspaceId);
    return entry != runningResources->end() && entry->second.contains(resourceId);
}

void WorkspaceStore::activate(const Workspace& workspace) {
    activeWorkspace = workspace;
    hasLaunchedResources = false;
}

void WorkspaceStore::search(std::string text) {
    searchText = std::move(text);
}

void WorkspaceStore::addResource(Resource resource, const Uuid& workspaceId) {
    editResources(workspaceId, [&](auto& resources) { resources.push_back(std::move(resource)); });
}

void WorkspaceStore::removeResource(const Uuid& resourceId, const Uuid& workspaceId) {
    if (!find(resourceId, workspaceId)) return;
    // The identifiers may be fields of the record that goes now.
    const Uuid id = resourceId;
    const Uuid owner = workspaceId;
    workspaces.mutate([&](auto& list) {
        auto& resources = findById(list, owner)->resources;
        resources.erase(std::ranges::find(resources, id, &Resource::id));
    });
    if (runningResources->contains(owner)) {
        runningResources.mutate([&](auto& running) { running[owner].erase(id); });
    }
    saveWorkspaces();
}

void WorkspaceStore::insertWorkspace(Workspace workspace, std::size_t index) {
    workspaces.mutate([&](auto& list) {
        list.insert(list.begin() + static_cast<std::ptrdiff_t>(std::min(index, list.size())),
                    std::move(workspace));
    });
    saveWorkspaces();
}

void WorkspaceStore::insertResource(Resource resource, std::size_t index, const Uuid& workspaceId) {
    editResources(workspaceId, [&](auto& list) {
        list.insert(list.begin() + static_cast<std::ptrdiff_t>(std::min(index, list.size())),
                    std::move(resource));
    });
}

void WorkspaceStore::moveResource(std::size_t from, std::size_t to, const Uuid& workspaceId) {
    const auto* workspace = find(workspaceId);
    if (!workspace) return;
    const auto count = workspace->resources.size();
    if (from >= count || to >= count) return;
    editResources(workspaceId, [&](auto& resources) {
        auto moved = std::move(resources[from]);
        resources.erase(resources.begin() + static_cast<std::ptrdiff_t>(from));
        resources.insert(resources.begin() + static_cast<std::ptrdiff_t>(to), std::move(moved));
    });
}

void WorkspaceStore::toggleResourceEnabled(const Uuid& resourceId, const Uuid& workspaceId) {
    editResource(resourceId, workspaceId,
                 [](Resource& resource) { resource.enabled = !resource.enabled; });
}

void WorkspaceStore::addAssociatedApp(const Uuid& resourceId, const std::string& appName,
                                      const Uuid& workspaceId) {
    editResource(resourceId, workspaceId,
                 [&](Resource& resource) { resource.associatedApps.push_back(appName); });
}

void WorkspaceStore::removeAssociatedApp(const Uuid& resourceId, const std::string& appName,
                                         const Uuid& workspaceId) {
    const auto* resource = find(resourceId, workspaceId);
    if (!resource || std::ranges::count(resource->associatedApps, appName) == 0) return;
    const std::string name = appName;
    editResource(resourceId, workspaceId, [&](Resource& edited) {
        auto& apps = edited.associatedApps;
        apps.erase(std::find(apps.begin(), apps.end(), name));
    });
}

void WorkspaceStore::renameResource(const Uuid& resourceId, std::string newName,
                                    const Uuid& workspaceId) {
    editResource(resourceId, workspaceId,
                 [&](Resource& resource) { resource.name = std::move(newName); });
}

bool WorkspaceStore::acceptsPath(const Url& url) {
    const bool isText = text::isValidUtf8(url.path());
    if (!isText) {
        showInfoAlert("Name Not Supported",
                      "'" + text::replacingInvalidUtf8(url.lastPathComponent()) +
                          "' can't be added, since its path isn't valid UTF-8 text.");
    }
    return isText;
}

void WorkspaceStore::addResourceFromURL(const Url& url, const Uuid& workspaceId) {
    const auto extension = url.pathExtension();
    diagnostic({"addResourceFromURL called with URL: ", url.path()});
    diagnostic({"URL pathExtension: '", extension, "'"});
    diagnostic({"URL hasDirectoryPath: ", url.hasDirectoryPath() ? "true" : "false"});
    if (!acceptsPath(url)) return;
    const bool isAccessing = platform_.bookmarks.startAccessing(url);
    const auto type = extension.empty() && url.hasDirectoryPath() ? ResourceType::folder
                      : extension == "app"                        ? ResourceType::application
                                                                  : ResourceType::file;
    auto name =
        type == ResourceType::application ? path::stem(url.path()) : url.lastPathComponent();
    addResource(makeResource(std::move(name), url.path(), type, platform_.bundles), workspaceId);
    if (isAccessing) platform_.bookmarks.stopAccessing(url);
}

} // namespace corvane
