#include "core/StoreScene.h"
#include "foundation/Text.h"

#include <gtest/gtest.h>

namespace corvane {
namespace {

using Lines = std::vector<std::string>;

TEST(Migrations, ofAVeryOldFileAllRunInOrderAtOneStartAndNeverAgain) {
    StoreScene scene;
    auto& desktop = scene.desktop;
    desktop.files.contents["/plan.txt"] = "";
    desktop.files.identityOf("/plan.txt");
    auto old = scene.workspace(
        "Old", {scene.resource("plan", "/plan.txt"),
                scene.resource("pad", "/Applications/Pad.app", ResourceType::application)});
    old.description = "iOS and Android applications";
    desktop.files.contents[legacyPath] =
        text::replacingAll(encodeWorkspaces({old}), R"("path":"/plan.txt")",
                           R"("path":"\/plan.txt","bookmarkData":"Ym9va21hcmsgMA==")");
    // Installed after the file was written, which so doesn't know its identifier.
    desktop.install({.path = "/Applications/Pad.app", .bundleIdentifier = "org.pad"});

    DiagnosticLog diagnostics;
    scene.start();
    const std::string file = workspacesPath;
    const std::string cache = bookmarkCachePath;
    EXPECT_EQ(diagnostics.take(),
              (Lines{"📚 BookmarkManager initialized with cache at: " + cache,
                     "Workspaces loaded from: " + file, "Migrated description for workspace: Old",
                     "Workspaces saved to: " + file, "📚 Migrated valid bookmark for: /plan.txt",
                     "📚 Saved bookmark cache with 1 entries", "Workspaces saved to: " + file,
                     "📚 Bookmark migration completed: 1 migrated, 1 skipped",
                     "📚 Bookmark cache: 1 total, 1 valid, 0 invalid"}));
    old.description.clear();
    old.resources[1].bundleIdentifier = "org.pad";
    EXPECT_EQ(scene.fileContent(), std::vector{old});
    EXPECT_FALSE(desktop.files.exists(legacyPath));
    EXPECT_EQ(desktop.defaults.at("CorvaneBookmarkMigrationCompleted_v1"), PropertyList{true});
    desktop.runUntilIdle();
    EXPECT_EQ(desktop.logged(), "alert Workspaces Migrated");

    scene.start();
    desktop.runUntilIdle();
    EXPECT_EQ(diagnostics.take(), (Lines{"📚 Loaded 1 bookmarks from cache",
                                         "📚 BookmarkManager initialized with cache at: " + cache,
                                         "Workspaces loaded from: " + file}));
    EXPECT_EQ(desktop.logged(), "alert Workspaces Migrated");
}

} // namespace
} // namespace corvane
