#pragma once

#include "foundation/Published.h"

#include <string>
#include <string_view>

namespace corvane {

class ThemeManager;
class WorkspaceStore;

/// What the header of one main window shows and does. Store and theme outlive it. Main thread.
class HeaderState {
public:
    HeaderState(WorkspaceStore& store, ThemeManager& theme);

    /// Fires before anything read here changes.
    ChangeSignal objectWillChange;

    /// The search field's own text: empty in a new window, whatever the store's is.
    const std::string& searchText() const { return searchText_; }
    /// Takes the text as typed and copies it to the store at once.
    void setSearchText(std::string text);

    bool isDarkMode() const;
    std::string_view themeSymbol() const;
    std::string_view themeTooltip() const;
    void toggleTheme();

    bool focusMode() const;
    std::string focusModeTooltip() const;
    void toggleFocusMode();

    /// Why changes aren't saved, in words for the tool tip of a mark; empty while they are.
    std::string savingProblem() const;
    void saveAgain();

private:
    WorkspaceStore& store_;
    ThemeManager& theme_;
    Published<std::string> searchText_{objectWillChange};
    Subscription storeChanges_;
    Subscription themeChanges_;
};

} // namespace corvane
