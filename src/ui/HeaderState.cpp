#include "ui/HeaderState.h"

#include "core/WorkspaceStore.h"
#include "shell/ThemeManager.h"

namespace corvane {

HeaderState::HeaderState(WorkspaceStore& store, ThemeManager& theme)
    : store_(store), theme_(theme),
      storeChanges_(store.objectWillChange.subscribe([this] { objectWillChange.fire(); })),
      themeChanges_(theme.objectWillChange.subscribe([this] { objectWillChange.fire(); })) {}

void HeaderState::setSearchText(std::string text) {
    searchText_ = std::move(text);
    store_.search(searchText_);
}

bool HeaderState::isDarkMode() const {
    return theme_.isDarkMode;
}

std::string_view HeaderState::themeSymbol() const {
    return isDarkMode() ? "sun.max.fill" : "moon.fill";
}

std::string_view HeaderState::themeTooltip() const {
    return isDarkMode() ? "Switch to Light Mode" : "Switch to Dark Mode";
}

void HeaderState::toggleTheme() {
    theme_.toggleTheme();
}

bool HeaderState::focusMode() const {
    return store_.focusMode;
}

std::string HeaderState::focusModeTooltip() const {
    return focusMode() ? "Focus Mode: ON - Will quit unrelated apps when launching workspace"
                       : "Focus Mode: OFF - Will not quit other apps";
}

void HeaderState::toggleFocusMode() {
    store_.focusMode = !store_.focusMode;
}

std::string HeaderState::savingProblem() const {
    const auto& problem = *store_.savingProblem;
    return problem.empty() ? "" : "Changes aren't saved. Press to try again.\n\n" + problem;
}

void HeaderState::saveAgain() {
    store_.saveWorkspaces();
}

} // namespace corvane
