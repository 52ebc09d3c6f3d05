#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include <sys/types.h>

namespace corvane {

/// What /proc says of a process.
struct ProcessFacts {
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
    /// The process that a launcher started, itself or one that it comes from; 0 where none says so.
    pid_t launchedProcess = 0;
    /// The application's id in its sandbox, or the snap's name; empty outside of one.
    std::string sandboxIdentifier = {};
};

/// Nothing for a process that has ended or is another user's. Any thread.
std::optional<ProcessFacts> processFacts(pid_t processIdentifier);

/// When a process of this user began, as in ProcessFacts; nothing as above.
std::optional<std::uint64_t> startTimeOf(pid_t processIdentifier);

/// Sends a signal to the process of this user that began then, and never to a later one with the
/// same identifier. False where it has ended or the signal can't be sent. Any thread.
bool sendSignal(pid_t processIdentifier, std::uint64_t startTime, int signal);

/// What belongs to a terminal in the foreground of the processes below that one, by name: what a
/// shell waits for, and what was started instead of a shell.
std::vector<std::string> foregroundJobsBelow(pid_t processIdentifier);

/// Processes of this user that come from one that a launcher started, by what it told them.
std::vector<pid_t> processesLaunchedAs(pid_t launchedProcess);

/// In how many process spaces it is, counted from this one downward: 1 for a process beside this
/// one, more for one in a container, 0 for one that can't be seen from here.
std::size_t processSpacesOf(pid_t processIdentifier);

/// The process above it; 0 where there is none that can be seen.
pid_t parentOf(pid_t processIdentifier);

struct StartedProcess {
    pid_t process = 0;
    std::vector<std::string> words;
};
/// The processes of that name of the user whom another one is of, with the words that started them.
std::vector<StartedProcess> processesBeside(pid_t other, const std::string& commandName);

/// The program runs programs of others, whatever version of it ("python3.11", "sh", "env").
bool isInterpreter(std::string_view program);

} // namespace corvane
