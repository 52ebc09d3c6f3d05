#include "linux/installed/TerminalEmulator.h"

#include "foundation/Text.h"
#include "foundation/Url.h"
#include "linux/system/DetachedProcess.h"
#include "linux/system/Gio.h"
#include "linux/system/UserFolders.h"

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>

#include <pwd.h>
#include <unistd.h>

namespace corvane::terminalEmulator {
namespace {

struct Emulator {
    std::string_view program;
    /// The options behind which the words of a command follow; empty where none is needed.
    std::string_view options;
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
    {"qterminal", "-e"},
    {"lxterminal", "-e"},
    {"tilix", "-e"},
    {"wezterm", "start --"},
    {"ghostty", "-e"},
    {"terminology", "-e"},
};

using Entries = std::vector<InstalledApplication>;

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

std::string programOf(const InstalledApplication& entry) {
    const std::string file = gio::take(g_find_program_in_path(entry.executable.c_str()));
    return file.empty() ? entry.executable : file;
}

std::vector<std::string> prefixOf(const std::string& program, std::string_view options) {
    auto words = text::words(options);
    words.insert(words.begin(), program);
    return words;
}

std::string optionsOf(const InstalledApplication& entry) {
    if (!entry.terminalOption.empty()) return entry.terminalOption;
    const auto* known = std::ranges::find(emulators, nameOf(entry.executable), &Emulator::program);
    return known == std::end(emulators) ? "-e" : std::string(known->options);
}

const InstalledApplication* firstEmulator(const Entries& installed) {
    for (const bool shown : {true, false}) {
        for (const auto& entry : installed) {
            // The program may have gone, or PATH have changed, since the entry was read.
            const bool isThere =
                entry.isTerminalEmulator && entry.isShown == shown && isProgram(programOf(entry));
            if (isThere) return &entry;
        }
    }
    return nullptr;
}

std::optional<InstalledApplication> entryOf(const std::string& program, const Entries& installed) {
    const auto search = [&](auto&& nameOfEntry, const std::string& name) {
        const auto found = std::ranges::find_if(installed, [&](const InstalledApplication& entry) {
            return entry.isTerminalEmulator && nameOfEntry(entry.executable) == name;
        });
        return found == installed.end() ? nullptr : &*found;
    };
    const auto fileName = [](const std::string& file) { return path::lastComponent(file); };
    // "uxterm" is an xterm too, but xterm's own entry comes before it.
    const auto* entry = search(fileName, path::lastComponent(program));
    if (!entry) entry = search(fileName, nameOf(program));
    if (!entry) entry = search(nameOf, nameOf(program));
    return entry ? std::optional(*entry) : std::nullopt;
}

/// The lists of xdg-terminal-exec, the most important first: those of the running desktop come
/// before a folder's common one.
std::vector<std::string> desktopsLists() {
    std::vector<std::string> folders{userFolders::config()};
    for (const char* const* folder = g_get_system_config_dirs(); *folder; ++folder)
        folders.push_back(*folder);
    for (const char* const* folder = g_get_system_data_dirs(); *folder; ++folder)
        folders.push_back(std::string(*folder) + "/xdg-terminal-exec");
    const auto desktops =
        text::split(text::lowercased(gio::text(g_getenv("XDG_CURRENT_DESKTOP"))), ':');
    std::vector<std::string> lists;
    for (const auto& folder : folders) {
        for (const auto& desktop : desktops) {
            if (!desktop.empty()) lists.push_back(folder + "/" + desktop + "-xdg-terminals.list");
        }
        lists.push_back(folder + "/xdg-terminals.list");
    }
    return lists;
}

/// xdg-terminal-exec runs the first of its lists that is installed, else any emulator.
TerminalCommand chosenByDesktop(const std::string& file, const Entries& installed) {
    TerminalCommand command{{file}, file};
    const auto take = [&](const InstalledApplication& entry) {
        command.entry = entry;
        command.executable = withoutLinks(programOf(entry));
        return command;
    };
    for (const auto& list : desktopsLists()) {
        std::ifstream lines(list);
        for (std::string line; std::getline(lines, line);) {
            const auto id = text::split(text::trimmed(line), ':').front();
            const auto entry = std::ranges::find(installed, id, &InstalledApplication::desktopId);
            if (entry != installed.end()) return take(*entry);
        }
    }
    const auto* any = firstEmulator(installed);
    return any ? take(*any) : command;
}

/// `exit` and `exec` of the command end the shell, as they would when typed. The trap keeps Ctrl-C
/// from ending it together with the command.
constexpr const char* runThenStay =
    R"(trap : INT; command eval "shift; $1"; trap - INT; exec "$0" -i)";
/// There `command` is for programs only, and `eval` never ends the shell.
constexpr const char* runThenStayInZsh =
    R"(trap : INT; eval "shift; $1"; trap - INT; exec "$0" -i)";

} // namespace

std::optional<TerminalCommand> preferred(const Entries& installed) {
    for (const auto& [program, options] : emulators) {
        const std::string file = gio::take(g_find_program_in_path(std::string(program).c_str()));
        if (file.empty()) continue;
        if (program == desktopsChoice) return chosenByDesktop(file, installed);
        return TerminalCommand{prefixOf(file, options), withoutLinks(file),
                               entryOf(withoutLinks(file), installed)};
    }
    const auto* entry = firstEmulator(installed);
    if (!entry) return std::nullopt;
    return TerminalCommand{prefixOf(entry->executable, optionsOf(*entry)),
                           withoutLinks(programOf(*entry)), *entry};
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

bool closesUnasked(std::string_view program) {
    const auto name = nameOf(program);
    constexpr std::string_view silent[]{"xterm", "urxvt", "rxvt", "st", "alacritty", "foot"};
    return std::ranges::count(silent, name) > 0;
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

Result<void> open(const TerminalCommand& emulator, const std::string& command) {
    auto words = emulator.prefix;
    for (auto& word : shellWords(userShell(), command))
        words.push_back(std::move(word));
    const auto started = startDetached(words);
    return started ? Result<void>() : started.error();
}

} // namespace corvane::terminalEmulator
