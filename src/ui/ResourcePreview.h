#pragma once

#include "core/Records.h"

#include <string>
#include <vector>

namespace corvane {

class WorkspaceStore;

enum class ChipState { running, startMarked, plain };

/// One resource in the preview of a collapsed card.
struct PreviewChip {
    Uuid resourceId;
    ResourceType type = ResourceType::file;
    std::string name;
    ChipState state = ChipState::plain;

    bool operator==(const PreviewChip&) const = default;
};

struct ResourcePreview {
    /// The first eight resources in stored order, separators apart; empty where there is none.
    std::vector<PreviewChip> chips;
    /// "+1" where a ninth was left out, and so on; else empty.
    std::string counter;

    bool operator==(const ResourcePreview&) const = default;
};

/// What a press on the chip does: "Stop {name}", or "Launch {name} with {app}"; and below that the
/// path, address or command.
std::string chipTooltip(const Resource& resource, ChipState state, const WorkspaceStore& store);

ResourcePreview resourcePreview(const Workspace& workspace, const WorkspaceStore& store);

} // namespace corvane
