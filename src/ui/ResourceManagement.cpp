#include "ui/ResourceManagement.h"

#include "core/WorkspaceStore.h"
#include "platform/Platform.h"
#include "ui/AppIcons.h"

#include <algorithm>

namespace corvane {

namespace {

/// The answer to a panel, which may come when the card has been closed and its list is gone.
void addApplication(const std::string& appName, const Uuid& resourceId, const Uuid& workspaceId,
                    WorkspaceStore& store, Alerts& alerts) {
    const auto* resource = store.find(resourceId, workspaceId);
    if (!resource) return;
    if (std::ranges::find(resource->associatedApps, appName) != resource->associatedApps.end()) {
        alerts.runModal({.title = "Duplicate App",
                         .message = appName + " is already associated with this resource.",
                         .style = AlertStyle::informational,
                         .buttons = {"OK"}});
        return;
    }
    store.addAssociatedApp(resourceId, appName, workspaceId);
}

} // namespace

ResourceManagement::ResourceManagement(const Uuid& workspaceId, WorkspaceStore& store,
                                       const Platform& platform)
    : workspaceId_(workspaceId), store_(store), platform_(platform),
      storeChanges_(store.objectWillChange.subscribe([this] { objectWillChange.fire(); })) {}

const Workspace* ResourceManagement::workspace() const {
    return store_.find(workspaceId_);
}

const Resource* ResourceManagement::resourceAt(std::size_t index) const {
    const auto* found = workspace();
    return found && index < found->resources.size() ? &found->resources[index] : nullptr;
}

std::vector<ResourceRow> ResourceManagement::rows() const {
    std::vector<ResourceRow> rows;
    const auto* found = workspace();
    if (!found) return rows;
    Icons icons;
    for (const auto& resource : found->resources) {
        const bool isApplication = resource.type == ResourceType::application;
        rows.push_back({.id = resource.id,
                        .type = resource.type,
                        .name = resource.name,
                        .opens = whatOpens(resource),
                        .icon = isApplication
                                    ? platform_.fileIcons.iconForFile(resource.path).value_or("")
                                    : "",
                        .enabled = resource.enabled,
                        .isRunning = store_.isRunning(resource.id, workspaceId_),
                        .chips = chipsOf(resource, icons)});
    }
    return rows;
}

std::vector<AppChip> ResourceManagement::chipsOf(const Resource& resource, Icons& icons) const {
    std::vector<AppChip> chips;
    if (resource.type == ResourceType::application || resource.type == ResourceType::separator) {
        return chips;
    }
    // A look-up may go through everything that runs, and many rows share the name of a browser.
    const auto icon = [&](const std::string& name) {
        const auto [found, isNew] = icons.try_emplace(name);
        if (isNew)
            found->second = appIconForName(name, platform_.fileSystem, platform_.applications,
                                           platform_.fileIcons);
        return found->second;
    };
    if (const auto appName = store_.appNameForResource(resource)) {
        auto found = icon(*appName);
        if (!found) found = openerIcon(resource);
        chips.push_back({*appName, true, found.value_or("")});
    }
    for (const auto& appName : resource.associatedApps)
        chips.push_back({appName, false, icon(appName).value_or("")});
    return chips;
}

/// Of the names that stand for the desktop's file manager and browser, no application need have
/// one.
std::optional<std::string> ResourceManagement::openerIcon(const Resource& resource) const {
    const auto url = resource.type == ResourceType::folder
                         ? std::optional(Url::fromPath(resource.path + "/"))
                         : Url::parse(resource.path);
    const auto opener = url ? platform_.applications.urlForApplicationToOpen(*url) : std::nullopt;
    return opener ? platform_.fileIcons.iconForFile(opener->path()) : std::nullopt;
}

void ResourceManagement::addSeparator() {
    store_.addResource(
        makeResource("Separator - click to rename", "", ResourceType::separator, platform_.bundles),
        workspaceId_);
}

void ResourceManagement::removeRow(std::size_t index) {
    if (const auto* resource = resourceAt(index)) {
        store_.removeResource(Uuid(resource->id), workspaceId_);
    }
}

void ResourceManagement::moveRow(std::size_t from, std::size_t to) {
    store_.moveResource(from, to, workspaceId_);
}

void ResourceManagement::toggleEnabled(std::size_t index) {
    if (const auto* resource = resourceAt(index)) {
        store_.toggleResourceEnabled(resource->id, workspaceId_);
    }
}

void ResourceManagement::pressPlay(std::size_t index) {
    const auto* found = resourceAt(index);
    if (!found) return;
    // Copies, as launching may change the list.
    store_.toggle(Resource(*found), Workspace(*workspace()));
}

void ResourceManagement::rename(std::size_t index, const std::string& name) {
    if (const auto* resource = resourceAt(index)) {
        store_.renameResource(resource->id, name, workspaceId_);
    }
}

void ResourceManagement::chooseApplication(std::size_t index) {
    const auto* resource = resourceAt(index);
    if (!resource) return;
    platform_.panels.beginOpenPanel(
        {.title = "Choose Application",
         .message = "Select an application to add to this resource",
         .content = PanelContent::application,
         .directory = "/Applications"},
        [&store = store_, &platform = platform_, workspaceId = workspaceId_,
         id = resource->id](const std::optional<Url>& url) {
            if (!url) return;
            platform.mainQueue.async([&, workspaceId, id, appName = path::stem(url->path())] {
                addApplication(appName, id, workspaceId, store, platform.alerts);
            });
        });
}

void ResourceManagement::removeApplication(std::size_t index, const std::string& appName) {
    if (const auto* resource = resourceAt(index)) {
        store_.removeAssociatedApp(resource->id, appName, workspaceId_);
    }
}

void ResourceManagement::addFile(const Url& url) {
    store_.addResourceFromURL(meantBy(url), workspaceId_);
    isAddResourceDropTarget = false;
}

Url ResourceManagement::meantBy(const Url& dropped) const {
    const auto path = dropped.path();
    if (const auto bundle = platform_.bundles.bundlePathOfLauncher(path)) {
        return Url::fromPath(*bundle);
    }
    // Not every file manager ends the address of a folder with "/".
    const bool isFolder = !dropped.hasDirectoryPath() && platform_.fileSystem.isDirectory(path);
    return isFolder ? Url::fromPath(path + "/") : dropped;
}

void ResourceManagement::later(std::function<void()> action) {
    platform_.mainQueue.async([alive = std::weak_ptr(alive_), action = std::move(action)] {
        if (!alive.expired()) action();
    });
}

std::string playTooltip(const ResourceRow& row) {
    return (row.isRunning ? "Stop " : "Launch ") + row.name;
}

std::string_view enabledTooltip(const ResourceRow& row) {
    return row.enabled ? "Enabled - Resource will launch/quit with workspace"
                       : "Disabled - Resource will be ignored when workspace starts";
}

std::string separatorTitle(const ResourceRow& row) {
    return row.name.empty() ? "Section" : row.name;
}

} // namespace corvane
