#include "linux/system/DetachedProcess.h"

#include "linux/system/FileDescriptor.h"
#include "linux/system/Gio.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <csignal>
#include <cstring>
#include <limits>
#include <system_error>

#include <fcntl.h>
#include <linux/close_range.h>
#include <sys/wait.h>

namespace corvane {
namespace {

constexpr std::string_view launchedFile = "GIO_LAUNCHED_DESKTOP_FILE=";
constexpr std::string_view launchedPid = "GIO_LAUNCHED_DESKTOP_FILE_PID=";
/// What whoever started this program told it about itself.
constexpr std::array<std::string_view, 2> tokenVariables{"DESKTOP_STARTUP_ID=",
                                                         "XDG_ACTIVATION_TOKEN="};
constexpr std::array ownVariables{launchedFile, launchedPid, tokenVariables[0], tokenVariables[1]};

/// Everything that the child needs, made before the fork: behind it no memory may be allocated.
struct Prepared {
    std::string program;
    std::vector<std::string> texts;
    std::vector<char*> arguments;
    std::vector<char*> environment;
    /// Room for the digits of the process id, which only the child knows.
    char* pidText = nullptr;
    std::string directory;
    std::string home;
};

/// What the child reports through the pipe: first its id, then an errno if it can't go on.
struct Report {
    pid_t pid = 0;
    int error = 0;
};

void prepare(Prepared& prepared, const std::vector<std::string>& command,
             const DetachedOptions& options) {
    auto& texts = prepared.texts;
    texts = command;
    for (char** entry = environ; *entry; ++entry) {
        const std::string_view text = *entry;
        const bool isOurs = std::ranges::any_of(
            ownVariables, [&](std::string_view variable) { return text.starts_with(variable); });
        if (!isOurs) texts.emplace_back(text);
    }
    for (const auto variable : tokenVariables) {
        if (!options.token.empty()) texts.push_back(std::string(variable) + options.token);
    }
    if (!options.desktopFile.empty()) {
        constexpr int digits = std::numeric_limits<pid_t>::digits10 + 2;
        texts.push_back(std::string(launchedFile) + options.desktopFile);
        texts.push_back(std::string(launchedPid) + std::string(digits, '\0'));
        prepared.pidText = texts.back().data() + launchedPid.size();
    }
    for (std::size_t i = 0; i < texts.size(); ++i) {
        (i < command.size() ? prepared.arguments : prepared.environment).push_back(texts[i].data());
    }
    prepared.arguments.push_back(nullptr);
    prepared.environment.push_back(nullptr);
    prepared.directory = options.workingDirectory;
    prepared.home = gio::text(g_get_home_dir());
}

/// std::to_chars isn't promised to be safe here.
void writeDigits(char* out, pid_t number) {
    std::array<char, 24> reversed{};
    std::size_t count = 0;
    for (; number > 0; number /= 10)
        reversed[count++] = static_cast<char>('0' + number % 10);
    while (count > 0)
        *out++ = reversed[--count];
}

void report(int pipe, Report what) {
    [[maybe_unused]] const auto written = ::write(pipe, &what, sizeof what);
}

/// Between fork and exec: only operations that are safe in a signal handler.
[[noreturn]] void becomeProgram(const Prepared& prepared, int pipe) {
    ::setsid();
    if (prepared.pidText) writeDigits(prepared.pidText, ::getpid());
    report(pipe, {::getpid(), 0});
    if (prepared.directory.empty() || ::chdir(prepared.directory.c_str()) != 0) {
        if (::chdir(prepared.home.c_str()) != 0 && ::chdir("/") != 0) ::_exit(1);
    }
    const int null = ::open("/dev/null", O_RDWR);
    for (int stream = 0; stream <= 2; ++stream)
        ::dup2(null, stream);
    // The pipe goes with them: its end without an errno is the sign of success.
    if (::close_range(3, ~0U, CLOSE_RANGE_CLOEXEC) != 0) {
        constexpr int likelyHighest = 4096;
        for (int descriptor = 3; descriptor < likelyHighest; ++descriptor) {
            ::fcntl(descriptor, F_SETFD, FD_CLOEXEC);
        }
    }
    for (int number = 1; number < NSIG; ++number)
        ::signal(number, SIG_DFL);
    sigset_t none;
    sigemptyset(&none);
    ::sigprocmask(SIG_SETMASK, &none, nullptr);
    ::execve(prepared.program.c_str(), prepared.arguments.data(), prepared.environment.data());
    report(pipe, {::getpid(), errno});
    ::_exit(127);
}

Error cannotStart(const std::string& program, const std::string& reason) {
    return {"Could not start " + program + ": " + reason + "."};
}

Error cannotStart(const std::string& program, int errorNumber) {
    return cannotStart(program, std::generic_category().message(errorNumber));
}

bool hasNul(const std::string& text) {
    return text.find('\0') != std::string::npos;
}

} // namespace

Result<pid_t> startDetached(const std::vector<std::string>& command,
                            const DetachedOptions& options) {
    if (command.empty() || command.front().empty()) return Error{"There is no program to start."};
    const std::string& program = command.front();
    if (std::ranges::any_of(command, hasNul)) return cannotStart(program.c_str(), EINVAL);
    const gio::Chars found(g_find_program_in_path(program.c_str()));
    if (!found) return cannotStart(program, "The program is missing or isn't executable");

    Prepared prepared;
    prepared.program = found.get();
    prepare(prepared, command, options);
    int ends[2];
    if (::pipe2(ends, O_CLOEXEC) != 0) return cannotStart(program, errno);
    FileDescriptor reading(ends[0]);
    FileDescriptor writing(ends[1]);
    // The child in between ends at once, which hands the program over to init.
    const pid_t between = ::fork();
    if (between < 0) return cannotStart(program, errno);
    if (between == 0) {
        const pid_t child = ::fork();
        if (child == 0) becomeProgram(prepared, writing.get());
        if (child < 0) report(writing.get(), {0, errno});
        ::_exit(0);
    }
    writing.close();
    while (::waitpid(between, nullptr, 0) < 0 && errno == EINTR) {
    }
    Report latest;
    for (;;) {
        Report next;
        const ssize_t got = ::read(reading.get(), &next, sizeof next);
        if (got < 0 && errno == EINTR) continue;
        if (got != sizeof next) break;
        latest = next;
    }
    if (latest.error != 0) return cannotStart(program, latest.error);
    if (latest.pid == 0) return cannotStart(program, "The new process ended at once");
    return latest.pid;
}

} // namespace corvane
