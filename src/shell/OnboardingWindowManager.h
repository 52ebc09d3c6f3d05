#pragma once

#include <optional>

namespace corvane {

class ApplicationObject;
class UserDefaults;

/// The tour counts as taken once it was finished or its window closed.
void completeOnboarding(UserDefaults& defaults);
bool hasCompletedOnboarding(const UserDefaults& defaults);

/// The window of the tour through the program: made at the first showing, then kept, so that a
/// later one finds the tour where it was left. Main thread.
class OnboardingWindowManager {
public:
    /// Both outlive the manager.
    OnboardingWindowManager(ApplicationObject& application, UserDefaults& defaults)
        : application_(application), defaults_(defaults) {}

    void showOnboarding();

private:
    ApplicationObject& application_;
    UserDefaults& defaults_;
    std::optional<int> window_;
};

} // namespace corvane
