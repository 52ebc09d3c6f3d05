#pragma once

#include "core/StoreScene.h"
#include "launch/ResourceLauncher.h"

#include <algorithm>

#include <gtest/gtest.h>

namespace corvane {

/// A desktop with two documents, two editors that Spotlight knows and a browser of an unknown
/// family, and a launcher on it. What it opens, tells the user and writes down reads as text.
class LaunchScene : public testing::Test {
protected:
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

    StoreScene scene;
    SimulatedDesktop& desktop = scene.desktop;
    BookmarkManager bookmarks{desktop.files, desktop.bookmarks, desktop.queue, desktop.queue,
                              desktop.queue};
    std::shared_ptr<ResourceLauncher> shared = std::make_shared<ResourceLauncher>(
        bookmarks, desktop.files, scene.platform.applications,
        ApplicationLookup(scene.platform.applications, scene.platform.bundles, scene.platform.tasks,
                          scene.platform.metadataQuery),
        scene.platform.tasks, scene.platform.scripts, scene.platform.alerts,
        scene.platform.mainQueue, scene.platform.backgroundQueue);
    ResourceLauncher& launcher = *shared;
    DiagnosticLog diagnosticLog;
    std::vector<std::string>& said = diagnosticLog.lines;

    Resource resource(ResourceType type, std::string path,
                      std::vector<std::string> associatedApps = {}) const {
        auto made = scene.resource("it", std::move(path), type);
        made.associatedApps = std::move(associatedApps);
        return made;
    }

    SimulatedApplication& installed(std::string_view path) {
        return *std::find_if(desktop.applications.begin(), desktop.applications.end(),
                             [&](const auto& application) { return application.path == path; });
    }

    /// What the log has of a command that runs in Terminal.
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
        said.clear();
    }
};

} // namespace corvane
