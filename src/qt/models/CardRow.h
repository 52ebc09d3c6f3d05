#pragma once

#include "ui/ResourcePreview.h"

#include <string>

namespace corvane {

/// What the view of one card shows.
struct CardRow {
    RecordKey workspace;
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

    auto key() const { return workspace; }
    bool operator==(const CardRow&) const = default;
};

} // namespace corvane
