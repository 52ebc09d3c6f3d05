#include "shell/CorvaneApp.h"

#include "foundation/Diagnostics.h"
#include "platform/Platform.h"

namespace corvane {

namespace {

/// The main window has come to rest by then.
constexpr double onboardingDelay = 1.0;

void tellOfKeptPreferences(Platform& platform, const std::string& kept,
                           const std::string& unreadableBecause) {
    const auto why = unreadableBecause.empty()
                         ? "Another program changed the preferences."
                         : "The preferences can't be read: " + unreadableBecause;
    platform.mainQueue.async([&alerts = platform.alerts, why, kept] {
        alerts.runModal(
            {.title = "Preferences Kept Aside",
             .message =
                 why +
                 "\n\nThat file was kept, and Corvane goes on with the preferences that it shows. The other ones are at:\n\n" +
                 kept,
             .buttons = {"OK"}});
    });
}

} // namespace

CorvaneApp::CorvaneApp(Platform& platform)
    : platform_(platform), appDelegate_(platform.application),
      bookmarks_(platform.fileSystem, platform.bookmarks, platform.clock, platform.mainQueue,
                 platform.diskQueue),
      workspaceStore_(platform, bookmarks_),
      menuBarManager_(workspaceStore_, appDelegate_, platform, platform.userDefaults,
                      platform.notificationCenter, platform.userNotifications),
      onboardingManager_(platform.application, platform.userDefaults) {
    platform.userNotifications.requestAuthorization([](const Result<void>& granted) {
        if (!granted)
            diagnostic({"Notification permission error: ", granted.error().localizedDescription});
    });
    auto& defaults = platform.userDefaults;
    defaults.onKeptAside = [&platform](const auto& kept, const auto& unreadableBecause) {
        tellOfKeptPreferences(platform, kept, unreadableBecause);
    };
    // Who had preferences has had the tour.
    if (defaults.isUnreadable()) completeOnboarding(defaults);
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
