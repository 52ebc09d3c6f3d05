#include "ui/ResourcePreview.h"

#include "core/WorkspaceStore.h"

namespace corvane {

namespace {

constexpr std::size_t mostChips = 8;

} // namespace

ResourcePreview resourcePreview(const Workspace& workspace, const WorkspaceStore& store) {
    const auto entry = store.runningResources->find(workspace.id);
    const auto state = [&](const Resource& resource) {
        const bool isRunning =
            entry != store.runningResources->end() && entry->second.contains(resource.id);
        if (isRunning) return ChipState::running;
        return resource.launchOnStart ? ChipState::startMarked : ChipState::plain;
    };
    ResourcePreview preview;
    std::size_t count = 0;
    for (const auto& resource : workspace.resources) {
        if (resource.type == ResourceType::separator || ++count > mostChips) continue;
        preview.chips.push_back({resource.id, resource.type, resource.name, state(resource)});
    }
    if (count > mostChips) preview.counter = "+" + std::to_string(count - mostChips);
    return preview;
}

} // namespace corvane
