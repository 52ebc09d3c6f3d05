#include "shell/AppDelegate.h"

#include "core/WorkspaceStore.h"
#include "foundation/Diagnostics.h"
#include "platform/ApplicationObject.h"

#include <algorithm>

namespace corvane {

bool AppDelegate::applicationShouldHandleReopen(bool hasVisibleWindows) {
    if (hasVisibleWindows) return true;
    const auto windows = application_.windows();
    const auto first = std::find_if(windows.begin(), windows.end(),
                                    [](const auto& window) { return !window.isSheet; });
    if (first == windows.end()) return true;
    application_.bringToFront(first->identifier);
    return false;
}

bool AppDelegate::applicationShouldTerminateAfterLastWindowClosed() const {
    return false;
}

void AppDelegate::applicationWillTerminate() {
    autoSaveRunningLayouts();
}

void AppDelegate::autoSaveRunningLayouts() {
    if (!workspaceStore) return;
    auto& store = *workspaceStore;
    if (!store.autoSaveLayouts || !store.enableAccessibilityFeatures) return;
    // A copy, as saving changes the list.
    const auto workspaces = store.workspaces.get();
    for (const auto& workspace : workspaces) {
        if (!store.runningWorkspaces->contains(workspace.id)) continue;
        diagnostic({"Auto-saving layout for running workspace: '", workspace.name, "'"});
        store.saveWorkspaceLayout(workspace);
    }
}

} // namespace corvane
