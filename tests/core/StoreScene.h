#pragma once

#include "core/BookmarkManager.h"
#include "core/RecordCoding.h"
#include "core/StoreState.h"
#include "core/WorkspaceStore.h"
#include "foundation/Diagnostics.h"
#include "foundation/Text.h"
#include "simulated/SimulatedDesktop.h"

#include <memory>
#include <string>
#include <utility>

namespace corvane {

inline constexpr auto storeFolder = "/home/user/.local/share/Corvane";
inline constexpr auto legacyPath = "/home/user/Documents/corvane_workspaces.json";
inline constexpr auto workspacesPath = "/home/user/.local/share/Corvane/corvane_workspaces.json";
inline constexpr auto bookmarkCachePath = "/home/user/.local/share/Corvane/bookmark_cache.plist";

/// What the program tells its developers, as long as this lives.
struct DiagnosticLog {
    DiagnosticLog() {
        setDiagnosticSink([this](const std::string& line) { lines.push_back(line); });
    }
    ~DiagnosticLog() { setDiagnosticSink({}); }
    DiagnosticLog(const DiagnosticLog&) = delete;

    /// The lines since the last call.
    std::vector<std::string> take() { return std::exchange(lines, {}); }

    std::vector<std::string> lines;
};

/// A desktop and the store that runs on it, once `start` made it.
struct StoreScene {
    SimulatedDesktop desktop;
    Platform platform = desktop.platform();
    std::unique_ptr<BookmarkManager> bookmarks;
    std::unique_ptr<WorkspaceStore> store;

    WorkspaceStore& start() {
        store.reset();
        bookmarks = std::make_unique<BookmarkManager>(desktop.files, desktop.bookmarks,
                                                      desktop.queue, desktop.queue, desktop.queue);
        store = std::make_unique<WorkspaceStore>(platform, *bookmarks);
        return *store;
    }
    /// The same with the list in its file.
    WorkspaceStore& start(const std::vector<Workspace>& workspaces) {
        writeFile(workspaces);
        return start();
    }

    /// Writes the list as the workspaces file, without counting as a save.
    void writeFile(const std::vector<Workspace>& workspaces) {
        desktop.files.contents[workspacesPath] = encodeWorkspaces(workspaces);
    }
    std::vector<Workspace> fileContent() const {
        return decodeWorkspaces(desktop.files.contents.at(workspacesPath), platform.bundles);
    }
    int saves() const {
        const auto found = desktop.files.writes.find(workspacesPath);
        return found == desktop.files.writes.end() ? 0 : found->second;
    }

    /// "Title | message [OK][Show in Finder]" of each alert that was shown, a line each; and what
    /// is special about it.
    std::string alerts() const {
        std::vector<std::string> lines;
        for (const auto& alert : desktop.shownAlerts) {
            auto line = alert.title + " | " + alert.message + " [" +
                        text::joined(alert.buttons, "][") + "]";
            if (alert.style != AlertStyle::warning) line += " not a warning";
            if (alert.firstButtonIsDestructive) line += " destructive";
            if (!alert.checkbox.empty()) line += " (" + alert.checkbox + ")";
            lines.push_back(line);
        }
        return text::joined(lines, "\n");
    }

    Resource resource(std::string name, std::string path = "/notes.txt",
                      ResourceType type = ResourceType::file) const {
        return makeResource(std::move(name), std::move(path), type, platform.bundles);
    }
    Workspace workspace(std::string name, std::vector<Resource> resources = {}) const {
        auto made = makeWorkspace(std::move(name), "", "folder", {700000000});
        made.resources = std::move(resources);
        return made;
    }
};

/// "A(x y) B()": the names of the workspaces with those of their resources; "x-" is disabled, "x*"
/// launched on start, "x{Pad,Web}" has applications, and "A()+" has a layout.
inline std::string described(const std::vector<Workspace>& workspaces) {
    std::vector<std::string> texts;
    for (const auto& workspace : workspaces) {
        std::vector<std::string> resources;
        for (const auto& resource : workspace.resources) {
            const auto& apps = resource.associatedApps;
            resources.push_back(resource.name + (resource.enabled ? "" : "-") +
                                (resource.launchOnStart ? "*" : "") +
                                (apps.empty() ? "" : "{" + text::joined(apps, ",") + "}"));
        }
        texts.push_back(workspace.name + "(" + text::joined(resources, " ") + ")" +
                        (workspace.hasLayoutSaved ? "+" : ""));
    }
    return text::joined(texts, " ");
}

} // namespace corvane
