#pragma once

#include "core/Records.h"
#include "foundation/Published.h"
#include "foundation/Url.h"
#include "platform/Panels.h"
#include "ui/RecordKey.h"

#include <array>
#include <optional>
#include <string>
#include <string_view>

namespace corvane {

class BookmarkManager;
class Bundles;
class FileSystem;
class WorkspaceStore;

/// The sheet that adds a resource to a workspace, or changes one. Nothing reaches the store before
/// `add`. What it is given outlives it. Main thread.
class AddResourceSheet {
public:
    /// With a resource to change it starts as that one is; where it has gone by then, adding does
    /// nothing.
    AddResourceSheet(const Uuid& workspaceId, WorkspaceStore& store, BookmarkManager& bookmarks,
                     Panels& panels, const Bundles& bundles, const FileSystem& fileSystem,
                     std::optional<RecordKey> edited = std::nullopt);

    /// The tiles, in their order.
    static constexpr std::array resourceTypes{ResourceType::folder, ResourceType::file,
                                              ResourceType::application, ResourceType::url,
                                              ResourceType::terminal};

    /// Fires before a field below changes.
    ChangeSignal objectWillChange;
    Published<ResourceType> selectedResourceType{objectWillChange, ResourceType::folder};
    Published<std::string> resourceName{objectWillChange};
    /// A path, a web address or a command. Typed addresses go through `setPath`.
    Published<std::string> resourcePath{objectWillChange};
    Published<bool> enabledByDefault{objectWillChange, true};

    /// Chooses a tile, also the one that is chosen already: what was typed is gone.
    void select(ResourceType type);
    /// What was typed as address or command. A valid address gives its host as the name, while
    /// there is none.
    void setPath(const std::string& text);
    /// Lets the user choose the file, folder or application.
    void pick();

    bool canAdd() const;
    /// Adds or changes the resource, with a bookmark where its file exists; nothing where `canAdd`
    /// is false.
    void add();

    std::string_view title() const;
    std::string_view subtitle() const;
    std::string_view addTitle() const;
    /// What the switch says.
    std::string_view enabledTitle() const;
    /// The heading of the input, its prompt, and what the picker's button says.
    std::string_view pathHeading() const;
    std::string_view pathPrompt() const;
    std::string pickerTitle() const;
    std::string_view pickerSymbol() const;
    /// The line under an address or a command; empty where there is none.
    std::string_view statusText() const;
    bool isStatusValid() const { return isValidURL(resourcePath.get()); }

    static bool isValidURL(std::string_view text);

private:
    void takePicked(const Url& url);
    void change(const Resource& wanted);

    const Uuid workspaceId_;
    WorkspaceStore& store_;
    BookmarkManager& bookmarks_;
    Panels& panels_;
    const Bundles& bundles_;
    const FileSystem& fileSystem_;
    const std::optional<RecordKey> edited_;
};

/// The panel in which a resource of that type is chosen.
OpenPanel panelFor(ResourceType type, std::string title);

} // namespace corvane
