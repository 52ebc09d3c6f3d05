#include "windows/WindowSystemTest.h"

#include <filesystem>
#include <regex>

using namespace corvane;

/// What only GNOME has: an extension of ours that answers nobody else, and that has to run.
namespace {

namespace fs = std::filesystem;

const std::string object = "gdbus call --session -d org.gnome.Shell -o ";

class GnomeTest : public testing::Test {
protected:
    void start(bool isExtensionOn) {
        session_ = startSession("gnome-shell", isExtensionOn);
        folder_ = std::string(getenv("XDG_DATA_HOME")) + "/gnome-shell/extensions";
        file_ = folder_ + "/windows@corvane.app/";
    }
    WindowSystem& system() { return session_->system(); }
    bool isReady() { return system().isReady(soon()); }
    std::string whatToDo() { return system().abilities(soon()).whatToDoFirst; }
    /// Before it is to be switched on, and what that comes to.
    std::string bothSay() {
        const auto before = whatToDo();
        return before + '|' + switchOn();
    }
    std::string switchOn() {
        return system().switchOn(Clock::now() + std::chrono::milliseconds(1500));
    }
    ManagedWindow shown(const std::string& title) {
        session_->show({.title = title});
        ManagedWindow result;
        EXPECT_TRUE(comesTrue([&] {
            const auto now = system().windows(soon());
            if (now && !now->windows.empty()) result = now->windows.front();
            return result.title == title;
        }));
        waitUntilStill([&] { return session_->seen(result.window); });
        return result;
    }
    void replace(const std::string& name, const std::string& what, const std::string& with) {
        machine::write(file_ + name, text::replacingAll(machine::read(file_ + name), what, with));
    }

    std::unique_ptr<WindowSession> session_;
    std::string folder_, file_;
};

const std::string isOff =
    "Corvane's extension for GNOME Shell is off: switch on Window Layout Features, or save a layout, and choose Open System Preferences.";
const std::string isOn =
    "Corvane's extension for GNOME Shell is on: Corvane can see and place windows now.";

TEST_F(GnomeTest, answersNoStranger) {
    start(true);
    const auto window = shown("one").window;
    const auto before = session_->seen(window);
    const std::string number = "1";
    const auto later = std::to_string(std::int64_t(1) << 60);
    for (const std::string& words :
         {std::string("List"), std::string("Monitors"),
          "Place " + later + " '[(" + number + ", 1, 2, 300, 400)]'",
          "SetFullscreen " + later + ' ' + number + " true",
          "SetMaximized " + later + ' ' + number + " true", "Activate " + later + ' ' + number,
          "Close " + later + " '[" + number + "]'"}) {
        const auto answer = outputOf(
            "(" + object + "/app/corvane/Windows -m app.corvane.Windows1." + words + " 2>&1)");
        EXPECT_NE(answer.find("AccessDenied"), std::string::npos) << words << ": " << answer;
    }
    EXPECT_EQ(session_->seen(window), before);
    EXPECT_TRUE(isReady()) << "and goes on answering";
}

TEST_F(GnomeTest, doesNothingThatIsLate) {
    start(true);
    const auto window = shown("one").window;
    const auto before = session_->seen(window);
    session_->stop(Part::server, window);
    const auto answer =
        system().place(window, {PixelPoint{333, 222}, PixelSize{400, 300}}, halfASecondFromNow());
    EXPECT_EQ(answerText(answer), "unanswered");
    const auto close = system().askToClose(std::array{window}, halfASecondFromNow());
    EXPECT_EQ(answerText(close), "unanswered");
    session_->goOn(Part::server, window);
    EXPECT_TRUE(comesTrue([this] { return isReady(); }));
    EXPECT_EQ(session_->seen(window), before);
}

TEST_F(GnomeTest, isSwitchedOnAtOnceWhereTheShellKnowsIt) {
    start(false);
    const auto by = halfASecondFromNow();
    EXPECT_FALSE(system().isReady(by) || system().windows(by) || system().monitors(by));
    EXPECT_EQ(system().abilities(halfASecondFromNow()).desktop, "GNOME (Wayland)");
    for (int round = 0; round < 2; ++round) {
        EXPECT_EQ(whatToDo(), isOff);
        EXPECT_EQ(switchOn(), isOn);
        EXPECT_TRUE(isReady());
        EXPECT_EQ(whatToDo(), "");
        shown("one");
        EXPECT_TRUE(machine::runs(object + "/org/gnome/Shell -m org.gnome.Shell.Extensions."
                                           "DisableExtension windows@corvane.app"));
        EXPECT_TRUE(comesTrue([this] { return !isReady(); }));
    }
}

TEST_F(GnomeTest, isSilentWhileTheScreenIsLockedAndThereAgainAfterIt) {
    start(true);
    const auto window = shown("one").window;
    const auto session = [](const std::string& words) {
        EXPECT_TRUE(machine::runs(object +
                                  "/org/gnome/Shell -m org.gnome.Shell.Eval "
                                  "\"Main.sessionMode." +
                                  words + "\""));
    };
    for (int round = 0; round < 2; ++round) {
        session("pushMode('unlock-dialog')");
        EXPECT_TRUE(comesTrue([this] { return !isReady(); }));
        EXPECT_FALSE(system().windows(soon()));
        session("popMode('unlock-dialog')");
        EXPECT_TRUE(comesTrue([this] { return isReady(); }));
        EXPECT_EQ(answerText(system().activate(window, soon())), "done");
    }
}

TEST_F(GnomeTest, saysWhatElseKeepsItOff) {
    start(false);
    const auto settings = std::string(getenv("XDG_CONFIG_HOME")) + "/glib-2.0/settings/keyfile";
    const auto aside = folder_ + "/../aside";
    const auto logInAgain = [&] {
        session_->end();
        session_->startAgain();
    };
    session_->end();
    fs::rename(file_, aside);
    session_->startAgain();
    const std::string missing =
        "Corvane's extension for GNOME Shell isn't installed: it comes with Corvane's package.";
    EXPECT_EQ(bothSay(), missing + '|' + missing);

    fs::rename(aside, file_);
    EXPECT_EQ(whatToDo(), isOff) << "installed while the shell runs";
    const std::string later =
        "Log out and in again: GNOME Shell takes in Corvane's extension when it starts.";
    EXPECT_EQ(switchOn(), later);
    EXPECT_EQ(bothSay(), later + '|' + later);
    logInAgain();
    EXPECT_TRUE(comesTrue([this] { return isReady(); })) << machine::read(settings);

    std::smatch version;
    const auto told = outputOf(
        object +
        "/org/gnome/Shell -m org.freedesktop.DBus.Properties.Get org.gnome.Shell ShellVersion");
    ASSERT_TRUE(std::regex_search(told, version, std::regex("[0-9][0-9.]+"))) << told;
    const std::string script = std::stoi(version.str()) < 45 ? "__init__.js" : "extension.js";
    struct Case {
        std::string file, what, with, says;
    };
    for (
        const auto& [file, what, with, says] :
        {Case{"metadata.json", "\"4", "\"3",
              "Corvane's extension isn't made for GNOME Shell " + version.str() + "."},
         Case{
             script, "Windows1", "Windows2",
             "Log out and in again: GNOME Shell still runs the extension of another version of Corvane."},
         Case{script, "new Service", "new Nobody",
              "GNOME Shell can't run Corvane's extension: Nobody is not defined"},
         Case{
             script, "/bin/corvane", "/bin/other",
             "GNOME Shell runs the extension of another Corvane, which answers only to that one."}}) {
        const auto whole = machine::read(file_ + file);
        replace(file, what, with);
        logInAgain();
        EXPECT_FALSE(isReady());
        // Later shells name the kind of an error.
        EXPECT_EQ(text::replacingAll(bothSay(), "ReferenceError: ", ""), says + '|' + says);
        machine::write(file_ + file, whole);
    }
    machine::write(settings,
                   machine::read(settings) + "\n[org/gnome/shell]\ndisable-user-extensions=true\n");
    logInAgain();
    EXPECT_EQ(switchOn(),
              "GNOME's extensions are all switched off: switch them on in the program Extensions.");
}

} // namespace
