#include "qt/models/OnboardingModel.h"

#include "qt/items/Pictures.h"
#include "qt/items/Strings.h"
#include "ui/OnboardingView.h"

namespace corvane {

OnboardingModel::OnboardingModel(OnboardingView& state)
    : state_(state), relay_(state.objectWillChange, [this] { emit changed(); }) {}

int OnboardingModel::stepCount() const {
    return int(OnboardingView::steps().size());
}

int OnboardingModel::currentStep() const {
    return int(state_.currentStep.get());
}

QString OnboardingModel::title() const {
    return toQString(state_.step().title);
}

QString OnboardingModel::subtitle() const {
    return toQString(state_.step().subtitle);
}

QString OnboardingModel::description() const {
    return toQString(state_.step().description);
}

QString OnboardingModel::icon() const {
    return toQString(state_.step().icon);
}

QString OnboardingModel::applicationPicture() const {
    const auto picture = state_.applicationPicture();
    return picture ? drawingOf(*picture) : QString();
}

QString OnboardingModel::caption() const {
    return toQString(state_.caption());
}

QString OnboardingModel::mainButtonTitle() const {
    return toQString(state_.mainButtonTitle());
}

QString OnboardingModel::actionTitle() const {
    return toQString(state_.actionTitle());
}

bool OnboardingModel::isFirst() const {
    return state_.isFirst();
}

void OnboardingModel::previous() {
    state_.previous();
}

void OnboardingModel::pressMainButton() {
    state_.pressMainButton();
}

void OnboardingModel::skip() {
    state_.skip();
}

void OnboardingModel::pressAction() {
    state_.pressAction();
}

} // namespace corvane
