#pragma once

#include "core/Records.h"
#include "foundation/Published.h"
#include "foundation/Url.h"
#include "ui/RecordKey.h"

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

class Alerts;
class Applications;
class Bundles;
class FileIcons;
class FileSystem;
class MainQueue;
class MissingFiles;
class Panels;
class UndoOffer;
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
    RecordKey key = {};
    ResourceType type = ResourceType::file;
    std::string name = {};
    /// What a press on its button opens or runs.
    std::string opens = {};
    std::string path = {};
    std::vector<std::string> associatedApps = {};
    bool enabled = true;
    bool isRunning = false;
    /// There is nothing at its path.
    bool isMissing = false;
    /// What stands in the field of a separator that is being renamed.
    std::optional<std::string> editedName = {};

    bool operator==(const ResourceRow&) const = default;
};

/// What is looked up for a row.
struct RowPictures {
    /// The icon of an application's bundle, as FileIcons gives icons; else empty.
    std::string icon = {};
    std::vector<AppChip> chips = {};
};

/// What the expanded card of one workspace shows of its resources and does with them. An action is
/// for the resource that was shown, wherever it stands by then; one that has gone ends it silently.
/// What it is given outlives it. Main thread.
class ResourceManagement {
public:
    /// What it uses of the desktop.
    struct Desktop {
        MainQueue& mainQueue;
        Alerts& alerts;
        Panels& panels;
        const FileSystem& fileSystem;
        const Bundles& bundles;
        const Applications& applications;
        const FileIcons& fileIcons;
    };
    ResourceManagement(const Uuid& workspaceId, WorkspaceStore& store, const Desktop& desktop,
                       UndoOffer& undo, MissingFiles& missing);

    /// Fires before anything read here changes.
    ChangeSignal objectWillChange;
    /// Rows that a drag of a row hovers over.
    Published<std::set<std::size_t>> dropTargetIndexes{objectWillChange};
    /// A drag of files hovers over the list.
    Published<bool> isAddResourceDropTarget{objectWillChange};

    /// In stored order; none where the workspace has gone. Asks nobody but the store.
    std::vector<ResourceRow> rows() const;
    /// Looks at the installed applications, and for a file at the disk, when a row is first asked
    /// about, and once more where its path or its applications have changed.
    const RowPictures& picturesOf(const ResourceRow& row);

    void addSeparator();
    /// At once, without a question, but it can be undone.
    void removeRow(const RecordKey& key);
    void moveRow(std::size_t from, std::size_t to);
    /// So many places down, or up; nothing where the list ends before that.
    void moveRowBy(const RecordKey& key, int by);
    void toggleEnabled(const RecordKey& key);
    /// Launches the resource alone, or quits it if it runs.
    void pressPlay(const RecordKey& key);
    /// A separator's new name is kept here until it is submitted or given up.
    void beginRenaming(const RecordKey& key);
    void setEditedName(const RecordKey& key, std::string name);
    void submitName(const RecordKey& key);
    void cancelRenaming(const RecordKey& key);
    /// Lets the user say where a file, a folder or an application is by now.
    void locate(const RecordKey& key);
    /// Lets the user choose an application for the resource, without blocking the window.
    void chooseApplication(const RecordKey& key);
    /// This too can be undone.
    void removeApplication(const RecordKey& key, const std::string& appName);
    /// Makes a resource of a dropped file, of the application where the file only stands for one;
    /// the last one ends the hover.
    void addFile(const Url& url);
    /// Does something on a later turn of the main queue, unless this has gone by then.
    void later(std::function<void()> action);

private:
    struct LookedUp {
        bool isKnown = false;
        ResourceType type = ResourceType::file;
        std::string path;
        std::vector<std::string> associatedApps;
        RowPictures pictures;
    };

    const Workspace* workspace() const;
    std::optional<std::size_t> indexOf(const RecordKey& key) const;
    const Resource* find(const RecordKey& key) const;
    Url meantBy(const Url& dropped) const;
    RowPictures lookUp(const Resource& resource);
    std::string iconOf(const std::string& appName, const Resource* opened);
    std::optional<std::string> openerIcon(const Resource& resource) const;

    const Uuid workspaceId_;
    WorkspaceStore& store_;
    const Desktop desktop_;
    UndoOffer& undo_;
    const MissingFiles& missing_;
    std::map<RecordKey, LookedUp> lookedUp_;
    /// Many rows share the name of a browser.
    std::map<std::string, std::optional<std::string>> icons_;
    Published<std::map<RecordKey, std::string>> editedNames_{objectWillChange};
    Subscription storeChanges_;
    Subscription missingChanges_;
    /// What is done later asks by this whether the list is still there.
    std::shared_ptr<const bool> alive_ = std::make_shared<const bool>(true);
};

/// "Launch {name}" or "Stop {name}".
std::string playTooltip(const ResourceRow& row);
std::string_view enabledTooltip(const ResourceRow& row);
/// "Section" for a separator without a name.
std::string separatorTitle(const std::string& name);

} // namespace corvane
