#include "core/BookmarkManager.h"
#include "core/WorkspaceStore.h"
#include "foundation/Diagnostics.h"

#include <algorithm>
#include <array>
#include <string>
#include <string_view>

namespace corvane {

namespace {

constexpr std::string_view bookmarkMigrationCompleted = "CorvaneBookmarkMigrationCompleted_v1";

} // namespace

void WorkspaceStore::migrateWorkspaceDescriptions() {
    static constexpr std::array<std::string_view, 3> oldSampleDescriptions{
        "Frontend and backend workspaces", "UI/UX design and creative workspaces",
        "iOS and Android applications"};
    bool changed = false;
    for (std::size_t i = 0; i < workspaces->size(); ++i) {
        const auto& workspace = (*workspaces)[i];
        if (std::find(oldSampleDescriptions.begin(), oldSampleDescriptions.end(),
                      workspace.description) == oldSampleDescriptions.end()) {
            continue;
        }
        workspaces.mutate([i](std::vector<Workspace>& list) { list[i].description.clear(); });
        diagnostic({"Migrated description for workspace: ", workspace.name});
        changed = true;
    }
    if (changed) saveWorkspaces();
}

void WorkspaceStore::migrateBookmarksIfNeeded() {
    if (platform_.userDefaults.boolForKey(bookmarkMigrationCompleted)) return;
    std::size_t migrated = 0;
    std::size_t skipped = 0;
    for (const auto& workspace : *workspaces) {
        for (const auto& resource : workspace.resources) {
            if (!resource.bookmarkData) {
                ++skipped;
                continue;
            }
            if (bookmarks_.resolveBookmark(*resource.bookmarkData)) {
                bookmarks_.storeBookmark(BookmarkManager::bookmarkKey(resource.path, resource.type),
                                         *resource.bookmarkData);
                diagnostic({"📚 Migrated valid bookmark for: ", resource.path});
            } else {
                diagnostic({"📚 Skipped invalid bookmark during migration: ", resource.path});
            }
            ++migrated;
        }
    }
    // Takes the bookmarks out of the file: they aren't written.
    bookmarks_.writeChanges();
    if (migrated > 0) saveWorkspaces();
    platform_.userDefaults.setObject(bookmarkMigrationCompleted, PropertyList{true});
    diagnostic({"📚 Bookmark migration completed: ", std::to_string(migrated), " migrated, ",
                std::to_string(skipped), " skipped"});
    const auto counts = bookmarks_.validateBookmarks();
    diagnostic({"📚 Bookmark cache: ", std::to_string(counts.total), " total, ",
                std::to_string(counts.valid), " valid, ", std::to_string(counts.invalid),
                " invalid"});
}

void WorkspaceStore::createDefaultWorkspacesIfNeeded() {
    if (!workspaces->empty()) return;
    const auto now = platform_.clock.now();
    workspaces = {makeWorkspace("Personal", "", "person", now),
                  makeWorkspace("Work", "", "briefcase", now),
                  makeWorkspace("Creative", "", "sparkles", now)};
    activateFirstWorkspace();
    // With a file of its own, no later start would look for the old one.
    if (!persistence_.awaitsLegacyFile()) saveWorkspaces();
}

} // namespace corvane
