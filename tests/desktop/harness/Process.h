#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include <sys/types.h>

/// Programs that a test starts, and the look at what runs below it.
namespace corvane::desktop {

/// Asks again and again until it is true; false when `seconds` have passed.
bool comesTrue(const std::function<bool()>& condition, double seconds = 10);

/// "NAME=value" lines.
using Environment = std::vector<std::string>;

/// A program in a session of its own, found along PATH. It is killed when this goes away.
class Process {
public:
    /// Output and errors are added to the end of `log`. With a `report`, that becomes the program's
    /// file descriptor 3. Throws std::runtime_error where it can't be started.
    Process(const std::vector<std::string>& command, const Environment& environment,
            const std::string& log, int report = -1);
    ~Process();
    Process(const Process&) = delete;
    Process& operator=(const Process&) = delete;

    pid_t pid() const { return pid_; }
    bool isRunning();
    void signal(int number) const;
    /// The exit status, or 128 and the signal that ended it; nothing while it still runs.
    std::optional<int> waitForEnd(double seconds = 20);

private:
    pid_t pid_ = -1;
    std::optional<int> status_;
};

/// Starts a program that writes one line to the file descriptor 3 when it is ready, and adds that
/// line to `line`.
std::unique_ptr<Process> startReporting(const std::vector<std::string>& command,
                                        const Environment& environment, const std::string& log,
                                        std::string& line);

/// What a program wrote to its standard output; it has 60 seconds.
std::string outputOf(const std::vector<std::string>& command, const Environment& environment);

/// Lets this process count as the parent of what its programs leave behind.
void adoptOrphans();
/// Every process that the given one started, directly or not.
std::vector<pid_t> descendants(pid_t of);
/// The file name of the program that the process runs.
std::string programOf(pid_t pid);
/// Kills all that this process started, directly or not, until none is left.
void killDescendants();

} // namespace corvane::desktop
