#pragma once

#include "core/Records.h"
#include "ui/RecordKey.h"

#include <string>
#include <vector>

namespace corvane {

class MissingFiles;
class WorkspaceStore;

enum class ChipState { running, startMarked, plain };

/// One resource in the preview of a collapsed card.
struct PreviewChip {
    RecordKey key;
    ResourceType type = ResourceType::file;
    std::string name;
    ChipState state = ChipState::plain;
    bool enabled = true;
    bool isMissing = false;

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

ResourcePreview resourcePreview(const Workspace& workspace, const WorkspaceStore& store,
                                const MissingFiles& missing);

} // namespace corvane
