#pragma once

#include "foundation/Url.h"

#include <string>
#include <string_view>
#include <vector>

namespace corvane {

inline constexpr std::string_view finderIdentifier = "com.apple.finder";
inline constexpr std::string_view finderPath = "/System/Library/CoreServices/Finder.app";
inline constexpr std::string_view terminalIdentifier = "com.apple.Terminal";
inline constexpr std::string_view terminalPath = "/System/Applications/Utilities/Terminal.app";
inline constexpr std::string_view browserIdentifier = "com.apple.Safari";
inline constexpr std::string_view browserPath = "/Applications/Safari.app";

/// One installed desktop entry, seen as an application bundle. A plain value.
struct InstalledApplication {
    /// "org.xfce.mousepad.desktop"; empty only for a Terminal that has no entry.
    std::string desktopId;
    /// The same without ".desktop"; "com.apple.Terminal" for a Terminal that has no entry.
    std::string bundleIdentifier;
    /// Path of the entry's file.
    std::string desktopFile;
    /// "/Applications/Mousepad.app": the untranslated name, "/" as ":", with the identifier in
    /// brackets behind it where two share a name.
    std::string bundlePath;
    /// Untranslated.
    std::string name;
    /// Translated, for people.
    std::string displayName;
    /// The translated name and the one without brackets, where nothing else is called so: texts
    /// stored elsewhere or before may say those.
    std::vector<std::string> formerNames;
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
    /// Says when its first window is there (StartupNotify=true), and so takes a token at its start.
    /// Others, as emulators of a terminal, would only hand it down to what is started in them
    /// later.
    bool takesToken = false;
    /// Is itself a terminal emulator (category TerminalEmulator).
    bool isTerminalEmulator = false;
    /// Of an emulator, the options behind which a command follows; empty where the entry names
    /// none.
    std::string terminalOption;

    /// What a resource stores and what is compared: the bundle's file name without ".app".
    std::string storedName() const { return path::stem(bundlePath); }

    bool operator==(const InstalledApplication&) const = default;
};

} // namespace corvane
