#include "linux/system/ProcessFacts.h"

#include "foundation/Diagnostics.h"
#include "foundation/Text.h"
#include "foundation/Url.h"
#include "linux/system/FileDescriptor.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <charconv>
#include <filesystem>
#include <vector>

#include <fcntl.h>
#include <poll.h>
#include <sys/stat.h>
#include <unistd.h>
// The header of glibc 2.36 doesn't say that its functions are C.
extern "C" {
#include <sys/pidfd.h>
}

namespace corvane {
namespace {

constexpr std::size_t longestText = 64 << 10;
/// The kernel's own bound for what a program is started with is larger than any that is met.
constexpr std::size_t longestStart = 2 << 20;

/// Its beginning. Another process may have put anything in the file's place: what isn't a regular
/// file is empty, and nothing is waited for.
std::string contentOf(const std::string& file, std::size_t longest = longestText) {
    const FileDescriptor opened(::open(file.c_str(), O_RDONLY | O_NONBLOCK | O_NOCTTY | O_CLOEXEC));
    struct stat info{};
    if (!opened || ::fstat(opened.get(), &info) != 0 || !S_ISREG(info.st_mode)) return {};
    std::string content;
    std::array<char, 1 << 14> piece;
    while (content.size() < longest) {
        const auto wanted = std::min(piece.size(), longest - content.size());
        const ssize_t got = ::read(opened.get(), piece.data(), wanted);
        if (got < 0 && errno == EINTR) continue;
        if (got <= 0) break;
        content.append(piece.data(), static_cast<std::size_t>(got));
    }
    if (content.size() >= longest)
        diagnostic({"Read ", file, " no further than ", std::to_string(longest), " bytes"});
    return content;
}

std::string linkTarget(const std::string& link) {
    std::error_code error;
    return std::filesystem::read_symlink(link, error);
}

std::string folderOf(pid_t process) {
    return "/proc/" + std::to_string(process);
}

/// The words behind a key of the process's status, which everyone may read.
std::vector<std::string> statusWords(const std::string& folder, const std::string& key) {
    for (const auto& line : text::split(contentOf(folder + "/status"), '\n')) {
        if (line.starts_with(key)) return text::words(line.substr(key.size()));
    }
    return {};
}

/// The folder of a program that keeps others from looking into it, as password managers do, is the
/// superuser's; who runs it is told all the same.
bool belongsToThisUser(const std::string& folder) {
    struct stat info{};
    if (::stat(folder.c_str(), &info) != 0) return false;
    if (info.st_uid == ::geteuid()) return true;
    const auto users = statusWords(folder, "Uid:");
    return users.size() > 1 && users[1] == std::to_string(::geteuid());
}

/// The fields of a process's line behind its name.
std::vector<std::string> statFields(const std::string& folder) {
    const auto stat = contentOf(folder + "/stat");
    // The program's name stands in brackets and may hold blanks and brackets itself.
    const auto bracket = stat.rfind(')');
    return bracket == std::string::npos ? std::vector<std::string>()
                                        : text::words(stat.substr(bracket + 1));
}

template <typename Number>
std::optional<Number> number(std::string_view digits) {
    Number value = 0;
    const auto read = std::from_chars(digits.data(), digits.data() + digits.size(), value);
    return read.ec == std::errc() ? std::optional(value) : std::nullopt;
}

std::optional<std::uint64_t> startTimeIn(const std::vector<std::string>& fields) {
    constexpr std::size_t startTime = 19;
    return fields.size() > startTime ? number<std::uint64_t>(fields[startTime]) : std::nullopt;
}

/// Where a process stands among those of a terminal.
struct JobPlace {
    pid_t process = 0, parent = 0, group = 0, foregroundGroup = 0;
    int terminal = 0;
};

std::optional<JobPlace> jobPlaceOf(pid_t process) {
    const auto fields = statFields(folderOf(process));
    constexpr std::size_t parent = 1, group = 2, terminal = 4, foreground = 5;
    if (fields.size() <= foreground) return std::nullopt;
    return JobPlace{process, number<pid_t>(fields[parent]).value_or(0),
                    number<pid_t>(fields[group]).value_or(0),
                    number<pid_t>(fields[foreground]).value_or(0),
                    number<int>(fields[terminal]).value_or(0)};
}

std::vector<pid_t> allProcesses() {
    std::vector<pid_t> processes;
    std::error_code error;
    for (std::filesystem::directory_iterator entry("/proc", error), end; !error && entry != end;
         entry.increment(error)) {
        if (const auto process = number<pid_t>(entry->path().filename().string()))
            processes.push_back(*process);
    }
    return processes;
}

std::string programOf(const std::string& folder) {
    std::string program = linkTarget(folder + "/exe");
    // An update replaced the file under the running program.
    constexpr std::string_view deleted = " (deleted)";
    if (program.ends_with(deleted)) program.resize(program.size() - deleted.size());
    return program;
}

/// The first argument that is a file; relative ones are meant from the process's folder.
std::string scriptOf(const std::string& folder, const std::vector<std::string>& arguments) {
    for (std::size_t i = 1; i < arguments.size(); ++i) {
        if (arguments[i].empty() || arguments[i].starts_with('-')) continue;
        const std::string file = arguments[i].starts_with('/')
                                     ? arguments[i]
                                     : path::join(linkTarget(folder + "/cwd"), arguments[i]);
        std::error_code error;
        if (std::filesystem::is_regular_file(file, error)) return file;
    }
    return {};
}

/// The value behind "NAME="; empty where there is none.
std::string valueIn(const std::vector<std::string>& environment, const std::string& key) {
    for (const auto& variable : environment) {
        if (variable.starts_with(key)) return variable.substr(key.size());
    }
    return {};
}

constexpr const char* launchedFileKey = "GIO_LAUNCHED_DESKTOP_FILE=";
constexpr const char* launchedProcessKey = "GIO_LAUNCHED_DESKTOP_FILE_PID=";

std::string sandboxIn(const std::string& folder, const std::vector<std::string>& environment) {
    constexpr std::string_view nameKey = "name=";
    for (const auto& line : text::split(contentOf(folder + "/root/.flatpak-info"), '\n')) {
        if (line.starts_with(nameKey)) return line.substr(nameKey.size());
    }
    // Whatever a snap starts inherits its variables, so only what lies in the snap is of it. Which
    // of its entries it is, their launcher names.
    const auto snap = valueIn(environment, "SNAP_NAME=");
    const auto root = valueIn(environment, "SNAP=");
    if (snap.empty() || root.empty() || !programOf(folder).starts_with(root + "/")) return {};
    const auto entry = path::stem(valueIn(environment, "BAMF_DESKTOP_FILE_HINT="));
    return entry.starts_with(snap + "_") ? entry : snap;
}

bool isShell(std::string_view name) {
    constexpr std::array<std::string_view, 10> shells{"sh",  "bash", "dash", "zsh",   "fish",
                                                      "ksh", "mksh", "tcsh", "ksh93", "ash"};
    return std::ranges::count(shells, name) > 0;
}

} // namespace

bool isInterpreter(std::string_view program) {
    constexpr std::array<std::string_view, 17> interpreters{
        "env",  "sh",   "bash", "dash", "zsh",     "ksh",  "fish", "python", "perl",
        "ruby", "java", "mono", "node", "flatpak", "snap", "gjs",  "wish"};
    const auto version = program.find_first_of("0123456789");
    if (version != std::string_view::npos && version > 0) program = program.substr(0, version);
    return std::ranges::count(interpreters, program) > 0;
}

std::optional<std::uint64_t> startTimeOf(pid_t processIdentifier) {
    const std::string folder = folderOf(processIdentifier);
    if (processIdentifier <= 0 || !belongsToThisUser(folder)) return std::nullopt;
    return startTimeIn(statFields(folder));
}

std::vector<std::string> foregroundJobsBelow(pid_t processIdentifier) {
    std::vector<JobPlace> places;
    for (const auto process : allProcesses()) {
        if (const auto place = jobPlaceOf(process); place && place->terminal != 0)
            places.push_back(*place);
    }
    std::vector<std::string> names;
    for (const auto& leader : places) {
        if (leader.parent != processIdentifier) continue;
        for (const auto& place : places) {
            if (place.terminal != leader.terminal || place.group != leader.foregroundGroup)
                continue;
            const auto name = text::trimmed(contentOf(folderOf(place.process) + "/comm"));
            // A shell in front of its own terminal waits for the next command.
            const bool isIdle = leader.foregroundGroup == leader.group && isShell(name);
            if (!isIdle && !name.empty()) names.push_back(text::replacingInvalidUtf8(name));
        }
    }
    return names;
}

std::vector<pid_t> processesLaunchedAs(pid_t launchedProcess) {
    const auto variable = launchedProcessKey + std::to_string(launchedProcess);
    std::vector<pid_t> found;
    for (const auto process : allProcesses()) {
        const auto folder = folderOf(process);
        if (!belongsToThisUser(folder)) continue;
        const auto environment = text::split(contentOf(folder + "/environ", longestStart), '\0');
        if (std::ranges::count(environment, variable) > 0) found.push_back(process);
    }
    return found;
}

std::size_t processSpacesOf(pid_t processIdentifier) {
    return processIdentifier > 0 ? statusWords(folderOf(processIdentifier), "NSpid:").size() : 0;
}

pid_t parentOf(pid_t processIdentifier) {
    if (processIdentifier <= 0) return 0;
    const auto words = statusWords(folderOf(processIdentifier), "PPid:");
    pid_t parent = 0;
    if (!words.empty()) std::from_chars(words[0].data(), words[0].data() + words[0].size(), parent);
    return parent;
}

std::vector<StartedProcess> processesBeside(pid_t other, const std::string& commandName) {
    const auto user = statusWords(folderOf(other), "Uid:");
    std::vector<StartedProcess> found;
    for (const auto process : allProcesses()) {
        const auto folder = folderOf(process);
        if (contentOf(folder + "/comm") != commandName + '\n') continue;
        if (statusWords(folder, "Uid:") != user) continue;
        // One that has ended has none.
        const auto words = contentOf(folder + "/cmdline", longestStart);
        if (!words.empty()) found.push_back({process, text::split(words, '\0')});
    }
    return found;
}

bool sendSignal(pid_t processIdentifier, std::uint64_t startTime, int signal) {
    // What the descriptor names stays the same process from here on; the check comes after.
    const FileDescriptor process(::pidfd_open(processIdentifier, 0));
    if (!process || startTimeOf(processIdentifier) != startTime) return false;
    pollfd ended{process.get(), POLLIN, 0};
    if (::poll(&ended, 1, 0) != 0) return false;
    return ::pidfd_send_signal(process.get(), signal, nullptr, 0) == 0;
}

std::optional<ProcessFacts> processFacts(pid_t processIdentifier) {
    const auto startTime = startTimeOf(processIdentifier);
    if (!startTime) return std::nullopt;

    const std::string folder = folderOf(processIdentifier);
    ProcessFacts process{.processIdentifier = processIdentifier, .startTime = *startTime};
    const auto arguments = text::split(contentOf(folder + "/cmdline", longestStart), '\0');
    const auto environment = text::split(contentOf(folder + "/environ", longestStart), '\0');
    process.executable = programOf(folder);
    process.commandName = path::lastComponent(arguments.front());
    if (isInterpreter(path::lastComponent(process.executable))) {
        const std::string script = scriptOf(folder, arguments);
        if (!script.empty()) {
            process.executable = script;
            process.commandName = path::lastComponent(script);
        }
    }
    const auto launched = valueIn(environment, launchedProcessKey);
    process.launchedProcess = number<pid_t>(launched).value_or(0);
    if (process.launchedProcess == processIdentifier)
        process.launchedDesktopFile = valueIn(environment, launchedFileKey);
    process.sandboxIdentifier = sandboxIn(folder, environment);
    // It may have ended meanwhile, and what was read be another's.
    if (startTimeOf(processIdentifier) != startTime) return std::nullopt;
    return process;
}

} // namespace corvane
