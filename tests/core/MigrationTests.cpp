#include "core/StoreScene.h"
#include "foundation/Text.h"

#include <gtest/gtest.h>

namespace corvane {
namespace {

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

    scene.start();
    old.description.clear();
    old.resources[1].bundleIdentifier = "org.pad";
    EXPECT_EQ(scene.fileContent(), std::vector{old});
    EXPECT_FALSE(desktop.files.exists(legacyPath));
    EXPECT_EQ(desktop.defaults.at("CorvaneBookmarkMigrationCompleted_v1"), PropertyList{true});
    desktop.runUntilIdle();
    EXPECT_EQ(desktop.logged(), "alert Workspaces Migrated");

    EXPECT_EQ(scene.saves(), 3) << "moved, without the description, without the bookmark";
    EXPECT_EQ(scene.bookmarks->bookmarkCache().size(), 1u);
    scene.start();
    desktop.runUntilIdle();
    EXPECT_EQ(scene.saves(), 3);
    EXPECT_EQ(desktop.logged(), "alert Workspaces Migrated");
}

} // namespace
} // namespace corvane
