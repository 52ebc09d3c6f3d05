#include "linux/scripts/LinuxTaskRunner.h"

#include "linux/running/ApplicationOpener.h"
#include "linux/scripts/MdfindTool.h"
#include "linux/scripts/OpenTool.h"
#include "linux/system/FileDescriptor.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <csignal>
#include <system_error>

#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>

namespace corvane {
namespace {

Error cannotRun(const std::string& program, int errorNumber) {
    return {"Could not run " + program + ": " + std::generic_category().message(errorNumber) + "."};
}

/// posix_spawn's settings for one program whose output goes into `outputEnd`.
class SpawnSettings {
public:
    explicit SpawnSettings(int outputEnd) {
        posix_spawn_file_actions_init(&actions_);
        posix_spawn_file_actions_addopen(&actions_, STDIN_FILENO, "/dev/null", O_RDONLY, 0);
        posix_spawn_file_actions_adddup2(&actions_, outputEnd, STDOUT_FILENO);
        posix_spawn_file_actions_addopen(&actions_, STDERR_FILENO, "/dev/null", O_WRONLY, 0);
        posix_spawn_file_actions_addclosefrom_np(&actions_, STDERR_FILENO + 1);
        posix_spawnattr_init(&attributes_);
        sigset_t set;
        sigemptyset(&set);
        posix_spawnattr_setsigmask(&attributes_, &set);
        sigaddset(&set, SIGPIPE);
        posix_spawnattr_setsigdefault(&attributes_, &set);
        posix_spawnattr_setflags(&attributes_, POSIX_SPAWN_SETSIGMASK | POSIX_SPAWN_SETSIGDEF);
    }
    SpawnSettings(const SpawnSettings&) = delete;
    ~SpawnSettings() {
        posix_spawn_file_actions_destroy(&actions_);
        posix_spawnattr_destroy(&attributes_);
    }

    /// Zero or an errno.
    int spawn(pid_t& process, std::vector<char*>& command) const {
        return ::posix_spawn(&process, command.front(), &actions_, &attributes_, command.data(),
                             environ);
    }

private:
    posix_spawn_file_actions_t actions_;
    posix_spawnattr_t attributes_;
};

std::string readToEnd(int descriptor) {
    std::string content;
    std::array<char, 1 << 14> piece;
    for (;;) {
        const ssize_t got = ::read(descriptor, piece.data(), piece.size());
        if (got < 0 && errno == EINTR) continue;
        if (got <= 0) return content;
        content.append(piece.data(), static_cast<std::size_t>(got));
    }
}

int statusOf(pid_t process) {
    int status = 0;
    while (::waitpid(process, &status, 0) < 0) {
        if (errno != EINTR) return -1;
    }
    return WIFEXITED(status) ? WEXITSTATUS(status) : WTERMSIG(status);
}

Result<TaskResult> runProgram(const std::string& program, std::vector<std::string> arguments) {
    arguments.insert(arguments.begin(), program);
    const auto hasNul = [](const std::string& text) { return text.find('\0') != text.npos; };
    if (program.empty() || std::ranges::any_of(arguments, hasNul)) {
        return cannotRun(program.c_str(), EINVAL);
    }
    std::vector<char*> command;
    for (auto& argument : arguments)
        command.push_back(argument.data());
    command.push_back(nullptr);

    int ends[2];
    if (::pipe2(ends, O_CLOEXEC) != 0) return cannotRun(program, errno);
    const FileDescriptor reading(ends[0]);
    FileDescriptor writing(ends[1]);
    pid_t process = 0;
    if (const int error = SpawnSettings(writing.get()).spawn(process, command)) {
        return cannotRun(program, error);
    }
    writing.close();
    TaskResult result;
    result.output = readToEnd(reading.get());
    result.status = statusOf(process);
    return result;
}

} // namespace

Result<TaskResult> LinuxTaskRunner::run(const std::string& launchPath,
                                        const std::vector<std::string>& arguments) {
    if (launchPath == "/usr/bin/open") return runOpenTool(opener_, arguments);
    if (launchPath == "/usr/bin/mdfind") return runMdfindTool(opener_.installed(), arguments);
    return runProgram(launchPath, arguments);
}

} // namespace corvane
