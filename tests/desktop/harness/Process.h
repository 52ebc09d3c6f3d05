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

/// What this process's environment says, if it says anything.
std::string variable(const char* name, const std::string& otherwise);

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

/// A folder and an environment in which programs start.
struct Surroundings {
    std::string root;
    Environment environment = {};
    /// The address of the session bus.
    std::string bus = {};
    /// Which program is Corvane here, and whether GNOME's extension for it is on.
    std::string corvane = {};
    bool isExtensionOn = true;
    /// Two monitors are there at once where a screen can't get one more later.
    int monitors = 1;

    /// Programs that run already don't hear of it.
    void set(const std::string& name, const std::string& value) {
        std::erase_if(environment, [&](const auto& line) { return line.starts_with(name + "="); });
        environment.push_back(name + "=" + value);
    }
    std::string log() const { return root + "/session.log"; }
    std::unique_ptr<Process> start(const std::vector<std::string>& command) const;
    /// One that ends with this process, and writes one line to the file descriptor 3 when it is
    /// ready, which is added to `line`.
    std::unique_ptr<Process> startServer(std::vector<std::string> command, std::string& line) const;
    /// What a program writes to its standard output and errors; it has 60 seconds.
    std::string run(const std::vector<std::string>& command) const;
};

/// Lets this process count as the parent of what its programs leave behind.
void adoptOrphans();
/// Every process that the given one started, directly or not.
std::vector<pid_t> descendants(pid_t of);
/// The file name of the program that the process runs.
std::string programOf(pid_t pid);
/// Kills all that this process started, directly or not, until none is left.
void killDescendants();

} // namespace corvane::desktop
