#include "ui/ResourceManagement.h"

#include "core/WorkspaceStore.h"
#include "platform/Platform.h"
#include "ui/AddResourceSheet.h"
#include "ui/AppIcons.h"
#include "ui/MissingFiles.h"
#include "ui/UndoOffer.h"

#include <algorithm>
#include <tuple>
#include <utility>

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

/// The store's own operations take the first resource of an identifier.
template <typename Change>
void edit(WorkspaceStore& store, const Uuid& workspaceId, const RecordKey& key,
          const Change& change) {
    const auto* found = store.find(workspaceId);
    const auto place = found ? placeOf(key, found->resources) : std::nullopt;
    if (!place) return;
    Workspace edited = *found;
    change(edited.resources, edited.resources.begin() + static_cast<std::ptrdiff_t>(*place));
    store.updateWorkspace(std::move(edited));
}

} // namespace

ResourceManagement::ResourceManagement(const Uuid& workspaceId, WorkspaceStore& store,
                                       const Desktop& desktop, UndoOffer& undo,
                                       MissingFiles& missing)
    : workspaceId_(workspaceId), store_(store), desktop_(desktop), undo_(undo), missing_(missing),
      storeChanges_(store.objectWillChange.subscribe([this] { objectWillChange.fire(); })),
      missingChanges_(missing.objectWillChange.subscribe([this] { objectWillChange.fire(); })) {}

const Workspace* ResourceManagement::workspace() const {
    return store_.find(workspaceId_);
}

std::optional<std::size_t> ResourceManagement::indexOf(const RecordKey& key) const {
    const auto* found = workspace();
    return found ? placeOf(key, found->resources) : std::nullopt;
}

const Resource* ResourceManagement::find(const RecordKey& key) const {
    const auto index = indexOf(key);
    return index ? &workspace()->resources[*index] : nullptr;
}

std::vector<ResourceRow> ResourceManagement::rows() const {
    std::vector<ResourceRow> rows;
    const auto* found = workspace();
    if (!found) return rows;
    std::map<Uuid, int> seen;
    for (const auto& resource : found->resources) {
        const RecordKey key{resource.id, seen[resource.id]++};
        const auto edited = editedNames_->find(key);
        rows.push_back({.key = key,
                        .type = resource.type,
                        .name = resource.name,
                        .opens = whatOpens(resource),
                        .path = resource.path,
                        .associatedApps = resource.associatedApps,
                        .enabled = resource.enabled,
                        .isRunning = store_.isRunning(resource.id, workspaceId_),
                        .isMissing = missing_.contains(resource),
                        .editedName = edited == editedNames_->end()
                                          ? std::nullopt
                                          : std::optional(edited->second)});
    }
    return rows;
}

const RowPictures& ResourceManagement::picturesOf(const ResourceRow& row) {
    auto& entry = lookedUp_[row.key];
    const auto known = [&] { return std::tie(entry.type, entry.path, entry.associatedApps); };
    if (entry.isKnown && known() == std::tie(row.type, row.path, row.associatedApps)) {
        return entry.pictures;
    }
    entry = {.isKnown = true,
             .type = row.type,
             .path = row.path,
             .associatedApps = row.associatedApps,
             .pictures = {}};
    if (const auto* resource = find(row.key)) entry.pictures = lookUp(*resource);
    return entry.pictures;
}

RowPictures ResourceManagement::lookUp(const Resource& resource) {
    RowPictures pictures;
    if (resource.type == ResourceType::application) {
        pictures.icon = desktop_.fileIcons.iconForFile(resource.path).value_or("");
    }
    if (resource.type == ResourceType::application || resource.type == ResourceType::separator) {
        return pictures;
    }
    if (const auto appName = store_.appNameForResource(resource)) {
        pictures.chips.push_back({*appName, true, iconOf(*appName, &resource)});
    }
    for (const auto& appName : resource.associatedApps)
        pictures.chips.push_back({appName, false, iconOf(appName, nullptr)});
    return pictures;
}

std::string ResourceManagement::iconOf(const std::string& appName, const Resource* opened) {
    const auto [found, isNew] = icons_.try_emplace(appName);
    if (isNew) found->second = appIconForName(appName, desktop_.applications, desktop_.fileIcons);
    if (found->second || !opened) return found->second.value_or("");
    return openerIcon(*opened).value_or("");
}

/// Of the names that stand for the desktop's file manager and browser, no application need have
/// one.
std::optional<std::string> ResourceManagement::openerIcon(const Resource& resource) const {
    const auto url = resource.type == ResourceType::folder
                         ? std::optional(Url::fromPath(resource.path + "/"))
                         : Url::parse(resource.path);
    const auto opener = url ? desktop_.applications.urlForApplicationToOpen(*url) : std::nullopt;
    return opener ? desktop_.fileIcons.iconForFile(opener->path()) : std::nullopt;
}

void ResourceManagement::addSeparator() {
    store_.addResource(
        makeResource("Separator - click to rename", "", ResourceType::separator, desktop_.bundles),
        workspaceId_);
}

void ResourceManagement::removeRow(const RecordKey& key) {
    const auto index = indexOf(key);
    if (!index) return;
    const Resource removed = workspace()->resources[*index];
    if (key.repetition == 0) {
        store_.removeResource(key.id, workspaceId_);
    } else {
        edit(store_, workspaceId_, key, [](auto& list, auto place) { list.erase(place); });
    }
    undo_.offer(separatorTitle(removed.name),
                [&store = store_, id = workspaceId_, removed, at = *index] {
                    store.insertResource(removed, at, id);
                });
}

void ResourceManagement::moveRow(std::size_t from, std::size_t to) {
    store_.moveResource(from, to, workspaceId_);
}

void ResourceManagement::moveRowBy(const RecordKey& key, int by) {
    const auto index = indexOf(key);
    const auto to = index ? static_cast<std::ptrdiff_t>(*index) + by : -1;
    if (to >= 0) moveRow(*index, static_cast<std::size_t>(to));
}

void ResourceManagement::toggleEnabled(const RecordKey& key) {
    if (key.repetition == 0) return store_.toggleResourceEnabled(key.id, workspaceId_);
    edit(store_, workspaceId_, key,
         [](auto&, auto resource) { resource->enabled = !resource->enabled; });
}

void ResourceManagement::pressPlay(const RecordKey& key) {
    const auto* found = find(key);
    if (!found) return;
    // Copies, as launching may change the list.
    store_.toggle(Resource(*found), Workspace(*workspace()));
}

void ResourceManagement::beginRenaming(const RecordKey& key) {
    if (const auto* resource = find(key)) setEditedName(key, resource->name);
}

void ResourceManagement::setEditedName(const RecordKey& key, std::string name) {
    editedNames_.mutate([&](auto& names) { names[key] = std::move(name); });
}

void ResourceManagement::submitName(const RecordKey& key) {
    const auto edited = editedNames_->find(key);
    if (edited == editedNames_->end()) return;
    const std::string name = edited->second;
    cancelRenaming(key);
    if (key.repetition == 0) return store_.renameResource(key.id, name, workspaceId_);
    edit(store_, workspaceId_, key, [&](auto&, auto resource) { resource->name = name; });
}

void ResourceManagement::cancelRenaming(const RecordKey& key) {
    editedNames_.mutate([&](auto& names) { names.erase(key); });
}

void ResourceManagement::locate(const RecordKey& key) {
    const auto* resource = find(key);
    if (!resource || !factsOf(resource->type).isInFileSystem) return;
    const auto url =
        desktop_.panels.runOpenPanel(panelFor(resource->type, "Locate " + resource->name));
    if (!url || !store_.acceptsPath(*url)) return;
    edit(store_, workspaceId_, key, [&](auto&, auto located) {
        located->path = url->path();
        located->bundleIdentifier = deriveBundleIdentifier(located->path, desktop_.bundles);
    });
}

void ResourceManagement::chooseApplication(const RecordKey& key) {
    if (!find(key)) return;
    desktop_.panels.beginOpenPanel(
        {.title = "Choose Application",
         .message = "Select an application to add to this resource",
         .content = PanelContent::application,
         .directory = "/Applications"},
        [&store = store_, &mainQueue = desktop_.mainQueue, &alerts = desktop_.alerts,
         workspaceId = workspaceId_, id = key.id](const std::optional<Url>& url) {
            if (!url) return;
            mainQueue.async([&, workspaceId, id, appName = path::stem(url->path())] {
                addApplication(appName, id, workspaceId, store, alerts);
            });
        });
}

void ResourceManagement::removeApplication(const RecordKey& key, const std::string& appName) {
    const auto* resource = find(key);
    if (!resource) return;
    const auto before = resource->associatedApps;
    if (std::ranges::find(before, appName) == before.end()) return;
    const auto without = [appName](auto&, auto edited) {
        auto& apps = edited->associatedApps;
        apps.erase(std::ranges::find(apps, appName));
    };
    if (key.repetition == 0) {
        store_.removeAssociatedApp(key.id, appName, workspaceId_);
    } else {
        edit(store_, workspaceId_, key, without);
    }
    const auto at = std::ranges::find(before, appName) - before.begin();
    undo_.offer(appName, [&store = store_, id = workspaceId_, key, appName, at] {
        edit(store, id, key, [&](auto&, auto edited) {
            auto& apps = edited->associatedApps;
            apps.insert(apps.begin() + std::min<std::ptrdiff_t>(at, std::ssize(apps)), appName);
        });
    });
}

void ResourceManagement::addFile(const Url& url) {
    store_.addResourceFromURL(meantBy(url), workspaceId_);
    isAddResourceDropTarget = false;
}

Url ResourceManagement::meantBy(const Url& dropped) const {
    const auto& path = dropped.path();
    if (const auto bundle = desktop_.bundles.bundlePathOfLauncher(path)) {
        return Url::fromPath(*bundle);
    }
    // Not every file manager ends the address of a folder with "/".
    const bool isFolder = !dropped.hasDirectoryPath() && desktop_.fileSystem.isDirectory(path);
    return isFolder ? Url::fromPath(path + "/") : dropped;
}

void ResourceManagement::later(std::function<void()> action) {
    desktop_.mainQueue.async([alive = std::weak_ptr(alive_), action = std::move(action)] {
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

std::string separatorTitle(const std::string& name) {
    return name.empty() ? "Section" : name;
}

} // namespace corvane
