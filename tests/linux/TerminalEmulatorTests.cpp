#include "linux/installed/TerminalEmulator.h"
#include "linux/system/Gio.h"
#include "machine/Program.h"

#include <fstream>
#include <optional>

#include <pwd.h>
#include <sys/stat.h>
#include <unistd.h>

using namespace corvane;
using namespace corvane::machine;

namespace {

std::string preferredIn(const std::vector<std::string>& emulators,
                        const std::vector<InstalledApplication>& installed = {}) {
    fs::remove_all(place("path"));
    for (const auto& emulator : emulators)
        makeProgram("path/" + emulator, "");
    const ScopedVariable path("PATH", place("path"));
    const auto command = terminalEmulator::preferred(installed);
    if (!command) return "none";
    auto words = command->prefix;
    words.front() = fs::path(words.front()).filename();
    return text::joined(words, " ") + ", is " + fs::path(command->executable).filename().string() +
           (command->entry ? " of " + command->entry->desktopId : "");
}

InstalledApplication entry(const std::string& id, const std::string& program,
                           const std::string& option = {}) {
    InstalledApplication application;
    application.desktopId = id;
    application.executable = program;
    application.isShown = application.isTerminalEmulator = true;
    application.terminalOption = option;
    return application;
}

TEST(TerminalEmulatorTest, prefersTheUsersChoice) {
    std::vector<std::string> present{
        "alacritty",      "foot",    "ghostty",    "gnome-terminal",      "kgx",
        "kitty",          "konsole", "lxterminal", "mate-terminal",       "ptyxis",
        "qterminal",      "rxvt",    "st",         "terminator",          "terminology",
        "tilix",          "urxvt",   "wezterm",    "x-terminal-emulator", "xdg-terminal-exec",
        "xfce4-terminal", "xterm"};
    std::string preferred;
    for (auto left = present.size(); left > 0; --left) {
        const auto told = preferredIn(present);
        preferred += told.substr(0, told.find(',')) + "; ";
        std::erase(present, told.substr(0, told.find_first_of(" ,")));
    }
    EXPECT_EQ(preferred + preferredIn({}),
              "xdg-terminal-exec; x-terminal-emulator -e; gnome-terminal --; ptyxis --; kgx --; "
              "konsole -e; xfce4-terminal -x; mate-terminal -x; terminator -x; kitty; "
              "alacritty -e; foot; xterm -e; urxvt -e; rxvt -e; st -e; qterminal -e; "
              "lxterminal -e; tilix -e; wezterm start --; ghostty -e; terminology -e; none");
}

TEST(TerminalEmulatorTest, knowsTheEntryOfTheEmulator) {
    const std::vector<InstalledApplication> installed{
        entry("a.desktop", "newterm"), entry("b.desktop", "uxterm"), entry("c.desktop", "xterm"),
        entry("d.desktop", "foot"), entry("e.desktop", "other", "--run")};
    const auto list = place("config/xdg-terminals.list");
    EXPECT_EQ(preferredIn({"lxterm", "xterm"}, installed), "xterm -e, is xterm of c.desktop");
    EXPECT_EQ(preferredIn({"xdg-terminal-exec", "newterm"}, installed),
              "xdg-terminal-exec, is newterm of a.desktop");
    write(list, "# mine\nmissing.desktop\nd.desktop:new-window\na.desktop\n");
    EXPECT_EQ(preferredIn({"xdg-terminal-exec", "foot"}, installed),
              "xdg-terminal-exec, is foot of d.desktop");
    write(place("config/mine-xdg-terminals.list"), "e.desktop\n");
    for (const auto& [desktop, emulator] :
         {std::pair{"Other:Mine", "other of e"}, {"", "foot of d"}}) {
        const ScopedVariable current("XDG_CURRENT_DESKTOP", desktop);
        EXPECT_EQ(preferredIn({"xdg-terminal-exec", "foot", "other"}, installed),
                  "xdg-terminal-exec, is " + std::string(emulator) + ".desktop");
    }
    fs::remove(list);
    fs::remove(place("config/mine-xdg-terminals.list"));
    EXPECT_EQ(preferredIn({"newterm"}, installed), "newterm -e, is newterm of a.desktop");
    const auto ofTheMachine = std::string(*g_get_system_config_dirs()) + "/xdg-terminals.list";
    write(ofTheMachine, "d.desktop\n");
    EXPECT_EQ(preferredIn({"xdg-terminal-exec", "newterm", "foot"}, installed),
              "xdg-terminal-exec, is foot of d.desktop");
    fs::remove(ofTheMachine);
    const auto elsewhere = makeProgram("opt/gnome-terminal", "");
    EXPECT_EQ(preferredIn({}, {entry("f.desktop", elsewhere)}),
              "gnome-terminal --, is gnome-terminal of f.desktop");
    auto hidden = installed[4];
    hidden.isShown = false;
    EXPECT_EQ(preferredIn({"other"}, {hidden}), "other --run, is other of e.desktop");
    EXPECT_EQ(preferredIn({"other", "newterm"}, {hidden, installed[0]}),
              "newterm -e, is newterm of a.desktop");
}

TEST(TerminalEmulatorTest, followsTheAlternativesLinks) {
    fs::remove_all(place("path"));
    makeProgram("path/lxterm", "");
    fs::create_symlink("lxterm", place("path/alternative"));
    fs::create_symlink("alternative", place("path/x-terminal-emulator"));
    const ScopedVariable path("PATH", place("path"));
    const auto command =
        terminalEmulator::preferred({entry("a.desktop", "xterm"), entry("b.desktop", "lxterm")});
    ASSERT_TRUE(command);
    EXPECT_EQ(command->entry->executable, "lxterm") << "its own comes before that of what it wraps";
    EXPECT_EQ(command->prefix, (std::vector<std::string>{place("path/x-terminal-emulator"), "-e"}));
    EXPECT_EQ(command->executable, fs::canonical(place("path/lxterm")));
    EXPECT_EQ(terminalEmulator::nameOf(command->executable), "xterm");
    EXPECT_EQ(terminalEmulator::nameOf("/usr/bin/gnome-terminal.wrapper"), "gnome-terminal");
    EXPECT_EQ(terminalEmulator::nameOf("/usr/libexec/gnome-terminal-server"), "gnome-terminal");
    for (const auto* program : {"xterm", "uxterm", "urxvt", "rxvt", "st", "alacritty", "/x/foot"})
        EXPECT_TRUE(terminalEmulator::closesUnasked(program)) << program;
    EXPECT_FALSE(terminalEmulator::closesUnasked("/usr/bin/konsole"));
}

TEST(TerminalEmulatorTest, theShellIsTheUsers) {
    const ScopedVariable dash("SHELL", "/bin/dash");
    EXPECT_EQ(terminalEmulator::userShell(), "/bin/dash");
    const ScopedVariable missing("SHELL", place("no-shell"));
    EXPECT_EQ(terminalEmulator::userShell(), getpwuid(getuid())->pw_shell);
}

TEST(TerminalEmulatorTest, aShellIsHandedItsCommandInItsOwnWay) {
    const auto words = [](const std::string& shell) {
        auto all = terminalEmulator::shellWords(shell, "make");
        // The script is what the tests of the shells themselves are about.
        if (all.size() > 4) all.erase(all.begin() + 3);
        return text::joined(all, " ");
    };
    for (const auto* name : {"bash", "sh", "dash", "ksh", "ksh93", "mksh", "ash", "zsh"}) {
        const std::string shell = "/opt/" + std::string(name);
        EXPECT_EQ(words(shell), shell + " -i -c " + shell + " make");
    }
    EXPECT_EQ(words("/bin/fish"), "/bin/fish --interactive --init-command make");
    EXPECT_EQ(words("/bin/nu"), "/bin/sh -i -c /bin/nu make");
}

/// As in an emulator, which writes down what it shows.
struct ShellOnTerminal {
    ShellOnTerminal(const std::string& shell, const std::string& command) {
        for (const auto& file : {typed_, shown_})
            fs::remove(file);
        EXPECT_EQ(mkfifo(typed_.c_str(), 0600), 0);
        std::string line;
        for (const auto& word : terminalEmulator::shellWords(shell, command))
            line += gio::take(g_shell_quote(word.c_str())) + " ";
        const auto start = "TERM=dumb exec script -qfc \"$0\" " + shown_ + " <" + typed_;
        emulator_.emplace(std::vector<std::string>{"sh", "-c", start + " >/dev/null", line});
        keys_.open(typed_);
    }
    void type(const std::string& keys) { keys_ << keys << std::flush; }
    void shows(const std::string& text) {
        EXPECT_TRUE(comesTrue([&] { return read(shown_).find(text) != std::string::npos; }))
            << read(shown_);
    }

private:
    const std::string typed_ = place("terminal/typed"), shown_ = place("terminal/shown");
    std::optional<Program> emulator_;
    std::ofstream keys_;
};

/// A program, and how it complains of a quote that is open.
using Shell = std::pair<const char*, const char*>;

struct ShellTest : testing::TestWithParam<Shell> {
    void SetUp() override {
        if (access(program_, X_OK) != 0) GTEST_SKIP() << program_ << " is not installed";
        write(place("home/.zshrc"), "\n");
    }

    const char* program_ = GetParam().first;
};

/// The words of the commands don't hold what they show themselves.
TEST_P(ShellTest, outlivesItsCommandWhereItWentHoweverItEnds) {
    const std::tuple<const char*, const char*, const char*, const char*> cases[]{
        {"cd /usr && echo do''ne", "done", "", "alive-/usr"},
        {"echo 'abc", GetParam().second, "", "alive-"},
        {"sh -c 'echo started; exec sleep 1000'", "started", "\x03", "alive-"}};
    for (const auto& [command, shown, keys, then] : cases) {
        ShellOnTerminal shell(program_, command);
        shell.shows(shown);
        shell.type(keys);
        shell.type("echo al''ive-\"$PWD\"\n");
        shell.shows(then);
    }
}

INSTANTIATE_TEST_SUITE_P(Shells, ShellTest,
                         testing::Values(Shell{"/bin/bash", "looking for matching"},
                                         Shell{"/bin/dash", "Unterminated quoted"},
                                         Shell{"/bin/zsh", "unmatched"},
                                         Shell{"/usr/bin/fish", "quotes are not balanced"}),
                         [](const auto& shell) {
                             return fs::path(shell.param.first).filename().string();
                         });

} // namespace
