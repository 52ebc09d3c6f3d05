#include "layouts/WindowControl.h"

#include "foundation/Diagnostics.h"
#include "foundation/Text.h"

namespace corvane {

namespace {

constexpr int windowTries = 5;
constexpr double pauseBetweenTries = 0.5;

std::string described(double a, double b) {
    return "(" + text::number(a) + ", " + text::number(b) + ")";
}

/// The name is a stranger's where the record is: it stays a text, whatever it holds.
std::string asText(std::string_view name) {
    std::string result;
    for (const char c : name) {
        if (c == '"' || c == '\\') result += '\\';
        if (c == '\n' || c == '\r') {
            result += c == '\n' ? "\\n" : "\\r";
        } else {
            result += c;
        }
    }
    return result;
}

std::string fullscreenScript(const std::string& name) {
    const auto appName = asText(name);
    return "tell application \"" + appName +
           "\"\n"
           "    activate\n"
           "    tell application \"System Events\"\n"
           "        tell process \"" +
           appName +
           "\"\n"
           "            try\n"
           "                click button 2 of window 1\n"
           "            on error\n"
           "                -- Try keyboard shortcut as fallback\n"
           "                keystroke \"f\" using {control down, command down}\n"
           "            end try\n"
           "        end tell\n"
           "    end tell\n"
           "end tell";
}

} // namespace

void WindowControl::applyWindowLayout(const WindowLayout& layout,
                                      const RunningApplication& application) const {
    const auto& appName = layout.appName;
    const auto& frame = layout.frame;
    const auto window =
        firstAccessibilityWindow(application.processIdentifier, appName, windowTries);
    if (!window) {
        diagnostic({"Could not get windows for '", appName, "' after retries"});
        return;
    }
    if (!goesToTiler(*window, layout)) setFrame(*window, layout);
    if (layout.isFullscreen) setWindowFullscreen(*window, appName);
    diagnostic({"Applied layout for '", appName, "' - Position: ", described(frame.x, frame.y),
                ", Size: ", described(frame.width, frame.height),
                ", Fullscreen: ", layout.isFullscreen ? "true" : "false"});
}

/// A window that was tiled and is again has no frame of its own.
bool WindowControl::goesToTiler(const AccessibilityWindow& window,
                                const WindowLayout& layout) const {
    if (!layout.tilingWorkspace) return false;
    const int code = accessibility_.setTilingWorkspace(window, *layout.tilingWorkspace);
    if (code != Accessibility::success)
        diagnostic({"Failed to set workspace for '", layout.appName, "': ", std::to_string(code)});
    return code == Accessibility::success;
}

void WindowControl::setFrame(const AccessibilityWindow& window, const WindowLayout& layout) const {
    const auto [position, size] = accessibility_.setFrame(window, layout.frame);
    const auto tell = [&](const char* what, int code) {
        if (code == Accessibility::success) return;
        diagnostic({"Failed to set ", what, " for '", layout.appName, "': ", std::to_string(code)});
    };
    tell("position", position);
    tell("size", size);
}

std::optional<AccessibilityWindow>
WindowControl::firstAccessibilityWindow(std::int32_t processIdentifier, const std::string& appName,
                                        int tries) const {
    for (int attempt = 1; attempt <= tries; ++attempt) {
        const auto number = std::to_string(attempt);
        const auto windows = accessibility_.windows(processIdentifier);
        if (windows && !windows->empty()) {
            if (attempt > 1) {
                diagnostic({"Got windows for '", appName, "' on attempt ", number});
            }
            return windows->front();
        }
        if (attempt == tries) break;
        diagnostic({"Attempt ", number, " failed to get windows for '", appName,
                    "', retrying in 0.5s..."});
        clock_.sleep(pauseBetweenTries);
    }
    return std::nullopt;
}

void WindowControl::setWindowFullscreen(const AccessibilityWindow& window,
                                        const std::string& appName) const {
    diagnostic({"Attempting to set fullscreen for '", appName, "'..."});
    const int code = accessibility_.setFullscreen(window, true);
    if (code == Accessibility::success) {
        diagnostic({"Set fullscreen mode for '", appName, "' using AXFullScreen"});
        return;
    }
    diagnostic({"AXFullScreen failed for '", appName, "' (", std::to_string(code),
                "), trying alternative methods..."});
    if (!setFullscreenByScript(appName)) coverMainScreen(window, appName);
}

bool WindowControl::setFullscreenByScript(const std::string& appName) const {
    const auto outcome = scripts_.execute(fullscreenScript(appName));
    if (!outcome) return false;
    if (!outcome->error) {
        diagnostic({"Set fullscreen mode for '", appName, "' using AppleScript"});
        return true;
    }
    diagnostic({"AppleScript method failed for '", appName,
                "': ", outcome->error->message.value_or("Unknown error")});
    return false;
}

void WindowControl::coverMainScreen(const AccessibilityWindow& window,
                                    const std::string& appName) const {
    const auto screen = displays_.mainScreen();
    if (!screen) return;
    accessibility_.setFrame(window, screen->frame);
    diagnostic({"Applied manual fullscreen (non-native) for '", appName, "'"});
}

} // namespace corvane
