#pragma once

#include <string>
#include <string_view>

namespace corvane {

inline constexpr std::string_view finderIdentifier = "com.apple.finder";
inline constexpr std::string_view finderPath = "/System/Library/CoreServices/Finder.app";
inline constexpr std::string_view terminalIdentifier = "com.apple.Terminal";
inline constexpr std::string_view terminalPath = "/System/Applications/Utilities/Terminal.app";

/// One installed desktop entry, seen as an application bundle. A plain value.
struct InstalledApplication {
    /// "org.xfce.mousepad.desktop"; empty only for a Terminal that has no entry.
    std::string desktopId;
    /// The same without ".desktop"; "com.apple.finder" and "com.apple.Terminal" for those two.
    std::string bundleIdentifier;
    /// Path of the entry's file.
    std::string desktopFile;
    /// "/Applications/Mousepad.app".
    std::string bundlePath;
    /// Untranslated; "Finder" and "Terminal" for those two.
    std::string name;
    /// Translated.
    std::string displayName;
    std::string startupWmClass;
    /// The command line with its field codes, and its first word.
    std::string exec;
    std::string executable;
    std::string tryExec;
    /// Theme name or path.
    std::string icon;
    /// The desktop shows it in menus: not NoDisplay, not for another desktop only.
    bool isShown = false;
    bool dbusActivatable = false;
    /// Runs inside a terminal (Terminal=true).
    bool needsTerminal = false;
    /// Is itself a terminal emulator (category TerminalEmulator).
    bool isTerminalEmulator = false;

    bool operator==(const InstalledApplication&) const = default;
};

} // namespace corvane
