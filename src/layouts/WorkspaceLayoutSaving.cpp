#include "core/WorkspaceStore.h"
#include "foundation/Diagnostics.h"
#include "foundation/Text.h"
#include "layouts/RememberedDisplays.h"
#include "layouts/ScreenInfo.h"
#include "layouts/WindowCapture.h"
#include "quit/RunningApplicationMatching.h"

#include <algorithm>

namespace corvane {

namespace {

std::vector<std::string> visibleApplicationNames(const Applications& applications) {
    std::vector<std::string> names;
    for (const auto& application : applications.runningApplications()) {
        if (!application.isRegular() || application.isHidden || !application.localizedName)
            continue;
        names.push_back(*application.localizedName);
    }
    std::ranges::sort(names);
    return names;
}

/// The running applications are listed for these lines alone.
void tellApplications(const Applications& applications, const std::vector<std::string>& names) {
    if (!diagnosticsAreOn()) return;
    diagnostic({"Workspace apps to save layout for: ", text::joined(names, ", ")});
    diagnostic(
        {"Actually running apps: ", text::joined(visibleApplicationNames(applications), ", ")});
    diagnostic({"Running workspace apps: ",
                text::joined(runningApplicationNames(applications, names), ", ")});
}

} // namespace

void WorkspaceStore::saveWorkspaceLayout(const Workspace& workspace) {
    if (!isRunning(workspace.id)) {
        diagnostic({"Cannot save layout: workspace '", workspace.name, "' is not running"});
        showInfoAlert(
            "Cannot Save Layout",
            "The workspace '" + workspace.name +
                "' must be running to save its layout. Please start the workspace first.");
        return;
    }
    if (!enableAccessibilityFeatures) {
        if (showLayoutsDisabledAlert) {
            showDismissibleAlert(
                "Window Layouts Disabled",
                "Window layout features are currently disabled. Enable them in Settings → Workspace Management → Window Layout Features to save and restore window positions.",
                DismissibleAlertType::layoutsDisabled);
        }
        return;
    }
    if (!platform_.accessibility.isProcessTrusted()) return showAccessibilityPermissionAlert();

    const auto layout = captureLayout(workspace);
    if (layout.windowLayouts.empty()) {
        diagnostic({"No windows found to save for workspace '", workspace.name, "'"});
        showInfoAlert(
            "No Windows Found",
            "No application windows were found to save. Make sure the workspace applications are running and visible.");
        return;
    }
    persistWorkspaceLayout(layout, workspace);
    diagnostic({"Saved layout for workspace '", workspace.name, "' with ",
                std::to_string(layout.windowLayouts.size()), " windows"});
}

void WorkspaceStore::autoSaveLayout(const Workspace& workspace, std::string_view what) {
    if (!autoSaveLayouts || !isRunning(workspace.id)) return;
    diagnostic({"Auto-saving layout before quitting ", what, ": '", workspace.name, "'"});
    saveWorkspaceLayout(workspace);
}

WorkspaceLayout WorkspaceStore::captureLayout(const Workspace& workspace) {
    const auto& applications = platform_.applications;
    const auto names = workspaceAppNames(workspace);
    tellApplications(applications, names);
    const RememberedDisplays displays(platform_.displays);
    const WindowCapture capture(platform_.windowList, displays, platform_.accessibility);
    WorkspaceLayout layout;
    layout.workspaceId = workspace.id;
    for (const auto& name : names) {
        const auto application = findRunningApplication(applications, name);
        if (!application) continue;
        const auto windows = capture.capture(*application, name);
        layout.windowLayouts.insert(layout.windowLayouts.end(), windows.begin(), windows.end());
    }
    layout.savedDate = platform_.clock.now();
    return layout;
}

std::vector<std::string> WorkspaceStore::workspaceAppNames(const Workspace& workspace) const {
    std::vector<std::string> names;
    for (const auto& resource : workspace.resources)
        insertAppNames(resource, names);
    return names;
}

void WorkspaceStore::persistWorkspaceLayout(const WorkspaceLayout& layout,
                                            const Workspace& workspace) {
    const auto screens = platform_.displays.screens();
    std::vector<SavedWindowLayout> saved;
    for (const auto& window : layout.windowLayouts)
        saved.push_back(makeSavedWindowLayout(window, layout.savedDate, screens));
    if (!find(workspace.id)) return;
    workspaces.mutate([&](auto& list) {
        auto& record = *findById(list, workspace.id);
        record.savedWindowLayouts = std::move(saved);
        record.hasLayoutSaved = true;
        record.dateModified = platform_.clock.now();
    });
    saveWorkspaces();
    diagnostic({"Layout saved to JSON for workspace '", workspace.name, "'"});
}

} // namespace corvane
