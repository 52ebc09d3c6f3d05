#include "core/WorkspaceStore.h"
#include "foundation/Diagnostics.h"
#include "layouts/LayoutLoading.h"
#include "layouts/LayoutRestoration.h"
#include "layouts/RememberedDisplays.h"

namespace corvane {

namespace {

/// Time for the started applications to show themselves.
constexpr double restorationDelay = 2.0;

} // namespace

void WorkspaceStore::restoreWorkspaceLayout(const Workspace& workspace) {
    if (!enableAccessibilityFeatures || !platform_.accessibility.isProcessTrusted()) return;
    const auto layout = loadWorkspaceLayout(workspace, platform_.userDefaults,
                                            [this](const auto& migrated, const auto& owner) {
                                                persistWorkspaceLayout(migrated, owner);
                                            });
    if (!layout) {
        diagnostic({"No saved layout found for workspace '", workspace.name, "'"});
        return;
    }
    diagnostic({"Restoring layout for workspace '", workspace.name, "' with ",
                std::to_string(layout->windowLayouts.size()), " windows"});
    platform_.mainQueue.after(
        restorationDelay, [this, layouts = layout->windowLayouts] { applyWindowLayouts(layouts); });
}

void WorkspaceStore::applyWindowLayouts(const std::vector<WindowLayout>& layouts) {
    // Where the keyboard is can change meanwhile, and with it the main screen.
    const WindowControl control(platform_.accessibility, platform_.clock, platform_.scripts,
                                platform_.displays);
    const RememberedDisplays displays(platform_.displays);
    const LayoutRestoration restoration(platform_.applications, displays, control);
    restoration.applyWindowLayouts(layouts, fullscreenPriority.get(),
                                   [this](const WindowLayout& chosen) {
                                       if (hasShownFullscreenLimitationAlert) return;
                                       showFullscreenLimitationAlert(chosen);
                                   });
}

} // namespace corvane
