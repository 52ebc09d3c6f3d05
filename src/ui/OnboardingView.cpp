#include "ui/OnboardingView.h"

#include "core/WorkspaceStore.h"

namespace corvane {

namespace {

constexpr OnboardingStep allSteps[]{
    {"Welcome to Corvane", "Your workspace management companion",
     "Corvane helps you organize and launch groups of applications, files, and folders together as workspaces.",
     "app.icon"},
    {"Create Your First Workspace", "Group your tools together",
     "Click the '+' button to create a new workspace. Name it after your project or task (e.g., 'Development', 'Design', 'Research').",
     "plus.circle"},
    {"Add Resources", "Drag & drop to add items",
     "Drag applications, files, folders, or even URLs into your workspace. You can also use the '+' button to add specific types of resources.",
     "square.and.arrow.down"},
    {"Launch Everything at Once", "One click, all your tools",
     "Press the 'Start' button to launch all resources in your workspace. Use individual play buttons to launch specific items.",
     "play.circle"},
    {"Use Focus Mode", "Stay distraction-free",
     "Enable Focus Mode to automatically quit all other applications when starting a workspace, keeping you focused on your current task.",
     "scope", OnboardingAction::toggleFocusMode},
    {"Access from Menu Bar", "Always available",
     "Find Corvane in your menu bar to quickly launch workspaces, toggle focus mode, or open this help again.",
     "app.icon"},
};

} // namespace

OnboardingView::OnboardingView(WorkspaceStore& store, const Images& images,
                               std::function<void()> completed, std::function<void()> dismiss)
    : store_(store), images_(images), completed_(std::move(completed)),
      dismiss_(std::move(dismiss)),
      storeChanges_(store.objectWillChange.subscribe([this] { objectWillChange.fire(); })) {}

std::span<const OnboardingStep> OnboardingView::steps() {
    return allSteps;
}

std::string OnboardingView::caption() const {
    return std::to_string(currentStep + 1) + " of " + std::to_string(steps().size());
}

std::optional<Image> OnboardingView::applicationPicture() const {
    const auto drawn = images_.named("MenuBarIcon");
    return drawn ? drawn : images_.applicationIcon();
}

std::string_view OnboardingView::actionTitle() const {
    if (!step().action) return "";
    return store_.focusMode ? "Focus Mode: ON" : "Focus Mode: OFF";
}

void OnboardingView::previous() {
    if (!isFirst()) currentStep = currentStep - 1;
}

void OnboardingView::pressMainButton() {
    if (isLast()) return finish();
    currentStep = currentStep + 1;
}

void OnboardingView::pressAction() {
    if (step().action == OnboardingAction::toggleFocusMode) store_.focusMode = !store_.focusMode;
}

void OnboardingView::finish() {
    completed_();
    dismiss_();
}

} // namespace corvane
