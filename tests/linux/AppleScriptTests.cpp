#include "layouts/FullscreenScript.h"
#include "linux/running/ApplicationOpener.h"
#include "linux/running/LaunchedApplications.h"
#include "linux/running/RunningApplications.h"
#include "linux/screen/LinuxAccessibility.h"
#include "linux/scripts/AppleScript.h"
#include "linux/scripts/LinuxScriptEngine.h"
#include "machine/Machine.h"
#include "windows/MemoryWindowSystem.h"

#include <unistd.h>

using namespace corvane;
using namespace corvane::machine;
using namespace corvane::applescript;

namespace {

std::string terminalScript(const std::string& command) {
    return "tell application \"Terminal\"\n    activate\n    do script \"" + command +
           "\"\nend tell";
}

std::string browserScript(const std::string& name, const std::string& url) {
    return "tell application \"" + name +
           "\"\n    activate\n    try\n        tell window 1 to set current tab to make new tab "
           "with properties {URL:\"" +
           url + "\"}\n    on error\n        open location \"" + url + "\"\n    end try\nend tell";
}

TEST(AppleScriptTest, saysWhatIsWrong) {
    std::string tooDeep;
    for (int i = 0; i < 100000; ++i)
        tooDeep += "tell window 1 to ";
    const std::pair<std::string, std::string> cases[]{
        {terminalScript("echo \"hi\""), "Expected end of line but found identifier."},
        {terminalScript("\" 1"), "Expected end of line but found number."},
        {terminalScript("echo \""), "Expected \"\"\" but found end of script."},
        {terminalScript("a\" & \"b"), "Expected end of line but found \"&\"."},
        {terminalScript("a\" on \"b"), "Expected end of line but found \"on\"."},
        {terminalScript("a\" $ \"b"), "Expected end of line but found unknown token."},
        {terminalScript("grep '\\d'"), "Expected \"\"\" but found unknown token."},
        {"do script \"a\\", "Expected \"\"\" but found unknown token."},
        {"do script\n\"a\"", "Expected \"\"\" but found end of line."},
        {"(* open (* *)", "Expected \"*)\" but found end of script."},
        {"tell application \"X\"\nactivate", "Expected \"end\" but found end of script."},
        {"try\nend tell", "Expected end of line but found \"tell\"."},
        {"activate\nend", "Expected expression but found \"end\"."},
        {"beep", "Expected expression but found identifier."},
        {"tell window 99999999999 to activate", "The number is too large."},
        {"click button of window 1", "Expected number but found \"of\"."},
        {"keystroke \"f\" using {}", "Expected expression but found \"}\"."},
        {"keystroke \"f\" using {command down", "Expected \"}\" but found end of script."},
        {"keystroke \"f\" using {command}", "Expected \"down\" but found \"}\"."},
        {tooDeep, "The script is nested too deeply."}};
    for (const auto& [source, expected] : cases) {
        const auto script = parse(source);
        EXPECT_EQ(script ? "" : script.error().localizedDescription, expected)
            << source.substr(0, 200);
    }
}

struct ScriptEngineTest : testing::Test {
    static std::string toProcess(const std::string& name, const std::string& command) {
        return "tell application \"System Events\" to tell process \"" + name + "\" to " + command;
    }
    void SetUp() override {
        install("test.browser", "Test Browser", recording("browser", "%u"));
        makeProgram("emulators/x-terminal-emulator",
                    "exec " + place("bin/recorder") + " emulator \"$@\"\n");
    }

    std::string errorOf(const std::string& source) {
        const auto outcome = engine_.execute(source);
        if (!outcome) return "no script";
        if (!outcome->error) return outcome->hasResult ? "" : "no result";
        EXPECT_FALSE(outcome->hasResult);
        return std::to_string(outcome->error->number.value()) + " " +
               outcome->error->message.value();
    }

    const std::string click = "click button 2 of window 1";
    const std::string press = "keystroke \"f\" using {command down, control down}";
    ScopedVariable path_{"PATH", place("emulators") + ":" + std::getenv("PATH")};
    ScopedVariable shell_{"SHELL", "/bin/sh"};
    std::vector<RunningApplication> running_;
    std::vector<int> activated_;
    InstalledApplications installed_;
    ApplicationOpener opener_{installed_,
                              {.list = [this] { return running_; },
                               .activate =
                                   [this](const RunningApplication& process) {
                                       activated_.push_back(process.processIdentifier);
                                       return true;
                                   }}};
    MemoryWindowSystem system_;
    LaunchedApplications launched_;
    RunningApplications onDisplay_{installed_, system_, launched_};
    LinuxAccessibility accessibility_{system_, onDisplay_};
    LinuxScriptEngine engine_{opener_, accessibility_};
};

TEST_F(ScriptEngineTest, terminalTakesTheCommandAsOneWord) {
    const std::string command = "cd '/a b' && echo \"$HOME\" 'open \\ \n\r\t\ntwo -- (* ü \xff";
    const std::string escaped = R"(cd '/a b' && echo \"$HOME\" 'open \\ \n\r\t)";
    EXPECT_EQ(errorOf(terminalScript(escaped + "\ntwo -- (* ü \xff")), "");
    const auto record = records("emulator", 1).at(0);
    EXPECT_TRUE(record.starts_with("-e|/bin/sh|-i|-c|") && record.ends_with("|/bin/sh|" + command))
        << record;
    EXPECT_TRUE(activated_.empty());
}

TEST_F(ScriptEngineTest, aRunningTerminalComesForwardFirst) {
    const RunningApplication terminal{.processIdentifier = 2,
                                      .bundleIdentifier = "com.apple.Terminal"};
    running_ = {{.processIdentifier = 1}, terminal, terminal};
    EXPECT_EQ(errorOf("tell application \"Terminal\" to activate"), "");
    EXPECT_EQ(activated_, std::vector{2});
}

TEST_F(ScriptEngineTest, nothingRunsBeforeAllIsRead) {
    EXPECT_EQ(errorOf(browserScript("Test Browser", "http://a/\" b")),
              "-2741 Expected \"}\" but found identifier.");
    const auto outcome = engine_.execute(terminalScript("echo \"hi\""));
    EXPECT_EQ(outcome->error->description,
              "{ NSAppleScriptErrorMessage = \"Expected end of line but found identifier.\"; "
              "NSAppleScriptErrorNumber = \"-2741\"; }");
    EXPECT_TRUE(namesIn(place("records")).empty());
}

TEST_F(ScriptEngineTest, wordsComeInAnyCaseAndLinesWithAnyEnd) {
    for (const auto* nothing : {"", " \n\r\n\t-- nothing\n# or\n(* a (* nested *) \n one *)"})
        EXPECT_EQ(errorOf(nothing), "no result");
    for (const auto* source :
         {"TELL Application \"Terminal\" TO Activate", "try\r\nactivate\rend", "activate --\""})
        EXPECT_EQ(errorOf(source), "") << source;
}

TEST_F(ScriptEngineTest, aBrowserGetsTheAddress) {
    EXPECT_EQ(errorOf(browserScript("Test Browser", "http://a/?b")), "");
    EXPECT_EQ(records("browser", 2), (std::vector<std::string>{"", "http://a/?b"}));
    clearRecords();
    EXPECT_EQ(errorOf("try\ntell application \"Terminal\" to make new tab with properties "
                      "{URL:\"x:1\"}\non error\ntell application \"test browser\" to open "
                      "location \"http://c\"\nend try"),
              "");
    EXPECT_EQ(records("browser", 1), std::vector<std::string>{"http://c"});
    EXPECT_EQ(errorOf("open location \"http://d\""), "");
    EXPECT_EQ(records("web", 1), std::vector<std::string>{"http://d"});
}

TEST_F(ScriptEngineTest, systemEventsKnowsRunningProcesses) {
    running_ = {{.processIdentifier = 7, .localizedName = "Einer"}};
    EXPECT_EQ(errorOf("tell application \"einer\" to activate"), "");
    EXPECT_EQ(activated_, std::vector{7}) << "though it isn't installed";
    EXPECT_EQ(errorOf(toProcess("Einer", "activate")), "");
}

TEST_F(ScriptEngineTest, failuresHaveAppleScriptsNumbers) {
    running_ = {{.processIdentifier = 7, .localizedName = "Einer"}};
    const std::pair<std::string, std::string> failures[]{
        {browserScript("Nobody", "http://a"), "-1728 Can’t get application \"Nobody\"."},
        {"tell window 2 to activate", "-1728 Can’t get window 2."},
        {"tell application \"Test Browser\" to do script \"ls\"",
         "-1708 Test Browser got an error: Can’t continue do script."},
        {toProcess("Keiner", click), "-1728 System Events got an error: Can’t get process "
                                     "\"Keiner\"."},
        {"tell process \"Einer\" to activate", "-1728 Can’t get process \"Einer\"."},
        {"tell application \"Einer\" to " + click,
         "-1708 Einer got an error: Can’t continue click."},
        {toProcess("Einer", click), "-1719 System Events got an error: Can’t get window 1 of "
                                    "process \"Einer\". Invalid index."},
        {"keystroke \"f\" using {option down, shift down}", "-1708 Can’t continue keystroke."},
        {toProcess("Einer", "keystroke \"f\""),
         "-1708 System Events got an error: Can’t continue keystroke."},
        {toProcess("Einer", "keystroke \"q\" using command down"),
         "-1708 System Events got an error: Can’t continue keystroke."},
        {fullscreenScript("Einer"),
         "-10000 System Events got an error: AppleEvent handler failed."}};
    for (const auto& [source, failure] : failures)
        EXPECT_EQ(errorOf(source), failure) << source;
    EXPECT_TRUE(errorOf("open location \"unheard:of\"").starts_with("-10814 "));
    const ScopedVariable noProgram("PATH", place("emptyfolder"));
    EXPECT_EQ(errorOf(terminalScript("ls")), "-600 Terminal got an error: Application isn’t "
                                             "running.");
    const ScopedVariable program("PATH", place("emulators"));
    write(place("emulators/x-terminal-emulator"), "no program");
    EXPECT_TRUE(errorOf(terminalScript("ls")).starts_with("-10810 Terminal got an error: "));
}

TEST_F(ScriptEngineTest, aWindowFillsTheScreenAndComesBack) {
    running_ = {{.processIdentifier = getpid(), .localizedName = "Einer"}};
    const auto& window = system_.show({.window = {.process = getpid()}});
    for (const auto& command : {click, press}) {
        for (const bool expected : {true, false}) {
            EXPECT_EQ(errorOf(toProcess("Einer", command)), "");
            EXPECT_EQ(system_.find(window.window)->window.isFullscreen, expected) << command;
        }
    }
}

} // namespace
