#include "core/WorkspaceStore.h"
#include "foundation/Diagnostics.h"
#include "foundation/Text.h"

#include <algorithm>
#include <utility>

namespace corvane {

namespace {

template <typename List>
auto findById(List& list, const Uuid& id) {
    return std::find_if(list.begin(), list.end(),
                        [&](const auto& record) { return record.id == id; });
}

} // namespace

void WorkspaceStore::addWorkspace(Workspace workspace) {
    workspaces.mutate([&](auto& list) { list.push_back(std::move(workspace)); });
    saveWorkspaces();
}

void WorkspaceStore::updateWorkspace(Workspace workspace) {
    const auto found = findById(*workspaces, workspace.id);
    if (found == workspaces->end()) return;
    const auto index = found - workspaces->begin();
    workspaces.mutate([&](auto& list) { list[static_cast<std::size_t>(index)] = workspace; });
    if (activeWorkspace.get() && activeWorkspace.get()->id == workspace.id) {
        platform_.mainQueue.async([this, workspace] { activeWorkspace = workspace; });
    }
    saveWorkspaces();
}

void WorkspaceStore::deleteWorkspace(const Uuid& workspaceId) {
    // The identifier may be a field of a record that goes now.
    const Uuid id = workspaceId;
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
    const auto found = findById(*workspaces, workspaceId);
    if (found == workspaces->end()) return;
    const auto index = static_cast<std::size_t>(found - workspaces->begin());
    workspaces.mutate([&](auto& list) { change(list[index].resources); });
    saveWorkspaces();
}

template <typename Change>
void WorkspaceStore::editResource(const Uuid& resourceId, const Uuid& workspaceId, Change change) {
    const auto* resource = findResource(resourceId, workspaceId);
    if (!resource) return;
    editResources(workspaceId, [&](auto& resources) { change(*findById(resources, resourceId)); });
}

const Resource* WorkspaceStore::findResource(const Uuid& resourceId,
                                             const Uuid& workspaceId) const {
    const auto workspace = findById(*workspaces, workspaceId);
    if (workspace == workspaces->end()) return nullptr;
    const auto resource = findById(workspace->resources, resourceId);
    return resource == workspace->resources.end() ? nullptr : &*resource;
}

void WorkspaceStore::addResource(Resource resource, const Uuid& workspaceId) {
    editResources(workspaceId, [&](auto& resources) { resources.push_back(std::move(resource)); });
}

void WorkspaceStore::removeResource(const Uuid& resourceId, const Uuid& workspaceId) {
    if (!findResource(resourceId, workspaceId)) return;
    // The identifiers may be fields of the record that goes now.
    const Uuid id = resourceId;
    const Uuid owner = workspaceId;
    workspaces.mutate([&](auto& list) {
        auto& resources = findById(list, owner)->resources;
        resources.erase(findById(resources, id));
    });
    if (runningResources->contains(owner)) {
        runningResources.mutate([&](auto& running) { running[owner].erase(id); });
    }
    saveWorkspaces();
}

void WorkspaceStore::moveResource(std::size_t from, std::size_t to, const Uuid& workspaceId) {
    const auto workspace = findById(*workspaces, workspaceId);
    if (workspace == workspaces->end()) return;
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
    const auto* resource = findResource(resourceId, workspaceId);
    if (!resource ||
        std::count(resource->associatedApps.begin(), resource->associatedApps.end(), appName) == 0)
        return;
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
