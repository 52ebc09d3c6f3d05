#include "shell/ThemeManager.h"

#include "platform/Appearance.h"
#include "platform/MainQueue.h"

namespace corvane {

ThemeManager::ThemeManager(Appearance& appearance, MainQueue& mainQueue)
    : isDarkMode(objectWillChange, appearance.effectiveAppearanceIsDark()), appearance_(appearance),
      mainQueue_(mainQueue),
      screenObserver_(appearance.screenParametersDidChange().subscribe([this] { updateTheme(); })) {
}

void ThemeManager::toggleTheme() {
    isDarkMode = !isDarkMode;
    appearance_.setAppearance(isDarkMode);
}

void ThemeManager::updateTheme() {
    mainQueue_.async([this, alive = std::weak_ptr(alive_)] {
        if (!alive.expired()) isDarkMode = appearance_.effectiveAppearanceIsDark();
    });
}

} // namespace corvane
