#include "core/WorkspaceStore.h"

#include "core/BookmarkManager.h"

#include <optional>

namespace corvane {

WorkspaceStore::WorkspaceStore(Platform& platform, BookmarkManager& bookmarks)
    : focusMode(objectWillChange, platform.userDefaults, "CorvaneFocusMode", false),
      autoSaveLayouts(objectWillChange, platform.userDefaults, "CorvaneAutoSaveLayouts", false),
      fullscreenPriority(objectWillChange, platform.userDefaults, "CorvaneFullscreenPriority",
                         "first"),
      hasShownFullscreenLimitationAlert(objectWillChange, platform.userDefaults,
                                        "CorvaneHasShownFullscreenAlert", false),
      enableAccessibilityFeatures(objectWillChange, platform.userDefaults,
                                  "CorvaneEnableAccessibilityFeatures", false),
      showLayoutSavedAlert(objectWillChange, platform.userDefaults, "CorvaneShowLayoutSavedAlert",
                           true),
      showWorkspaceClosedAlert(objectWillChange, platform.userDefaults,
                               "CorvaneShowWorkspaceClosedAlert", true),
      showLayoutsDisabledAlert(objectWillChange, platform.userDefaults,
                               "CorvaneShowLayoutsDisabledAlert", true),
      showApplicationsClosedAlert(objectWillChange, platform.userDefaults,
                                  "CorvaneShowApplicationsClosedAlert", true),
      platform_(platform), bookmarks_(bookmarks),
      persistence_(platform.fileSystem, platform.bundles, platform.mainQueue, platform.diskQueue,
                   platform.alerts, platform.panels, platform.clock),
      resourceLauncher_(makeResourceLauncher()) {
    persistence_.onSaved = [this] { noteSaved(); };
    workspaces = persistence_.loadWorkspaces();
    activateFirstWorkspace();
    migrateWorkspaceDescriptions();
    migrateBookmarksIfNeeded();
    createDefaultWorkspacesIfNeeded();
}

WorkspaceStore::~WorkspaceStore() = default;

void WorkspaceStore::saveWorkspaces() {
    (void)persistence_.saveWorkspaces(workspaces);
}

void WorkspaceStore::noteSaved() {
    const auto& saved = persistence_.saved();
    const auto problem = saved ? std::string() : saved.error().localizedDescription;
    if (problem != *savingProblem) savingProblem = problem;
}

void WorkspaceStore::renewBookmarks(const Workspace& workspace) {
    for (const auto& resource : workspace.resources) {
        if (factsOf(resource.type).isInFileSystem)
            bookmarks_.renewBookmark(resource.path, resource.type);
    }
}

void WorkspaceStore::activateFirstWorkspace() {
    activeWorkspace = workspaces->empty() ? std::nullopt : std::optional(workspaces->front());
}

} // namespace corvane
