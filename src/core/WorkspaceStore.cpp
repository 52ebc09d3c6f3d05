#include "core/WorkspaceStore.h"

#include "foundation/Diagnostics.h"

#include <algorithm>
#include <array>
#include <utility>

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
      persistence_(platform.fileSystem, platform.bundles, platform.mainQueue, platform.alerts,
                   platform.clock),
      resourceLauncher_(makeResourceLauncher()) {
    readPreferences();
    workspaces = persistence_.loadWorkspaces();
    activateFirstWorkspace();
    migrateWorkspaceDescriptions();
    createDefaultWorkspacesIfNeeded();
}

WorkspaceStore::~WorkspaceStore() = default;

void WorkspaceStore::saveWorkspaces() {
    persistence_.saveWorkspaces(workspaces);
}

void WorkspaceStore::activateFirstWorkspace() {
    activeWorkspace = workspaces->empty() ? std::nullopt : std::optional(workspaces->front());
}

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

void WorkspaceStore::createDefaultWorkspacesIfNeeded() {
    if (!workspaces->empty()) return;
    const auto now = platform_.clock.now();
    workspaces = {makeWorkspace("Personal", "", "person", now),
                  makeWorkspace("Work", "", "briefcase", now),
                  makeWorkspace("Creative", "", "sparkles", now)};
    activateFirstWorkspace();
    saveWorkspaces();
}

} // namespace corvane
