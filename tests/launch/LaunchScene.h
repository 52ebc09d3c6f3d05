#pragma once

#include "core/StoreScene.h"
#include "launch/ResourceLauncher.h"

namespace corvane {

/// A desktop with two documents, two editors that Spotlight knows and a browser of an unknown
/// family, and a launcher on it. What it opens, tells the user and writes down reads as text.
struct LaunchScene : SceneTest {
    LaunchScene() {
        desktop.files.contents = {{"/docs/notes.txt", ""}, {"/docs/Übersicht.odt", ""}};
        desktop.install({.path = "/Applications/Pad.app", .bundleIdentifier = "org.pad"});
        desktop.install({.path = "/Applications/Writer.app", .bundleIdentifier = "org.writer"});
        desktop.install({.path = "/Applications/Web.app", .bundleIdentifier = "org.web"});
        desktop.defaultHandlers = {{"txt", "/Applications/Pad.app"},
                                   {"odt", "/Applications/Writer.app"},
                                   {"/", "/System/Library/CoreServices/Finder.app"},
                                   {"http:", "/Applications/Web.app"},
                                   {"https:", "/Applications/Web.app"}};
    }

    BookmarkManager bookmarks = scene.newBookmarks();
    std::shared_ptr<ResourceLauncher> shared = std::make_shared<ResourceLauncher>(
        bookmarks, desktop.files, platform.applications,
        ApplicationLookup(platform.applications, platform.bundles, platform.tasks,
                          platform.metadataQuery),
        platform.tasks, platform.scripts, platform.alerts, platform.mainQueue,
        platform.backgroundQueue);
    ResourceLauncher& launcher = *shared;

    Resource resource(ResourceType type, std::string path,
                      std::vector<std::string> associatedApps = {}) const {
        auto made = scene.resource("it", std::move(path), type);
        made.associatedApps = std::move(associatedApps);
        return made;
    }

    static std::string terminalScript(const std::string& command) {
        return "script tell application \"Terminal\" /     activate /     do script \"" + command +
               "\" / end tell";
    }
    /// The log, but for the questions of the search for an application.
    std::string openings() const {
        auto kept = desktop.log;
        std::erase_if(kept, [](const auto& line) {
            return line.starts_with("task /usr/bin/mdfind") || line.starts_with("query ");
        });
        return text::joined(kept, "\n");
    }
    std::string alerts() const { return scene.alerts(); }
    void forget() {
        desktop.log.clear();
        desktop.shownAlerts.clear();
    }
};

} // namespace corvane
