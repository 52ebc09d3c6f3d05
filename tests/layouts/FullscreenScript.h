#pragma once

#include <string>

namespace corvane {

/// What makes a window fullscreen where it can't be told so, word for word: the layouts write it,
/// and the interpreter of the machine reads it.
inline std::string fullscreenScript(const std::string& name) {
    return "tell application \"" + name + R"("
    activate
    tell application "System Events"
        tell process ")" +
           name + R"("
            try
                click button 2 of window 1
            on error
                -- Try keyboard shortcut as fallback
                keystroke "f" using {control down, command down}
            end try
        end tell
    end tell
end tell)";
}

} // namespace corvane
