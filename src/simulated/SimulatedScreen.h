#pragma once

#include "foundation/Rect.h"
#include "platform/Accessibility.h"
#include "platform/Displays.h"
#include "platform/MainQueue.h"
#include "platform/WindowList.h"

#include <map>
#include <set>
#include <string>
#include <string_view>
#include <vector>

namespace corvane {

/// One window: what the window list and the Accessibility interface tell of it.
struct SimulatedWindow {
    /// Its bounds follow what Accessibility sets. Its number names it there.
    WindowInfo info;
    bool isFullscreen = false;
    /// Off the screen (iconified, on another desktop), the window list doesn't have it.
    bool isOnScreen = true;
    bool isAccessible = true;
    /// It comes at this moment of virtual time, in seconds since `SimulatedQueue::start`.
    double appearsAt = 0;
    /// Attributes that can't be read, each with the code in which a set ends:
    /// {{"AXPosition", -25205}}.
    std::map<std::string, int, std::less<>> refusals = {};
};

/// The entry of an ordinary window in the window list.
WindowInfo windowInfo(std::int32_t ownerPID, std::int64_t number, std::string ownerName,
                      const Rect& frame);

/// The displays of the simulated desktop and the windows on them: plain data that a test fills in.
/// A fullscreen window covers the first display.
class SimulatedScreen : public Displays, public WindowList, public Accessibility {
public:
    SimulatedScreen(const Clock& clock, std::vector<std::string>& log) : clock_(clock), log_(log) {}

    std::vector<Display> displays{{{0, 0, 1440, 900}, {0, 0, 1440, 875}}};
    /// Where the keyboard is. Past the end: there is no main screen.
    std::size_t mainDisplay = 0;
    /// Front to back.
    std::vector<SimulatedWindow> stack;
    bool windowListAnswers = true;
    bool isTrusted = true;
    DesktopFacts facts{.name = "A desktop in memory", .tellsWindows = true, .placesWindows = true};
    /// Processes whose "AXWindows" can't be read.
    std::set<std::int32_t> unanswering;
    /// How often someone has asked for the displays.
    mutable int timesAsked = 0;

    std::vector<Display> screens() const override {
        ++timesAsked;
        return displays;
    }
    std::optional<Display> mainScreen() const override;
    std::optional<std::vector<WindowInfo>> onScreenWindows() override;
    bool isProcessTrusted() override { return isTrusted; }
    DesktopFacts desktop() override { return facts; }
    std::optional<std::vector<AccessibilityWindow>>
    windows(std::int32_t processIdentifier) override;
    std::optional<Point> position(const AccessibilityWindow& window) override;
    std::optional<Size> size(const AccessibilityWindow& window) override;
    std::optional<bool> isFullscreen(const AccessibilityWindow& window) override;
    FrameCodes setFrame(const AccessibilityWindow& window, const Rect& frame) override;
    int setFullscreen(const AccessibilityWindow& window, bool fullscreen) override;
    int setTilingWorkspace(const AccessibilityWindow& window, const std::string& name) override;

private:
    bool hasAppeared(const SimulatedWindow& window) const;
    SimulatedWindow* find(const AccessibilityWindow& window);
    /// The window, where the attribute can be read.
    SimulatedWindow* readable(const AccessibilityWindow& window, std::string_view attribute);
    /// Logs the set and lets `change` work on the window, unless it has gone or refuses.
    template <typename Change>
    int set(const AccessibilityWindow& window, std::string_view attribute, const std::string& value,
            Change change);

    const Clock& clock_;
    std::vector<std::string>& log_;
};

} // namespace corvane
