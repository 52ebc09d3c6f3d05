#pragma once

#include "foundation/Published.h"

#include <memory>

namespace corvane {

class Appearance;
class MainQueue;

/// Tells the views of one root view whether the dark or the light appearance is in force. The
/// choice isn't stored: it starts as the system's and lasts as long as the process. Main thread.
class ThemeManager {
public:
    ThemeManager(Appearance& appearance, MainQueue& mainQueue);

    /// Fires before `isDarkMode` changes.
    ChangeSignal objectWillChange;
    Published<bool> isDarkMode{objectWillChange};

    /// Flips the mode and fixes it for the whole application.
    void toggleTheme();
    /// Reads the application's appearance again, on a later turn of the main queue. A change of the
    /// screens calls it; a change of the system's appearance alone doesn't.
    void updateTheme();

private:
    Appearance& appearance_;
    MainQueue& mainQueue_;
    Subscription screenObserver_;
    /// What a scheduled update asks whether this manager is still there.
    std::shared_ptr<const bool> alive_ = std::make_shared<const bool>(true);
};

} // namespace corvane
