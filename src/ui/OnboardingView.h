#pragma once

#include "foundation/Published.h"
#include "platform/Images.h"

#include <cstddef>
#include <functional>
#include <optional>
#include <span>
#include <string>
#include <string_view>

namespace corvane {

class WorkspaceStore;

enum class OnboardingAction { toggleFocusMode };

/// One step of the tour.
struct OnboardingStep {
    std::string_view title;
    std::string_view subtitle;
    std::string_view description;
    /// The name of a symbol; "app.icon" stands for the application's own picture.
    std::string_view icon;
    std::optional<OnboardingAction> action = {};
};

/// The tour of one window. Store and images outlive it. Main thread.
class OnboardingView {
public:
    /// `completed` stores that the tour was taken, `dismiss` closes the window.
    OnboardingView(WorkspaceStore& store, const Images& images, std::function<void()> completed,
                   std::function<void()> dismiss);

    /// Fires before anything read here changes.
    ChangeSignal objectWillChange;
    Published<std::size_t> currentStep{objectWillChange};

    static std::span<const OnboardingStep> steps();
    const OnboardingStep& step() const { return steps()[currentStep]; }
    bool isFirst() const { return currentStep == 0; }
    bool isLast() const { return currentStep + 1 == steps().size(); }
    /// "1 of 6".
    std::string caption() const;
    std::string_view mainButtonTitle() const { return isLast() ? "Get Started" : "Next"; }
    /// What stands for the program; null where it has no picture.
    std::optional<Image> applicationPicture() const;
    /// Empty for a step without an action.
    std::string_view actionTitle() const;

    void previous();
    /// The next step, or the end of the tour at the last.
    void pressMainButton();
    void skip() { finish(); }
    void pressAction();

private:
    void finish();

    WorkspaceStore& store_;
    const Images& images_;
    std::function<void()> completed_;
    std::function<void()> dismiss_;
    Subscription storeChanges_;
};

} // namespace corvane
