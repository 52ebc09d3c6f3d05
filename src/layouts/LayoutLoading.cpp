#include "layouts/LayoutLoading.h"

#include "core/RecordCoding.h"
#include "foundation/Diagnostics.h"
#include "foundation/Json.h"

#include <string_view>

namespace corvane {

namespace {

WorkspaceLayout layoutOf(const Workspace& workspace,
                         const std::vector<SavedWindowLayout>& records) {
    WorkspaceLayout layout{
        .workspaceId = workspace.id, .windowLayouts = {}, .savedDate = records.front().recordedAt};
    for (const auto& record : records) {
        layout.windowLayouts.push_back({.appName = record.appName,
                                        .frame = record.frame,
                                        .isFullscreen = record.isFullscreen,
                                        .isMinimized = false,
                                        .screen = record.screenIndex,
                                        .tilingWorkspace = record.tilingWorkspace});
    }
    return layout;
}

std::optional<WorkspaceLayout> decoded(const Bytes& data) {
    try {
        return decodeWorkspaceLayout(
            std::string_view(reinterpret_cast<const char*>(data.data()), data.size()));
    } catch (const json::DecodeError& error) {
        diagnostic({"Failed to migrate layout from UserDefaults: ", error.what()});
        return std::nullopt;
    }
}

} // namespace

std::optional<WorkspaceLayout> loadWorkspaceLayout(const Workspace& workspace,
                                                   UserDefaults& defaults,
                                                   const PersistLayout& persist) {
    const auto& records = workspace.savedWindowLayouts;
    if (records && !records->empty()) return layoutOf(workspace, *records);
    return migrateLegacyLayout(workspace, defaults, persist);
}

std::optional<WorkspaceLayout> migrateLegacyLayout(const Workspace& workspace,
                                                   UserDefaults& defaults,
                                                   const PersistLayout& persist) {
    const auto key = "WorkspaceLayout_" + workspace.id.toString();
    const auto object = defaults.objectForKey(key);
    const auto* data = object ? object->as<Bytes>() : nullptr;
    if (!data) return std::nullopt;
    auto layout = decoded(*data);
    if (!layout) return std::nullopt;
    diagnostic({"Migrating layout from UserDefaults to JSON for workspace '", workspace.name, "'"});
    persist(*layout, workspace);
    defaults.removeObject(key);
    return layout;
}

} // namespace corvane
