#pragma once

#include "machine/Machine.h"

#include <csignal>

#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

namespace corvane::machine {

/// A program that lives as long as this.
struct Program {
    explicit Program(std::vector<std::string> words) {
        std::vector<char*> arguments;
        for (auto& word : words)
            arguments.push_back(word.data());
        arguments.push_back(nullptr);
        EXPECT_EQ(
            posix_spawnp(&process_, arguments[0], nullptr, nullptr, arguments.data(), environ), 0);
    }
    ~Program() {
        if (!isRunning()) return;
        kill(process_, SIGKILL);
        waitpid(process_, nullptr, 0);
    }
    Program(const Program&) = delete;
    pid_t id() const { return process_; }
    bool isRunning() {
        hasEnded_ = hasEnded_ || waitpid(process_, nullptr, WNOHANG) != 0;
        return !hasEnded_;
    }
    bool ends() {
        return comesTrue([this] { return !isRunning(); });
    }

private:
    pid_t process_ = 0;
    bool hasEnded_ = false;
};

/// A command that a person could give, found along PATH.
inline bool runs(const std::string& command) {
    return std::system((command + " >/dev/null 2>&1").c_str()) == 0;
}

} // namespace corvane::machine
