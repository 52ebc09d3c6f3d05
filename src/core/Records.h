#pragma once

#include "core/ResourceTypes.h"
#include "foundation/PropertyList.h"
#include "foundation/Rect.h"
#include "foundation/Timestamp.h"
#include "foundation/Uuid.h"

#include <algorithm>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace corvane {

class Bundles;

/// One member of a workspace. Plain value.
struct Resource {
    Uuid id;
    std::string name;
    /// Absolute path, web address, or "{directory}|{command}", by type; empty for a separator.
    std::string path;
    ResourceType type = ResourceType::file;
    /// Names of applications as the user sees them, in the user's order; may repeat.
    std::vector<std::string> associatedApps;
    std::optional<std::string> bundleIdentifier;
    bool enabled = true;
    bool launchOnStart = false;
    /// An old in-file bookmark: read from old files, never written.
    std::optional<Bytes> bookmarkData;

    bool operator==(const Resource&) const = default;
};

/// One captured window. Frames have their origin at the top left of the primary display, y
/// downward.
struct SavedWindowLayout {
    std::string appName;
    std::optional<std::string> windowTitle;
    Rect frame;
    std::int32_t ownerPID = 0;
    Timestamp recordedAt;
    bool isFullscreen = false;
    std::optional<Rect> screenFrame;
    /// The window as fractions of its screen.
    std::optional<Rect> relativeFrame;
    std::optional<std::int64_t> screenIndex;
    bool isOnPrimaryScreen = true;
    /// What the tiler that gave the window its place calls the workspace that it was on.
    std::optional<std::string> tilingWorkspace = {};

    bool operator==(const SavedWindowLayout&) const = default;
};

/// A named, ordered group of resources with its stored layout. Compared by `id` by its users.
struct Workspace {
    Uuid id;
    std::string name;
    std::string description;
    /// The name of a symbol.
    std::string icon;
    std::vector<Resource> resources;
    Timestamp dateCreated;
    Timestamp dateModified;
    bool hasLayoutSaved = false;
    std::optional<std::vector<SavedWindowLayout>> savedWindowLayouts;

    bool operator==(const Workspace&) const = default;
};

/// One window of the older layout form, which captures and restores still work on.
struct WindowLayout {
    std::string appName;
    Rect frame;
    bool isFullscreen = false;
    bool isMinimized = false;
    /// An index into the display list.
    std::optional<std::int64_t> screen;
    /// As in SavedWindowLayout; the older form's JSON has none.
    std::optional<std::string> tilingWorkspace = {};

    bool operator==(const WindowLayout&) const = default;
};

struct WorkspaceLayout {
    Uuid workspaceId;
    std::vector<WindowLayout> windowLayouts;
    Timestamp savedDate;

    bool operator==(const WorkspaceLayout&) const = default;
};

/// A new resource: fresh identity, enabled, no applications; the bundle identifier of an
/// application's bundle is looked up.
Resource makeResource(std::string name, std::string path, ResourceType type,
                      const Bundles& bundles);
/// A new workspace with no resources and no layout, both dates `now`.
Workspace makeWorkspace(std::string name, std::string description, std::string icon, Timestamp now);

/// The identifier of the bundle at a path that ends in ".app"; nothing for other paths and where no
/// bundle opens.
std::optional<std::string> deriveBundleIdentifier(std::string_view path, const Bundles& bundles);

/// The path, address or command of a resource for a person to see, on one line; at most a thousand
/// characters, with the middle left out.
std::string whatOpens(const Resource& resource);

/// The first record of a list with that identifier; null where there is none.
template <typename List>
auto findById(List& list, const Uuid& id) {
    const auto found =
        std::ranges::find_if(list, [&](const auto& record) { return record.id == id; });
    return found == list.end() ? nullptr : &*found;
}

} // namespace corvane
