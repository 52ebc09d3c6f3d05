#pragma once

#include "foundation/Url.h"

#include <functional>
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
    /// Where the user starts; the panel's own choice where empty.
    std::string directory = {};

    bool operator==(const SavePanel&) const = default;
};

/// NSOpenPanel with multiple selection off.
struct OpenPanel {
    std::string title = {};
    std::string message = {};
    PanelContent content = PanelContent::json;
    /// Where the user starts; the panel's own choice where empty.
    std::string directory = {};

    bool operator==(const OpenPanel&) const = default;
};

/// File panels. Main thread. The answer is a file URL, or nothing after a cancel.
class Panels {
public:
    virtual ~Panels() = default;
    /// Both return when the user has answered. Asks before it gives the URL of a file that is
    /// there already.
    virtual std::optional<Url> runSavePanel(const SavePanel& panel) = 0;
    virtual std::optional<Url> runOpenPanel(const OpenPanel& panel) = 0;
    /// beginWithCompletionHandler: returns at once, and blocks no window. `completion` is called
    /// once, later, but never when the program ends first.
    virtual void beginOpenPanel(const OpenPanel& panel,
                                std::function<void(std::optional<Url>)> completion) = 0;
};

} // namespace corvane
