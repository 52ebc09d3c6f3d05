#pragma once

#include "foundation/Result.h"
#include "linux/installed/InstalledApplication.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

/// Which terminal emulator stands for Terminal, and how it runs a command. PATH and the desktop's
/// lists are read at each call. Any thread.
namespace corvane::terminalEmulator {

struct TerminalCommand {
    /// What stands before the words of a command that a new window shall run.
    std::vector<std::string> prefix;
    /// The emulator itself, symbolic links followed.
    std::string executable;
    /// Its desktop entry, if it has one.
    std::optional<InstalledApplication> entry = {};
};

/// The user's choice (xdg-terminal-exec with the entry that its lists name, x-terminal-emulator),
/// else the first well-known emulator in PATH, else the first installed entry that says that it is
/// one; nothing where there is none. `installed` are the entries to look among.
std::optional<TerminalCommand> preferred(const std::vector<InstalledApplication>& installed);

/// Which emulator a program is, whatever wrapper or server of it was started: "xterm" for
/// "/usr/bin/lxterm", "gnome-terminal" for "/usr/libexec/gnome-terminal-server".
std::string nameOf(std::string_view program);

/// It closes its windows without a question, whatever runs in them.
bool closesUnasked(std::string_view program);

/// $SHELL, else the shell of the user's account, else /bin/sh.
std::string userShell();

/// Words that run a command in that shell as if it was typed there: aliases are known, Ctrl-C ends
/// the command only, an error in it is shown, and an interactive shell stays in the folder into
/// which it changed. The command is one word of its own, never quoted.
std::vector<std::string> shellWords(const std::string& shell, const std::string& command);

/// Runs a command so in a new window of that emulator. Returns when the emulator was started.
Result<void> open(const TerminalCommand& emulator, const std::string& command);

} // namespace corvane::terminalEmulator
