#include "desktop/harness/Process.h"

#include <algorithm>
#include <array>
#include <chrono>
#include <csignal>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <map>
#include <sstream>
#include <stdexcept>
#include <thread>

#include <fcntl.h>
#include <poll.h>
#include <spawn.h>
#include <sys/prctl.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

namespace corvane::desktop {

namespace fs = std::filesystem;

bool comesTrue(const std::function<bool()>& condition, double seconds) {
    using Clock = std::chrono::steady_clock;
    const auto deadline = Clock::now() + std::chrono::duration<double>(seconds);
    // Each look costs whoever is looked at its time as well, and most of what takes long takes
    // seconds.
    auto pause = std::chrono::milliseconds(20);
    constexpr std::chrono::milliseconds longest(200);
    while (!condition()) {
        if (Clock::now() > deadline) return false;
        std::this_thread::sleep_for(pause);
        pause = std::min(pause + pause / 2, longest);
    }
    return true;
}

std::string variable(const char* name, const std::string& otherwise) {
    const char* value = std::getenv(name);
    return value && *value ? value : otherwise;
}

namespace {

constexpr int reportDescriptor = 3;

std::vector<char*> pointers(const std::vector<std::string>& texts) {
    std::vector<char*> result;
    for (const auto& text : texts)
        result.push_back(const_cast<char*>(text.c_str()));
    result.push_back(nullptr);
    return result;
}

int statusOf(int waited) {
    return WIFEXITED(waited) ? WEXITSTATUS(waited) : 128 + WTERMSIG(waited);
}

} // namespace

Process::Process(const std::vector<std::string>& command, const Environment& environment,
                 const std::string& log, int report) {
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_addopen(&actions, STDIN_FILENO, "/dev/null", O_RDONLY, 0);
    posix_spawn_file_actions_addopen(&actions, STDOUT_FILENO, log.c_str(),
                                     O_WRONLY | O_CREAT | O_APPEND, 0644);
    posix_spawn_file_actions_adddup2(&actions, STDOUT_FILENO, STDERR_FILENO);
    if (report >= 0) posix_spawn_file_actions_adddup2(&actions, report, reportDescriptor);
    posix_spawnattr_t attributes;
    posix_spawnattr_init(&attributes);
    posix_spawnattr_setflags(&attributes, POSIX_SPAWN_SETSID);
    const int error = posix_spawnp(&pid_, command.front().c_str(), &actions, &attributes,
                                   pointers(command).data(), pointers(environment).data());
    posix_spawnattr_destroy(&attributes);
    posix_spawn_file_actions_destroy(&actions);
    if (error != 0) throw std::runtime_error("can't start " + command.front());
}

Process::~Process() {
    if (!isRunning()) return;
    kill(pid_, SIGKILL);
    waitForEnd();
}

bool Process::isRunning() {
    if (status_) return false;
    int waited = 0;
    if (waitpid(pid_, &waited, WNOHANG) != pid_) return true;
    status_ = statusOf(waited);
    return false;
}

void Process::signal(int number) const {
    if (!status_) kill(pid_, number);
}

std::optional<int> Process::waitForEnd(double seconds) {
    // Looked at again and again, most would be seen long after their end.
    const int end = isRunning() ? int(syscall(SYS_pidfd_open, pid_, 0)) : -1;
    if (end >= 0) {
        pollfd waiting{end, POLLIN, 0};
        poll(&waiting, 1, static_cast<int>(seconds * 1000));
        close(end);
    }
    comesTrue([this] { return !isRunning(); }, end >= 0 ? 0 : seconds);
    return status_;
}

std::unique_ptr<Process> Surroundings::start(const std::vector<std::string>& command) const {
    return std::make_unique<Process>(command, environment, log());
}

std::unique_ptr<Process> Surroundings::startServer(std::vector<std::string> command,
                                                   std::string& line) const {
    // Ends the server even where this process is killed, and with it all that shows windows.
    command.insert(command.begin(), {"setpriv", "--pdeathsig", "TERM", "--"});
    std::array<int, 2> ends{};
    if (pipe2(ends.data(), O_CLOEXEC) != 0) throw std::runtime_error("no pipe");
    auto process = std::make_unique<Process>(command, environment, log(), ends[1]);
    close(ends[1]);
    char next = 0;
    while (read(ends[0], &next, 1) == 1 && next != '\n')
        line += next;
    close(ends[0]);
    if (next != '\n') throw std::runtime_error("a server doesn't come up; see " + log());
    return process;
}

std::string Surroundings::run(const std::vector<std::string>& command) const {
    std::string file = fs::temp_directory_path() / "corvane-output-XXXXXX";
    close(mkstemp(file.data()));
    if (!Process(command, environment, file).waitForEnd(60))
        std::ofstream(log(), std::ios::app) << command.front() << " hasn't ended in a minute\n";
    std::ostringstream content;
    content << std::ifstream(file).rdbuf();
    fs::remove(file);
    return content.str();
}

void adoptOrphans() {
    prctl(PR_SET_CHILD_SUBREAPER, 1);
}

std::vector<pid_t> descendants(pid_t of) {
    std::multimap<pid_t, pid_t> children;
    for (const auto& entry : fs::directory_iterator("/proc")) {
        const auto name = entry.path().filename().string();
        if (name.find_first_not_of("0123456789") != std::string::npos) continue;
        std::string stat;
        std::getline(std::ifstream(entry.path() / "stat"), stat);
        const auto nameEnd = stat.rfind(')');
        if (nameEnd == std::string::npos) continue;
        char state = 0;
        pid_t parent = 0;
        std::istringstream(stat.substr(nameEnd + 1)) >> state >> parent;
        if (state != 'Z') children.emplace(parent, std::stoi(name));
    }
    std::vector<pid_t> found{of};
    for (std::size_t i = 0; i < found.size(); ++i) {
        const auto [first, last] = children.equal_range(found[i]);
        for (auto child = first; child != last; ++child)
            found.push_back(child->second);
    }
    found.erase(found.begin());
    return found;
}

std::string programOf(pid_t pid) {
    std::error_code unreadable;
    return fs::read_symlink("/proc/" + std::to_string(pid) + "/exe", unreadable).filename();
}

void killDescendants() {
    comesTrue([] {
        const auto left = descendants(getpid());
        for (const pid_t pid : left)
            kill(pid, SIGKILL);
        return left.empty();
    });
}

} // namespace corvane::desktop
