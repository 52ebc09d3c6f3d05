#include "shell/MenuBarManager.h"

#include "core/WorkspaceStore.h"
#include "foundation/Diagnostics.h"
#include "platform/Platform.h"
#include "shell/AppDelegate.h"

#include <utility>

namespace corvane {

namespace {

constexpr double itemLength = 28;
constexpr double buttonIconSize = 18;
constexpr double menuIconSize = 16;
constexpr double rebuildDelay = 0.1;
/// Once what quits has had time to go.
constexpr double rebuildDelayAfterQuitting = 0.5;

std::optional<Image> resized(std::optional<Image> image, double size) {
    if (image) image->size = size;
    return image;
}

} // namespace

MenuBarManager::MenuBarManager(WorkspaceStore& store, AppDelegate& delegate, const Toolkit& toolkit,
                               UserDefaults& userDefaults, NotificationCenter& notificationCenter,
                               UserNotifications& userNotifications)
    : store_(store), delegate_(delegate), toolkit_(toolkit),
      notificationCenter_(notificationCenter), userNotifications_(userNotifications),
      onboardingManager_(toolkit.application, userDefaults) {}

void MenuBarManager::setupStatusItem() {
    if (isSetup_) return;
    if (toolkit_.application.isActive() || toolkit_.application.isRunning()) {
        createStatusItem();
    } else {
        toolkit_.mainQueue.async([this] { setupStatusItem(); });
    }
}

void MenuBarManager::createStatusItem() {
    statusItem_ = toolkit_.statusBar.statusItem(itemLength);
    if (statusItem_->hasButton()) statusItem_->setButton(button());
    isSetup_ = true;
    rebuildMenu();
    storeObserver_ = notificationCenter_.addObserver("WorkspaceStoreDidChange",
                                                     [this] { workspaceStoreDidChange(); });
}

StatusButton MenuBarManager::button() const {
    StatusButton button{.toolTip = "Corvane - Workspace Manager"};
    auto& image = button.image;
    image = resized(toolkit_.images.named("MenuBarIcon"), buttonIconSize);
    if (!image) image = resized(toolkit_.images.applicationIcon(), buttonIconSize);
    if (!image) {
        image =
            resized(toolkit_.images.systemSymbol("rectangle.3.group", "Corvane"), buttonIconSize);
        if (image) image->isTemplate = true;
    }
    if (!image) button.title = "⚡";
    return button;
}

void MenuBarManager::workspaceStoreDidChange() {
    toolkit_.mainQueue.async([this] { rebuildMenu(); });
}

void MenuBarManager::rebuildMenuAfter(double seconds) {
    toolkit_.mainQueue.after(seconds, [this] { rebuildMenu(); });
}

void MenuBarManager::rebuildMenu() {
    auto items = menu();
    diagnostic({"Menu updated with ", std::to_string(items.size()), " items"});
    statusItem_->setMenu(std::move(items));
    diagnostic({"Menu assigned to status item: true"});
}

Menu MenuBarManager::menu() {
    Menu menu;
    menu.push_back({.title = "Corvane Workspaces", .isEnabled = false});
    menu.push_back(MenuItem::separator());
    menu.push_back({.title = "Show App Window", .action = [this] { showMainWindow(); }});
    menu.push_back(
        {.title = "Help & Tips", .action = [this] { onboardingManager_.showOnboarding(); }});
    menu.push_back(MenuItem::separator());
    addWorkspaces(menu);
    menu.push_back(MenuItem::separator());
    addSwitchesAndLayouts(menu);
    menu.push_back({.title = "Quit All Apps", .action = [this] { quitAllApps(); }});
    menu.push_back(MenuItem::separator());
    menu.push_back({.title = "Quit Corvane", .action = [this] { quitApp(); }});
    return menu;
}

void MenuBarManager::addWorkspaces(Menu& menu) {
    if (store_.workspaces->empty()) {
        menu.push_back({.title = "No workspaces found", .isEnabled = false});
    }
    // As they are now is what an item acts on.
    const auto list = store_.workspaces.kept();
    for (const auto& workspace : *list)
        menu.push_back(workspaceItem({list, &workspace}));
}

MenuItem MenuBarManager::workspaceItem(const std::shared_ptr<const Workspace>& workspace) {
    MenuItem item;
    item.image =
        resized(toolkit_.images.systemSymbol(workspace->icon, workspace->name), menuIconSize);
    if (store_.isRunning(workspace->id)) {
        item.title = workspace->name + "     ⏹";
        item.action = [this, workspace] { quitWorkspaceFromMenu(*workspace); };
    } else {
        item.title = workspace->name + "     ▶";
        item.action = [this, workspace] { launchWorkspaceFromMenu(*workspace); };
    }
    return item;
}

void MenuBarManager::addSwitchesAndLayouts(Menu& menu) {
    menu.push_back({.title = "Focus Mode",
                    .action = [this] { toggleFocusMode(); },
                    .state = store_.focusMode.get()});
    if (!store_.enableAccessibilityFeatures) return;
    menu.push_back({.title = "Auto-Save Layouts",
                    .action = [this] { toggleAutoSaveLayouts(); },
                    .state = store_.autoSaveLayouts.get()});
    const auto& active = store_.activeWorkspace.get();
    if (!active) return;
    menu.push_back({.title = "Save Layout",
                    .action = [this] { saveCurrentLayout(); },
                    .isEnabled = store_.isRunning(active->id)});
}

void MenuBarManager::launchWorkspaceFromMenu(const Workspace& workspace) {
    diagnostic({"Launching workspace: ", workspace.name});
    sendUserNotification("Launching Workspace", "Starting '" + workspace.name + "'...");
    store_.activate(workspace);
    store_.startWorkspace(workspace);
    rebuildMenuAfter(rebuildDelay);
}

void MenuBarManager::quitWorkspaceFromMenu(const Workspace& workspace) {
    diagnostic({"Quitting workspace: ", workspace.name});
    sendUserNotification("Quitting Workspace", "Stopping '" + workspace.name + "'...");
    store_.finishWorkspace(workspace);
    rebuildMenuAfter(rebuildDelayAfterQuitting);
}

void MenuBarManager::toggleFocusMode() {
    store_.focusMode = !store_.focusMode;
    sendUserNotification("Focus Mode",
                         store_.focusMode ? "Focus Mode enabled" : "Focus Mode disabled");
    rebuildMenuAfter(rebuildDelay);
}

void MenuBarManager::toggleAutoSaveLayouts() {
    store_.autoSaveLayouts = !store_.autoSaveLayouts;
    sendUserNotification(
        "Auto-Save Layouts",
        store_.autoSaveLayouts
            ? "Enabled - Layouts will be auto-saved when workspaces finish or app quits"
            : "Disabled - Manual save required");
    rebuildMenuAfter(rebuildDelay);
}

void MenuBarManager::saveCurrentLayout() {
    // A copy, as saving changes the records.
    const auto active = store_.activeWorkspace.get();
    if (!active) {
        return sendUserNotification("Save Layout Failed", "No active workspace selected");
    }
    if (!store_.isRunning(active->id)) {
        return sendUserNotification("Save Layout Failed",
                                    "Start '" + active->name + "' first to save its layout");
    }
    diagnostic({"Save layout clicked for: ", active->name});
    // Of the list, as resources may have come since the start.
    const auto* listed = store_.find(active->id);
    store_.saveWorkspaceLayout(listed ? Workspace(*listed) : *active);
    sendUserNotification("Layout Saved", "Layout saved for '" + active->name + "'");
    rebuildMenuAfter(rebuildDelay);
}

void MenuBarManager::quitAllApps() {
    store_.quitAllApplications();
    sendUserNotification("Quit All", "Closing all workspace applications...");
    rebuildMenuAfter(rebuildDelayAfterQuitting);
}

void MenuBarManager::quitApp() {
    toolkit_.mainQueue.async([this] { toolkit_.application.terminate(); });
}

void MenuBarManager::sendUserNotification(std::string title, std::string body) {
    userNotifications_.add({Uuid::random().toString(), std::move(title), std::move(body)});
}

} // namespace corvane
