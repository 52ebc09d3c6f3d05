#pragma once

#include "foundation/Result.h"
#include "linux/installed/TerminalEmulator.h"

#include <optional>
#include <string>
#include <vector>

#include <sys/types.h>

namespace corvane {

/// Starts an installed application with URIs to open and arguments of its own behind them. Its Exec
/// line is run, as only that tells of a failure; an entry without one is asked for on the session
/// bus, which takes no arguments, and counts as started after half a second. What needs a terminal
/// runs in `terminal`; an emulator starts in the folders that it is given. It is handed the token,
/// with which its windows come to the front, where there is one. The error is in words for the
/// user. Otherwise the processes that were started, none over the bus. Any thread.
Result<std::vector<pid_t>>
launchEntry(const InstalledApplication& application, const std::vector<std::string>& uris,
            const std::vector<std::string>& arguments,
            const std::optional<terminalEmulator::TerminalCommand>& terminal,
            const std::string& token = {});

} // namespace corvane
