#pragma once

#include "core/Records.h"
#include "platform/Accessibility.h"
#include "platform/Applications.h"
#include "platform/Displays.h"
#include "platform/MainQueue.h"
#include "platform/ScriptEngine.h"

#include <optional>
#include <string>

namespace corvane {

/// Moves the windows of running applications. Every failure ends in a diagnostic and in going on.
/// Main thread, which waits: half a second after each try that finds no window.
class WindowControl {
public:
    WindowControl(Accessibility& accessibility, Clock& clock, ScriptEngine& scripts,
                  const Displays& displays)
        : accessibility_(accessibility), clock_(clock), scripts_(scripts), displays_(displays) {}

    /// Gives the application's first window the record's position, then its size, and makes it
    /// fullscreen if the record is; nothing takes a window out of fullscreen. A window that was
    /// tiled and is again gets its workspace instead of position and size.
    void applyWindowLayout(const WindowLayout& layout, const RunningApplication& application) const;

    /// The first window of the application with that process, as soon as one of so many tries finds
    /// it.
    std::optional<AccessibilityWindow> firstAccessibilityWindow(std::int32_t processIdentifier,
                                                                const std::string& appName,
                                                                int tries) const;

    /// Natively, else by a script that acts on whichever window of the application is the first,
    /// else by the frame of the main screen.
    void setWindowFullscreen(const AccessibilityWindow& window, const std::string& appName) const;

private:
    bool goesToTiler(const AccessibilityWindow& window, const WindowLayout& layout) const;
    void setFrame(const AccessibilityWindow& window, const WindowLayout& layout) const;
    bool setFullscreenByScript(const std::string& appName) const;
    void coverMainScreen(const AccessibilityWindow& window, const std::string& appName) const;

    Accessibility& accessibility_;
    Clock& clock_;
    ScriptEngine& scripts_;
    const Displays& displays_;
};

} // namespace corvane
