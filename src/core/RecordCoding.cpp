#include "core/RecordCoding.h"

#include "foundation/Json.h"
#include "platform/Bundles.h"

namespace corvane {

namespace {

// ---- decoding

std::string textOf(const json::Value& value) {
    return std::string(value.text());
}

std::optional<std::string> optionalText(const json::Value& object, std::string_view key) {
    const auto value = object.optional(key);
    return value ? std::optional(textOf(*value)) : std::nullopt;
}

std::optional<Rect> optionalRect(const json::Value& object, std::string_view key) {
    const auto value = object.optional(key);
    return value ? std::optional(value->rect()) : std::nullopt;
}

std::optional<std::int64_t> optionalInteger(const json::Value& object, std::string_view key) {
    const auto value = object.optional(key);
    return value ? std::optional(value->int64()) : std::nullopt;
}

bool flagOr(bool absent, const json::Value& object, std::string_view key) {
    const auto value = object.optional(key);
    return value ? value->flag() : absent;
}

Timestamp timestampOf(const json::Value& value) {
    return {value.number()};
}

ResourceType typeOf(const json::Value& value) {
    if (const auto type = resourceTypeFromRawValue(value.text())) return *type;
    value.fail("\"" + textOf(value) + "\" is not a resource type");
}

Resource decodeResource(const json::Value& object, const Bundles& bundles) {
    Resource resource;
    resource.id = object.required("id").uuid();
    resource.name = textOf(object.required("name"));
    resource.path = textOf(object.required("path"));
    resource.type = typeOf(object.required("type"));
    resource.associatedApps = object.required("associatedApps").listOf(textOf);
    resource.enabled = flagOr(true, object, "enabled");
    resource.launchOnStart = flagOr(false, object, "launchOnStart");
    resource.bundleIdentifier = optionalText(object, "bundleIdentifier");
    if (const auto bookmark = object.optional("bookmarkData"))
        resource.bookmarkData = bookmark->base64();
    if (!resource.bundleIdentifier && resource.type == ResourceType::application) {
        resource.bundleIdentifier = deriveBundleIdentifier(resource.path, bundles);
    }
    return resource;
}

SavedWindowLayout decodeSavedWindowLayout(const json::Value& object) {
    SavedWindowLayout layout;
    layout.appName = textOf(object.required("appName"));
    layout.windowTitle = optionalText(object, "windowTitle");
    layout.frame = object.required("frame").rect();
    layout.ownerPID = object.required("ownerPID").int32();
    layout.recordedAt = timestampOf(object.required("recordedAt"));
    layout.isFullscreen = flagOr(false, object, "isFullscreen");
    layout.screenFrame = optionalRect(object, "screenFrame");
    layout.relativeFrame = optionalRect(object, "relativeFrame");
    layout.screenIndex = optionalInteger(object, "screenIndex");
    layout.isOnPrimaryScreen = flagOr(true, object, "isOnPrimaryScreen");
    layout.tilingWorkspace = optionalText(object, "tilingWorkspace");
    return layout;
}

Workspace decodeWorkspace(const json::Value& object, const Bundles& bundles) {
    Workspace workspace;
    workspace.id = object.required("id").uuid();
    workspace.name = textOf(object.required("name"));
    workspace.description = textOf(object.required("description"));
    workspace.icon = textOf(object.required("icon"));
    workspace.resources = object.required("resources").listOf([&](const json::Value& value) {
        return decodeResource(value, bundles);
    });
    workspace.dateCreated = timestampOf(object.required("dateCreated"));
    workspace.dateModified = timestampOf(object.required("dateModified"));
    workspace.hasLayoutSaved = flagOr(false, object, "hasLayoutSaved");
    if (const auto layouts = object.optional("savedWindowLayouts")) {
        workspace.savedWindowLayouts = layouts->listOf(decodeSavedWindowLayout);
    }
    return workspace;
}

WindowLayout decodeWindowLayout(const json::Value& object) {
    WindowLayout layout;
    layout.appName = textOf(object.required("appName"));
    layout.frame = object.required("frame").rect();
    layout.isFullscreen = object.required("isFullscreen").flag();
    layout.isMinimized = object.required("isMinimized").flag();
    layout.screen = optionalInteger(object, "screen");
    return layout;
}

// ---- encoding

template <typename List, typename Write>
void writeList(json::Writer& writer, std::string_view key, const List& list, Write write) {
    writer.key(key);
    writer.startArray();
    for (const auto& item : list)
        write(item);
    writer.endArray();
}

void writeText(json::Writer& writer, std::string_view key, std::string_view value) {
    writer.key(key);
    writer.text(value);
}

void writeUuid(json::Writer& writer, std::string_view key, const Uuid& value) {
    writer.key(key);
    writer.uuid(value);
}

void writeFlag(json::Writer& writer, std::string_view key, bool value) {
    writer.key(key);
    writer.flag(value);
}

void writeInteger(json::Writer& writer, std::string_view key, std::int64_t value) {
    writer.key(key);
    writer.integer(value);
}

void writeTimestamp(json::Writer& writer, std::string_view key, Timestamp value) {
    writer.key(key);
    writer.number(value.seconds);
}

void writeRect(json::Writer& writer, std::string_view key, const Rect& value) {
    writer.key(key);
    writer.rect(value);
}

void writeResource(json::Writer& writer, const Resource& resource) {
    writer.startObject();
    writeUuid(writer, "id", resource.id);
    writeText(writer, "name", resource.name);
    writeText(writer, "path", resource.path);
    writeText(writer, "type", rawValue(resource.type));
    writeList(writer, "associatedApps", resource.associatedApps,
              [&](const std::string& app) { writer.text(app); });
    writeFlag(writer, "enabled", resource.enabled);
    writeFlag(writer, "launchOnStart", resource.launchOnStart);
    if (resource.bundleIdentifier)
        writeText(writer, "bundleIdentifier", *resource.bundleIdentifier);
    writer.endObject();
}

void writeSavedWindowLayout(json::Writer& writer, const SavedWindowLayout& layout) {
    writer.startObject();
    writeText(writer, "appName", layout.appName);
    if (layout.windowTitle) writeText(writer, "windowTitle", *layout.windowTitle);
    writeRect(writer, "frame", layout.frame);
    writeInteger(writer, "ownerPID", layout.ownerPID);
    writeTimestamp(writer, "recordedAt", layout.recordedAt);
    writeFlag(writer, "isFullscreen", layout.isFullscreen);
    if (layout.screenFrame) writeRect(writer, "screenFrame", *layout.screenFrame);
    if (layout.relativeFrame) writeRect(writer, "relativeFrame", *layout.relativeFrame);
    if (layout.screenIndex) writeInteger(writer, "screenIndex", *layout.screenIndex);
    writeFlag(writer, "isOnPrimaryScreen", layout.isOnPrimaryScreen);
    if (layout.tilingWorkspace) writeText(writer, "tilingWorkspace", *layout.tilingWorkspace);
    writer.endObject();
}

void writeWorkspace(json::Writer& writer, const Workspace& workspace) {
    writer.startObject();
    writeUuid(writer, "id", workspace.id);
    writeText(writer, "name", workspace.name);
    writeText(writer, "description", workspace.description);
    writeText(writer, "icon", workspace.icon);
    writeList(writer, "resources", workspace.resources,
              [&](const Resource& resource) { writeResource(writer, resource); });
    writeTimestamp(writer, "dateCreated", workspace.dateCreated);
    writeTimestamp(writer, "dateModified", workspace.dateModified);
    writeFlag(writer, "hasLayoutSaved", workspace.hasLayoutSaved);
    if (workspace.savedWindowLayouts) {
        writeList(writer, "savedWindowLayouts", *workspace.savedWindowLayouts,
                  [&](const SavedWindowLayout& layout) { writeSavedWindowLayout(writer, layout); });
    }
    writer.endObject();
}

/// About what a list takes when written, so that the buffer seldom grows.
std::size_t expectedSize(const std::vector<Workspace>& workspaces) {
    constexpr std::size_t bytesOfWorkspace = 300;
    constexpr std::size_t bytesOfResource = 280;
    constexpr std::size_t bytesOfLayout = 450;
    std::size_t size = 2;
    for (const auto& workspace : workspaces) {
        size += bytesOfWorkspace + workspace.resources.size() * bytesOfResource;
        if (workspace.savedWindowLayouts)
            size += workspace.savedWindowLayouts->size() * bytesOfLayout;
    }
    return size;
}

} // namespace

std::vector<Workspace> decodeWorkspaces(std::string_view json, const Bundles& bundles) {
    std::vector<Workspace> workspaces;
    json::forEachElement(json, "workspaces", [&](const json::Value& value) {
        workspaces.push_back(decodeWorkspace(value, bundles));
    });
    return workspaces;
}

std::string encodeWorkspaces(const std::vector<Workspace>& workspaces) {
    json::Writer writer(expectedSize(workspaces));
    writer.startArray();
    for (const auto& workspace : workspaces)
        writeWorkspace(writer, workspace);
    writer.endArray();
    return writer.take();
}

WorkspaceLayout decodeWorkspaceLayout(std::string_view json) {
    const json::Document document(json, "layout");
    const auto& object = document.root();
    WorkspaceLayout layout;
    layout.workspaceId = object.required("workspaceId").uuid();
    layout.windowLayouts = object.required("windowLayouts").listOf(decodeWindowLayout);
    layout.savedDate = timestampOf(object.required("savedDate"));
    return layout;
}
} // namespace corvane
