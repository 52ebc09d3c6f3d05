#include "shell/CorvaneApp.h"

#include "foundation/Diagnostics.h"
#include "platform/Platform.h"

namespace corvane {

namespace {

/// The main window has come to rest by then.
constexpr double onboardingDelay = 1.0;

} // namespace

CorvaneApp::CorvaneApp(Platform& platform)
    : platform_(platform), appDelegate_(platform.application),
      bookmarks_(platform.fileSystem, platform.bookmarks, platform.clock),
      workspaceStore_(platform, bookmarks_),
      menuBarManager_(workspaceStore_, appDelegate_, platform),
      onboardingManager_(platform.application, platform.userDefaults) {
    platform.userNotifications.requestAuthorization([](const Result<void>& granted) {
        if (!granted)
            diagnostic({"Notification permission error: ", granted.error().localizedDescription});
    });
}

void CorvaneApp::setupApp() {
    appDelegate_.menuBarManager = &menuBarManager_;
    appDelegate_.workspaceStore = &workspaceStore_;
    if (!isWired_) wire();
    if (hasCompletedOnboarding(platform_.userDefaults)) return;
    platform_.mainQueue.after(onboardingDelay, [this] { onboardingManager_.showOnboarding(); });
}

void CorvaneApp::wire() {
    isWired_ = true;
    createNewWindowObserver_ = platform_.notificationCenter.addObserver("createNewWindow", [this] {
        const bool madeNone = appDelegate_.applicationShouldHandleReopen(false);
        if (madeNone) platform_.application.openMainWindow();
    });
    appCoordinator_.relayChanges(workspaceStore_, platform_.mainQueue,
                                 platform_.notificationCenter);
}

} // namespace corvane
