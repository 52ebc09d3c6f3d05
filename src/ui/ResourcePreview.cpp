#include "ui/ResourcePreview.h"

#include "core/WorkspaceStore.h"
#include "ui/MissingFiles.h"

#include <map>

namespace corvane {

namespace {

constexpr std::size_t mostChips = 8;

} // namespace

ResourcePreview resourcePreview(const Workspace& workspace, const WorkspaceStore& store,
                                const MissingFiles& missing) {
    const auto state = [&](const Resource& resource) {
        if (store.isRunning(resource.id, workspace.id)) return ChipState::running;
        return resource.launchOnStart ? ChipState::startMarked : ChipState::plain;
    };
    ResourcePreview preview;
    std::size_t count = 0;
    std::map<Uuid, int> seen;
    for (const auto& resource : workspace.resources) {
        const RecordKey key{resource.id, seen[resource.id]++};
        if (resource.type == ResourceType::separator || ++count > mostChips) continue;
        preview.chips.push_back({key, resource.type, resource.name, state(resource),
                                 resource.enabled, missing.contains(resource)});
    }
    if (count > mostChips) preview.counter = "+" + std::to_string(count - mostChips);
    return preview;
}

std::string chipTooltip(const Resource& resource, ChipState state, const WorkspaceStore& store) {
    const auto opened = "\n" + whatOpens(resource);
    if (state == ChipState::running) return "Stop " + resource.name + opened;
    const auto app = store.appNameForResource(resource);
    const auto& otherwise =
        resource.associatedApps.empty() ? resource.name : resource.associatedApps.front();
    return "Launch " + resource.name + " with " + app.value_or(otherwise) + opened;
}

} // namespace corvane
