#include "shell/AppDelegate.h"

#include "core/WorkspaceStore.h"
#include "foundation/Diagnostics.h"
#include "platform/ApplicationObject.h"
#include "shell/MenuBarManager.h"

namespace corvane {

void AppDelegate::applicationDidFinishLaunching() {
    if (menuBarManager) menuBarManager->setupStatusItem();
}

void AppDelegate::applicationDidBecomeActive() {
    if (menuBarManager) menuBarManager->setupStatusItem();
}

bool AppDelegate::applicationShouldHandleReopen(bool hasVisibleWindows) {
    if (hasVisibleWindows) return true;
    const auto window = application_.firstWindow();
    if (!window) return true;
    application_.makeKeyAndOrderFront(window->identifier);
    application_.orderFront(window->identifier);
    return false;
}

bool AppDelegate::applicationShouldTerminateAfterLastWindowClosed() const {
    return false;
}

void AppDelegate::applicationWillTerminate() {
    autoSaveRunningLayouts();
    if (!workspaceStore) return;
    if (!workspaceStore->savingProblem->empty()) workspaceStore->saveWorkspaces();
    for (const auto& workspace : *workspaceStore->workspaces) {
        if (workspaceStore->isRunning(workspace.id)) workspaceStore->renewBookmarks(workspace);
    }
}

void AppDelegate::autoSaveRunningLayouts() {
    if (!workspaceStore) return;
    auto& store = *workspaceStore;
    if (!store.autoSaveLayouts || !store.enableAccessibilityFeatures) return;
    // A copy, as saving changes the list.
    const auto workspaces = store.workspaces.get();
    for (const auto& workspace : workspaces) {
        if (!store.isRunning(workspace.id)) continue;
        diagnostic({"Auto-saving layout for running workspace: '", workspace.name, "'"});
        store.saveWorkspaceLayout(workspace);
    }
}

} // namespace corvane
