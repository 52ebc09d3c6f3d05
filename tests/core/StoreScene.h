#pragma once

#include "core/BookmarkManager.h"
#include "core/RecordCoding.h"
#include "core/StoreState.h"
#include "core/WorkspaceStore.h"
#include "foundation/Text.h"
#include "simulated/SimulatedDesktop.h"

#include <algorithm>
#include <functional>
#include <memory>
#include <string>
#include <utility>

#include <gtest/gtest.h>

namespace corvane {

inline const std::string storeFolder = "/home/user/.local/share/Corvane";
inline const std::string legacyPath = "/home/user/Documents/corvane_workspaces.json";
inline const std::string workspacesPath = storeFolder + "/corvane_workspaces.json";
inline const std::string bookmarkCachePath = storeFolder + "/bookmark_cache.plist";

/// A desktop and the store that runs on it, once `start` made it.
struct StoreScene {
    SimulatedDesktop desktop;
    Platform platform = desktop.platform();
    std::unique_ptr<BookmarkManager> bookmarks;
    std::unique_ptr<WorkspaceStore> store;

    BookmarkManager newBookmarks() {
        return {desktop.files, desktop.bookmarks, desktop.queue, desktop.queue, desktop.queue};
    }
    WorkspaceStore& start() {
        store.reset();
        bookmarks.reset(new BookmarkManager(newBookmarks()));
        store = std::make_unique<WorkspaceStore>(platform, *bookmarks);
        return *store;
    }
    WorkspaceStore& start(const std::vector<Workspace>& workspaces) {
        writeFile(workspaces);
        return start();
    }

    void writeFile(const std::vector<Workspace>& workspaces) {
        desktop.files.contents[workspacesPath] = encodeWorkspaces(workspaces);
    }
    std::vector<Workspace> fileContent() const {
        return decodeWorkspaces(desktop.files.contents.at(workspacesPath), platform.bundles);
    }
    int saves() { return desktop.files.writes[workspacesPath]; }

    /// "Title | message [OK][Show in Finder]" of each alert that was shown, a line each; and what
    /// is special about it.
    std::string alerts() const {
        std::vector<std::string> lines;
        for (const auto& alert : desktop.shownAlerts)
            lines.push_back(alert.title + " | " + alert.message + " [" +
                            text::joined(alert.buttons, "][") + "]" +
                            (alert.style == AlertStyle::warning ? "" : " not a warning") +
                            (alert.firstButtonIsDestructive ? " destructive" : "") +
                            (alert.checkbox.empty() ? "" : " (" + alert.checkbox + ")"));
        return text::joined(lines, "\n");
    }

    /// The same of what is shown by the next turn, once.
    std::string told() {
        desktop.runUntilIdle();
        auto text = alerts();
        desktop.shownAlerts.clear();
        return text;
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

struct SceneTest : testing::Test {
    StoreScene scene;
    SimulatedDesktop& desktop = scene.desktop;
    Platform& platform = scene.platform;
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
