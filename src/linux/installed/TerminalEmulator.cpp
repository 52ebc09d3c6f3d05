#include "linux/installed/TerminalEmulator.h"

#include "foundation/Url.h"
#include "linux/system/DetachedProcess.h"
#include "linux/system/Gio.h"

#include <cstdlib>
#include <filesystem>

#include <pwd.h>
#include <unistd.h>

namespace corvane::terminalEmulator {
namespace {

struct Emulator {
    std::string_view program;
    /// The option behind which the words of a command follow; empty where none is needed.
    std::string_view option;
};

constexpr std::string_view desktopsChoice = "xdg-terminal-exec";

constexpr Emulator emulators[]{
    {desktopsChoice, ""},
    {"x-terminal-emulator", "-e"},
    {"gnome-terminal", "--"},
    {"ptyxis", "--"},
    {"kgx", "--"},
    {"konsole", "-e"},
    {"xfce4-terminal", "-x"},
    {"mate-terminal", "-x"},
    {"terminator", "-x"},
    {"kitty", ""},
    {"alacritty", "-e"},
    {"foot", ""},
    {"xterm", "-e"},
    {"urxvt", "-e"},
    {"rxvt", "-e"},
    {"st", "-e"},
};

std::string withoutLinks(const std::string& file) {
    std::error_code error;
    const auto target = std::filesystem::canonical(file, error);
    return error ? file : target.string();
}

bool isProgram(const std::string& file) {
    std::error_code error;
    return file.starts_with('/') && !std::filesystem::is_directory(file, error) &&
           ::access(file.c_str(), X_OK) == 0;
}

/// `exit` and `exec` of the command end the shell, as they would when typed. The trap keeps Ctrl-C
/// from ending it together with the command.
constexpr const char* runThenStay =
    R"(trap : INT; command eval "shift; $1"; trap - INT; exec "$0" -i)";
/// There `command` is for programs only, and `eval` never ends the shell.
constexpr const char* runThenStayInZsh =
    R"(trap : INT; eval "shift; $1"; trap - INT; exec "$0" -i)";

} // namespace

std::optional<TerminalCommand> preferred() {
    std::optional<TerminalCommand> choice;
    for (const auto& [program, option] : emulators) {
        const std::string file = gio::take(g_find_program_in_path(std::string(program).c_str()));
        if (file.empty()) continue;
        if (choice) {
            // The desktop's choice names no emulator; most likely it is the next one.
            choice->executable = withoutLinks(file);
            return choice;
        }
        choice = TerminalCommand{{file}, withoutLinks(file)};
        if (!option.empty()) choice->prefix.emplace_back(option);
        if (program != desktopsChoice) return choice;
    }
    return choice;
}

std::string nameOf(std::string_view program) {
    std::string name = path::lastComponent(program);
    for (const std::string_view ending : {".wrapper", "-server"}) {
        if (name.ends_with(ending)) name.resize(name.size() - ending.size());
    }
    for (const std::string_view wrapper : {"lxterm", "uxterm", "koi8rxterm"}) {
        if (name == wrapper) return "xterm";
    }
    return name;
}

std::string userShell() {
    const char* chosen = std::getenv("SHELL");
    if (chosen && isProgram(chosen)) return chosen;
    const passwd* account = ::getpwuid(::getuid());
    if (account && account->pw_shell && isProgram(account->pw_shell)) return account->pw_shell;
    return "/bin/sh";
}

std::vector<std::string> shellWords(const std::string& shell, const std::string& command) {
    const std::string name = path::lastComponent(shell);
    if (name == "fish") return {shell, "--interactive", "--init-command", command};
    if (name == "zsh") return {shell, "-i", "-c", runThenStayInZsh, shell, command};
    for (const std::string_view known : {"bash", "sh", "dash", "ksh", "ksh93", "mksh", "ash"}) {
        if (name == known) return {shell, "-i", "-c", runThenStay, shell, command};
    }
    // A shell with a language of its own can't be handed the words around the command.
    return {"/bin/sh", "-i", "-c", runThenStay, shell, command};
}

std::optional<Error> open(const TerminalCommand& emulator, const std::string& command) {
    auto words = emulator.prefix;
    for (auto& word : shellWords(userShell(), command))
        words.push_back(std::move(word));
    const auto started = startDetached(words);
    return started ? std::nullopt : std::optional(started.error());
}

} // namespace corvane::terminalEmulator
