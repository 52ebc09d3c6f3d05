#include "qt/models/HeaderModel.h"

#include "qt/items/Strings.h"
#include "ui/HeaderState.h"

namespace corvane {

HeaderModel::HeaderModel(HeaderState& state, MakeSheet makeSheet)
    : state_(state), makeSheet_(std::move(makeSheet)),
      relay_(state.objectWillChange, [this] { emit changed(); }) {}

QString HeaderModel::searchText() const {
    return toQString(state_.searchText());
}

void HeaderModel::setSearchText(const QString& text) {
    state_.setSearchText(text.toStdString());
}

bool HeaderModel::isDarkMode() const {
    return state_.isDarkMode();
}

QString HeaderModel::themeSymbol() const {
    return toQString(state_.themeSymbol());
}

QString HeaderModel::themeTooltip() const {
    return toQString(state_.themeTooltip());
}

bool HeaderModel::focusMode() const {
    return state_.focusMode();
}

QString HeaderModel::focusModeTooltip() const {
    return toQString(state_.focusModeTooltip());
}

void HeaderModel::toggleTheme() {
    state_.toggleTheme();
}

void HeaderModel::toggleFocusMode() {
    state_.toggleFocusMode();
}

QString HeaderModel::savingProblem() const {
    return toQString(state_.savingProblem());
}

void HeaderModel::saveAgain() {
    state_.saveAgain();
}

} // namespace corvane
