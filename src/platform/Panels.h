#pragma once

#include "foundation/Url.h"

#include <optional>
#include <string>

namespace corvane {

/// What a panel lets the user choose.
enum class PanelContent { json, application, file, folder };

/// NSSavePanel.
struct SavePanel {
    std::string title = {};
    std::string message = {};
    std::string proposedName = {};
    PanelContent content = PanelContent::json;

    bool operator==(const SavePanel&) const = default;
};

/// NSOpenPanel with multiple selection off.
struct OpenPanel {
    std::string title = {};
    std::string message = {};
    PanelContent content = PanelContent::json;

    bool operator==(const OpenPanel&) const = default;
};

/// File panels. Main thread; both return when the user has answered, with a file URL, or with
/// nothing after a cancel.
class Panels {
public:
    virtual ~Panels() = default;
    /// Asks before it gives the URL of a file that is there already.
    virtual std::optional<Url> runSavePanel(const SavePanel& panel) = 0;
    virtual std::optional<Url> runOpenPanel(const OpenPanel& panel) = 0;
};

} // namespace corvane
