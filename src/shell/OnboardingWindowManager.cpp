#include "shell/OnboardingWindowManager.h"

#include "platform/ApplicationObject.h"
#include "platform/UserDefaults.h"

namespace corvane {

namespace {

constexpr std::string_view completedKey = "HasCompletedOnboarding";
constexpr Rect content{0, 0, 600, 500};

} // namespace

void completeOnboarding(UserDefaults& defaults) {
    defaults.setObject(completedKey, {true});
}

bool hasCompletedOnboarding(const UserDefaults& defaults) {
    return defaults.boolForKey(completedKey);
}

void OnboardingWindowManager::showOnboarding() {
    if (window_) return application_.makeKeyAndOrderFront(*window_);
    window_ = application_.openOnboardingWindow(
        "Welcome to Corvane", content, [&defaults = defaults_] { completeOnboarding(defaults); });
}

} // namespace corvane
