#pragma once

#include "core/Records.h"
#include "foundation/Published.h"
#include "platform/StatusBar.h"
#include "shell/OnboardingWindowManager.h"

#include <memory>
#include <string>

namespace corvane {

class AppDelegate;
class NotificationCenter;
class UserDefaults;
class UserNotifications;
class WorkspaceStore;
struct Toolkit;

/// The status item, with a menu that starts and finishes workspaces and leads back to the main
/// window. The menu is made anew from the store at each change of it. What an action did is told by
/// a user notification. One instance for the life of the process; main thread.
class MenuBarManager {
public:
    /// What is given outlives the manager.
    MenuBarManager(WorkspaceStore& store, AppDelegate& delegate, const Toolkit& toolkit,
                   UserDefaults& userDefaults, NotificationCenter& notificationCenter,
                   UserNotifications& userNotifications);

    /// Makes the status item as soon as the application runs; nothing if that was done before. For
    /// each launch and activation.
    void setupStatusItem();

private:
    void createStatusItem();
    StatusButton button() const;
    void rebuildMenu();
    void rebuildMenuAfter(double seconds);
    void workspaceStoreDidChange();

    Menu menu();
    void addWorkspaces(Menu& menu);
    MenuItem workspaceItem(const std::shared_ptr<const Workspace>& workspace);
    void addSwitchesAndLayouts(Menu& menu);

    void launchWorkspaceFromMenu(const Workspace& workspace);
    void quitWorkspaceFromMenu(const Workspace& workspace);
    void toggleFocusMode();
    void toggleAutoSaveLayouts();
    void saveCurrentLayout();
    void quitAllApps();
    void quitApp();
    void sendUserNotification(std::string title, std::string body);

    void showMainWindow();
    void presentMainWindow();
    void recreateMainWindow();
    void ensureMainWindowVisible(bool hasCome);

    WorkspaceStore& store_;
    AppDelegate& delegate_;
    const Toolkit& toolkit_;
    NotificationCenter& notificationCenter_;
    UserNotifications& userNotifications_;
    std::unique_ptr<StatusItem> statusItem_;
    Subscription storeObserver_;
    bool isSetup_ = false;
    OnboardingWindowManager onboardingManager_;
};

} // namespace corvane
