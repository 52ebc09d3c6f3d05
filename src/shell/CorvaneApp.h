#pragma once

#include "core/BookmarkManager.h"
#include "core/WorkspaceStore.h"
#include "shell/AppCoordinator.h"
#include "shell/AppDelegate.h"
#include "shell/MenuBarManager.h"
#include "shell/OnboardingWindowManager.h"

namespace corvane {

/// Owns the long-lived objects of the process and ties them together. One instance for the life of
/// the process; main thread.
class CorvaneApp {
public:
    /// Makes the delegate, the store and the status menu's manager, and asks for permission to
    /// notify. The platform outlives the app.
    explicit CorvaneApp(Platform& platform);

    /// Runs at each appearance of the main window's root view. The first time it also wires the
    /// observer of "createNewWindow" and the relay from the store to "WorkspaceStoreDidChange".
    /// Every run renews the delegate's fields, and a second later shows the tour to those who
    /// haven't taken it.
    void setupApp();

    AppDelegate& appDelegate() { return appDelegate_; }
    WorkspaceStore& workspaceStore() { return workspaceStore_; }
    BookmarkManager& bookmarks() { return bookmarks_; }
    Platform& platform() { return platform_; }

private:
    void wire();

    Platform& platform_;
    AppDelegate appDelegate_;
    BookmarkManager bookmarks_;
    WorkspaceStore workspaceStore_;
    MenuBarManager menuBarManager_;
    AppCoordinator appCoordinator_;
    OnboardingWindowManager onboardingManager_;
    Subscription createNewWindowObserver_;
    bool isWired_ = false;
};

} // namespace corvane
