#pragma once

#include "foundation/Uuid.h"
#include "ui/ResourcePreview.h"

#include <string>
#include <utility>

namespace corvane {

/// What the view of one card shows.
struct CardRow {
    Uuid workspaceId;
    /// Counts the cards of one identifier, from 0, so that each row has a key of its own.
    int repetition = 0;
    std::string name;
    std::string description;
    std::string icon;
    int gradient = 0;
    bool isRunning = false;
    bool isLoading = false;
    bool isExpanded = false;
    bool canSaveLayout = false;
    bool asksToFinish = false;
    std::string startTitle;
    std::string statusText;
    ResourcePreview preview;

    auto key() const { return std::pair(workspaceId, repetition); }
    bool operator==(const CardRow&) const = default;
};

} // namespace corvane
