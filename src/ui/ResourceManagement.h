#pragma once

#include "core/Records.h"
#include "foundation/Published.h"
#include "foundation/Url.h"

#include <cstddef>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <vector>

namespace corvane {

struct Platform;
class WorkspaceStore;

/// The badge of one application in a row.
struct AppChip {
    std::string appName = {};
    /// The application that stands for the resource, which can't be taken away.
    bool isDefault = false;
    /// As FileIcons gives icons; empty where there is none.
    std::string icon = {};

    bool operator==(const AppChip&) const = default;
};

/// One row of the list. A separator has only its name.
struct ResourceRow {
    Uuid id = {};
    ResourceType type = ResourceType::file;
    std::string name = {};
    /// What a press on its button opens or runs.
    std::string opens = {};
    /// The icon of an application's bundle, as FileIcons gives icons; else empty.
    std::string icon = {};
    bool enabled = true;
    bool isRunning = false;
    std::vector<AppChip> chips = {};

    bool operator==(const ResourceRow&) const = default;
};

/// What the expanded card of one workspace shows of its resources and does with them. Rows are
/// named by their place in the list. Store and platform outlive it. Main thread.
class ResourceManagement {
public:
    ResourceManagement(const Uuid& workspaceId, WorkspaceStore& store, const Platform& platform);

    /// Fires before anything read here changes.
    ChangeSignal objectWillChange;
    /// Rows that a drag of a row hovers over.
    Published<std::set<std::size_t>> dropTargetIndexes{objectWillChange};
    /// A drag of files hovers over the list.
    Published<bool> isAddResourceDropTarget{objectWillChange};

    const Uuid& workspaceId() const { return workspaceId_; }
    /// In stored order; none where the workspace has gone.
    std::vector<ResourceRow> rows() const;

    void addSeparator();
    /// At once, without a question.
    void removeRow(std::size_t index);
    void moveRow(std::size_t from, std::size_t to);
    void toggleEnabled(std::size_t index);
    /// Launches the resource alone, or quits it if it runs.
    void pressPlay(std::size_t index);
    void rename(std::size_t index, const std::string& name);
    /// Lets the user choose an application for the resource, without blocking the window.
    void chooseApplication(std::size_t index);
    void removeApplication(std::size_t index, const std::string& appName);
    /// Makes a resource of a dropped file, of the application where the file only stands for one;
    /// the last one ends the hover.
    void addFile(const Url& url);
    /// Does something on a later turn of the main queue, unless this has gone by then.
    void later(std::function<void()> action);

private:
    const Workspace* workspace() const;
    const Resource* resourceAt(std::size_t index) const;
    Url meantBy(const Url& dropped) const;
    /// What was looked up already for the rows that are being made, by name.
    using Icons = std::map<std::string, std::optional<std::string>>;
    std::vector<AppChip> chipsOf(const Resource& resource, Icons& icons) const;
    std::optional<std::string> openerIcon(const Resource& resource) const;

    const Uuid workspaceId_;
    WorkspaceStore& store_;
    const Platform& platform_;
    Subscription storeChanges_;
    /// What is done later asks by this whether the list is still there.
    std::shared_ptr<const bool> alive_ = std::make_shared<const bool>(true);
};

/// "Launch {name}" or "Stop {name}".
std::string playTooltip(const ResourceRow& row);
std::string_view enabledTooltip(const ResourceRow& row);
/// "Section" for a separator without a name.
std::string separatorTitle(const ResourceRow& row);

} // namespace corvane
