#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include <sys/types.h>

namespace corvane {

/// What /proc says of a process.
struct RunningProcess {
    pid_t processIdentifier = 0;
    /// In clock ticks since the machine started.
    std::uint64_t startTime = 0;
    /// Path of the program; of the script where an interpreter runs one. Empty where it may not be
    /// read.
    std::string executable = {};
    /// File name of the command as it was called; not a script's interpreter.
    std::string commandName = {};
    /// The desktop entry's file that it was started for, itself and not a process above it.
    std::string launchedDesktopFile = {};
    /// The application's id in its sandbox; empty outside of one.
    std::string sandboxIdentifier = {};
};

/// Nothing for a process that has ended or is another user's. Any thread.
std::optional<RunningProcess> runningProcess(pid_t processIdentifier);

/// The program runs programs of others, whatever version of it ("python3.11", "sh", "env").
bool isInterpreter(std::string_view program);

} // namespace corvane
