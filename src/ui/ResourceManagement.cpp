#include "ui/ResourceManagement.h"

#include "core/WorkspaceStore.h"
#include "platform/Platform.h"
#include "ui/AppIcons.h"

#include <algorithm>

namespace corvane {

ResourceManagement::ResourceManagement(const Uuid& workspaceId, WorkspaceStore& store,
                                       const Platform& platform)
    : workspaceId_(workspaceId), store_(store), platform_(platform),
      storeChanges_(store.objectWillChange.subscribe([this] { objectWillChange.fire(); })) {}

const Workspace* ResourceManagement::workspace() const {
    const auto found = std::ranges::find(*store_.workspaces, workspaceId_, &Workspace::id);
    return found == store_.workspaces->end() ? nullptr : &*found;
}

const Resource* ResourceManagement::resourceAt(std::size_t index) const {
    const auto* found = workspace();
    return found && index < found->resources.size() ? &found->resources[index] : nullptr;
}

std::vector<ResourceRow> ResourceManagement::rows() const {
    std::vector<ResourceRow> rows;
    const auto* found = workspace();
    if (!found) return rows;
    const auto running = store_.runningResources->find(workspaceId_);
    for (const auto& resource : found->resources) {
        const bool isApplication = resource.type == ResourceType::application;
        rows.push_back({.id = resource.id,
                        .type = resource.type,
                        .name = resource.name,
                        .icon = isApplication
                                    ? platform_.fileIcons.iconForFile(resource.path).value_or("")
                                    : "",
                        .enabled = resource.enabled,
                        .isRunning = running != store_.runningResources->end() &&
                                     running->second.contains(resource.id),
                        .chips = chipsOf(resource)});
    }
    return rows;
}

std::vector<AppChip> ResourceManagement::chipsOf(const Resource& resource) const {
    std::vector<AppChip> chips;
    if (resource.type == ResourceType::application || resource.type == ResourceType::separator) {
        return chips;
    }
    const auto add = [&](const std::string& appName, bool isDefault) {
        chips.push_back({appName, isDefault, appIconForName(appName, platform_).value_or("")});
    };
    if (const auto appName = store_.appNameForResource(resource)) add(*appName, true);
    for (const auto& appName : resource.associatedApps)
        add(appName, false);
    return chips;
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
    const Resource resource = *found;
    const Workspace whole = *workspace();
    const auto running = store_.runningResources->find(workspaceId_);
    const bool isRunning =
        running != store_.runningResources->end() && running->second.contains(resource.id);
    if (isRunning) {
        store_.quitIndividualResource(resource, whole);
    } else {
        store_.launchIndividualResource(resource, whole);
    }
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
        [this, alive = std::weak_ptr(alive_), id = resource->id](const std::optional<Url>& url) {
            if (!url) return;
            platform_.mainQueue.async([this, alive, id, appName = path::stem(url->path())] {
                if (!alive.expired()) addApplication(id, appName);
            });
        });
}

void ResourceManagement::addApplication(const Uuid& resourceId, const std::string& appName) {
    const auto* found = workspace();
    if (!found) return;
    const auto resource = std::ranges::find(found->resources, resourceId, &Resource::id);
    if (resource == found->resources.end()) return;
    if (std::ranges::find(resource->associatedApps, appName) != resource->associatedApps.end()) {
        platform_.alerts.runModal(
            {.title = "Duplicate App",
             .message = appName + " is already associated with this resource.",
             .style = AlertStyle::informational,
             .buttons = {"OK"}});
        return;
    }
    store_.addAssociatedApp(resourceId, appName, workspaceId_);
}

void ResourceManagement::removeApplication(std::size_t index, const std::string& appName) {
    if (const auto* resource = resourceAt(index)) {
        store_.removeAssociatedApp(resource->id, appName, workspaceId_);
    }
}

void ResourceManagement::addFile(const Url& url) {
    store_.addResourceFromURL(url, workspaceId_);
    isAddResourceDropTarget = false;
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
