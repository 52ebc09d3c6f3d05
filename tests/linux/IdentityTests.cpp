#include "linux/running/ApplicationOpener.h"
#include "linux/running/LaunchedApplications.h"
#include "linux/running/LinuxApplications.h"
#include "linux/running/Quitting.h"
#include "linux/running/RunningApplications.h"
#include "linux/screen/LinuxAccessibility.h"
#include "linux/system/DetachedProcess.h"
#include "machine/Program.h"
#include "platform/Bundles.h"
#include "windows/MemoryWindowSystem.h"

#include <list>

using namespace corvane;
using namespace corvane::machine;

namespace {

struct IdentityTest : testing::Test {
    using Words = std::vector<std::string>;
    void SetUp() override {
        const auto office = makeProgram("bin/office", "");
        install("test.writer", "Writer",
                "Name[de]=Schreiber\nExec=" + office + "\nStartupWMClass=writer");
        install("test.calc", "Calc", "Exec=" + office + "\nStartupWMClass=calc");
        install("test.slow", "Slow", "Exec=" + place("bin/slow"));
        // Its wrapper ends before the program does.
        makeProgram("bin/slow", "sleep 62 &\nsleep 0.3\n");
    }
    void TearDown() override {
        for (const auto process : started_)
            kill(process, SIGKILL);
    }

    pid_t program(const std::vector<std::string>& words = {"sleep", "61"}) {
        return programs_.emplace_back(words).id();
    }
    ManagedWindow& show(const std::string& title, pid_t process, const std::string& name = "") {
        auto& window = system_.show({.window = {.process = process}, .title = title});
        window.canBeAskedToClose = true;
        window.hints.className = name;
        return window;
    }
    pid_t launch(const std::string& id) {
        const auto application = installed_.byDesktopId(id + ".desktop").value();
        const auto process =
            startDetached({application.executable}, {.desktopFile = application.desktopFile});
        launched_.add(application, {*process});
        return started_.emplace_back(*process);
    }
    /// What can be told of each application: name, identifier, bundle, other names, kind, windows.
    std::string all() {
        std::vector<std::string> lines;
        const auto now = system_.windows(halfASecondFromNow());
        for (const auto& shown : running_.shownAmong(*now)) {
            const auto& application = shown.application;
            auto line = application.localizedName.value_or("?") + "|" +
                        application.bundleIdentifier.value_or("") + "|" +
                        (application.bundleURL ? application.bundleURL->path() : "");
            for (const auto& other : application.otherNames)
                line += "|" + other.name;
            if (application.activationPolicy != 0) line += " accessory";
            if (application.isHidden) line += " hidden";
            if (shown.belongsToSession) line += " of the session";
            for (const auto& window : shown.windows)
                line += " " + window.title.value_or("?");
            lines.push_back(line);
        }
        return text::joined(lines, "; ");
    }
    RunningApplication named(const std::string& name) {
        for (const auto& application : running_.list()) {
            if (application.localizedName == name) return application;
        }
        ADD_FAILURE() << name << " isn't among " << all();
        return {};
    }

    /// Whether it is neither asked nor ended by force, though both are wanted.
    bool isSpared(const RunningApplication& application) {
        const bool asked = quitting_.terminate(application);
        return !quitting_.forceTerminate(application) && !asked;
    }

    MemoryWindowSystem system_;
    InstalledApplications installed_;
    LaunchedApplications launched_;
    RunningApplications running_{installed_, system_, launched_};
    Words jobs_;
    std::function<void()> endJobs_;
    Quitting quitting_{system_, running_, [this](const auto& names, const auto& terminate) {
                           jobs_ = names;
                           endJobs_ = terminate;
                       }};
    std::list<Program> programs_;
    std::vector<pid_t> started_;
};

const std::string writer = "Writer|test.writer|/Applications/Writer.app|Schreiber";
const std::string calc = "Calc|test.calc|/Applications/Calc.app";
const std::string slow = "Slow|test.slow|/Applications/Slow.app";

TEST_F(IdentityTest, oneProcessIsAsManyApplicationsAsItsWindowsName) {
    const auto office = program();
    show("letter", office, "writer");
    show("sums", office, "calc");
    show("tip", office);
    show("list", office, "writer");
    EXPECT_EQ(all(), writer + " letter tip list; " + calc + " sums");
    const auto w = named("Writer"), c = named("Calc");
    EXPECT_EQ(w.processIdentifier, office);
    EXPECT_NE(c.processIdentifier, office);
    EXPECT_EQ(processOf(c.processIdentifier), office);
    std::swap(system_.clients.front(), system_.clients[1]);
    EXPECT_EQ(named("Calc").processIdentifier, c.processIdentifier) << "raised, it stays the same";

    LinuxAccessibility accessibility(system_, running_);
    EXPECT_EQ(accessibility.windows(c.processIdentifier)->size(), 1u);
    const ApplicationOpener opener(installed_, {});
    LinuxApplications applications(opener, running_, quitting_);
    EXPECT_EQ(applications.runningApplications().size(), 2u);
    system_.clients[0].ignoresClose = true;
    EXPECT_TRUE(applications.terminate(c));
    EXPECT_EQ(system_.askedToClose, Words{"sums"});
    EXPECT_FALSE(quitting_.forceTerminate(c)) << "the process holds another application";
    EXPECT_TRUE(quitting_.terminate(w));
    EXPECT_EQ(text::joined(system_.askedToClose, " "), "sums list tip letter");
    EXPECT_EQ(all(), calc + " sums");
    EXPECT_TRUE(quitting_.terminate(w)) << "it was asked, and its process is there still";
    EXPECT_FALSE(quitting_.forceTerminate(w)) << "it may be saving still";
    EXPECT_TRUE(applications.forceTerminate(c)) << "now it is alone";
    EXPECT_TRUE(programs_.front().ends());
    EXPECT_TRUE(isSpared(c)) << "it isn't there any more";
}

TEST_F(IdentityTest, aNameInBracketsIsTheSameEverywhere) {
    install("test.other", "Writer", "Exec=cat\nStartupWMClass=other");
    show("one", program(), "writer");
    show("two", program(), "other");
    EXPECT_EQ(all(), "Writer [test.writer]|test.writer|/Applications/Writer [test.writer].app"
                     "|Schreiber one; Writer [test.other]|test.other|"
                     "/Applications/Writer [test.other].app two");
}

TEST_F(IdentityTest, onlyMainWindowsMakeAnApplicationAndTheirWordsCountFirst) {
    const auto editor = program(), portal = program();
    auto& shown = show("letter", editor, "writer");
    shown.isMinimized = true;
    const auto letter = shown.window.number;
    show("choose a file", portal, "Portal").owner = letter;
    EXPECT_TRUE(all().starts_with(writer + " hidden letter; Portal||")) << all();
    EXPECT_TRUE(all().ends_with(" accessory choose a file")) << all();
    system_.clients.erase(system_.clients.begin());
    EXPECT_EQ(all().find("accessory"), std::string::npos) << "whose owner has gone: " << all();
    system_.clients.clear();
    auto& palette = show("palette", editor, "calc");
    palette.kind = WindowKind::other;
    const auto number = palette.window.number;
    show("sheet", editor);
    show("letter", editor, "writer").isMinimized = true;
    auto& colours = show("colours", editor);
    colours.owner = number;
    colours.skipsTaskbar = true;
    EXPECT_EQ(all(), writer + " sheet letter; " + calc + " accessory palette colours");
}

TEST_F(IdentityTest, onlyWhatTakesARequestIsAsked) {
    const auto process = program();
    show("deaf", process, "writer").canBeAskedToClose = false;
    EXPECT_TRUE(isSpared(named("Writer")));
    show("hears", process, "writer");
    EXPECT_TRUE(quitting_.terminate(named("Writer")));
    EXPECT_EQ(system_.askedToClose, Words{"hears"});
    EXPECT_TRUE(programs_.front().isRunning());

    struct : MemoryWindowSystem {
        WindowAnswer askToClose(std::span<const WindowRef>, Deadline) override {
            return WindowAnswer::unanswered;
        }
    } silent;
    silent.clients = {{.window = show("silent", process, "writer")}};
    Quitting quitting(silent, running_, {});
    EXPECT_FALSE(quitting.terminate(named("Writer")) || quitting.forceTerminate(named("Writer")))
        << "nobody says that it was asked";
}

TEST_F(IdentityTest, aTerminalIsOneWhateverRunsInItAndTheUserIsAskedAboutThat) {
    const auto emulator = place("bin/xterm");
    fs::copy_file("/usr/bin/script", emulator, fs::copy_options::overwrite_existing);
    install("test.pager", "Pager", "Exec=cat\nTerminal=true");
    const auto process =
        startDetached({emulator, "-qc", "exec sleep 61", "/dev/null"},
                      {.desktopFile = installed_.byDesktopId("test.pager.desktop")->desktopFile});
    started_.push_back(*process);
    EXPECT_TRUE(comesTrue([&] { return foregroundJobsBelow(*process) == Words{"sleep"}; }));
    show("pages", *process);
    EXPECT_EQ(all(), "XTerm|debian-xterm|/Applications/XTerm.app|Terminal pages");
    EXPECT_TRUE(quitting_.terminate(named("XTerm")));
    EXPECT_EQ(jobs_, Words{"sleep"});
    EXPECT_EQ(system_.askedToClose, Words{}) << "the user hasn't said yet";
    show("letter", *process, "writer");
    EXPECT_TRUE(all().ends_with(" pages; " + writer + " letter")) << all();
    endJobs_();
    EXPECT_EQ(system_.askedToClose, Words{"pages"});
}

TEST_F(IdentityTest, onlyTheListedProcessIsAskedAndNeitherThisOneNorTheSessions) {
    show("own", getpid(), "Own");
    show("panel", program(), "calc").kind = WindowKind::dock;
    const auto shell = program(), files = program();
    show("menu", shell, "Shell");
    system_.session = {shell};
    show("icons", files, "writer").kind = WindowKind::desktop;
    show("folder", files, "writer");
    auto later = named("Writer"), other = later;
    ++later.startTime;
    other.bundleIdentifier = "test.other";
    for (const auto& each : {named("Own"), named("Calc"), named("Shell"), later, other, {}})
        EXPECT_TRUE(isSpared(each)) << each.localizedName.value_or("?");
    EXPECT_FALSE(sendSignal(files, later.startTime, SIGKILL) || sendSignal(-1, 0, SIGKILL));
    EXPECT_TRUE(quitting_.terminate(named("Writer"))) << "its other window goes";
    EXPECT_EQ(system_.askedToClose, Words{"folder"});
    EXPECT_TRUE(isSpared(named("Writer")));
}

TEST_F(IdentityTest, aDisplayThatIsStuckIsWaitedForOnce) {
    show("letter", program(), "writer");
    system_.clients.back().ignoresClose = true;
    const auto application = named("Writer");
    EXPECT_TRUE(quitting_.terminate(application));
    system_.serverHasStopped = true;
    const auto before = system_.questions;
    for (int i = 0; i < 5; ++i)
        EXPECT_TRUE(isSpared(application)) << "who is who can't be told";
    EXPECT_EQ(system_.questions, before + 1);
    system_.serverHasStopped = false;
    EXPECT_TRUE(comesTrue([&] { return quitting_.forceTerminate(application); }));
}

TEST_F(IdentityTest, theUppermostMainWindowOfAnApplicationComesForward) {
    const auto office = program();
    show("letter", office, "writer");
    show("list", office, "writer");
    show("sums", office, "calc");
    show("palette", office, "writer").kind = WindowKind::other;
    EXPECT_TRUE(running_.activate(named("Writer")));
    EXPECT_EQ(system_.clients.back().window.title, "list");
    auto other = named("Writer");
    ++other.startTime;
    EXPECT_FALSE(running_.activate(other));
    EXPECT_EQ(system_.clients.back().window.title, "list");
}

TEST_F(IdentityTest, aWindowOfOursIsFoundBeforeItIsListedAndElseByWhatIsMostLikeIt) {
    struct : MemoryWindowSystem {
        std::optional<WindowsNow> windows(Deadline) override { return std::nullopt; }
    } early;
    RunningApplications running(installed_, early, launched_);
    const auto number = early.show({.window = {.process = getpid()}, .title = "Own"}).window.number;
    EXPECT_TRUE(running.ownWindow(number, "Ow") && !running.ownWindow(number, "Other"));
    const auto other = show("Other", getpid()).window.number;
    show("Own - Corvane", getpid());
    show("None", program());
    EXPECT_EQ(running_.ownWindow(99, "Own")->title, "Own - Corvane");
    EXPECT_EQ(running_.ownWindow(other, "Own")->title, "Own - Corvane");
    EXPECT_EQ(running_.ownWindow(other, "None")->title, "Other");
    EXPECT_FALSE(running_.ownWindow(99, "None"));
}

TEST_F(IdentityTest, processesThatNobodyVouchesForAreNoApplications) {
    show("from afar", 0, "writer");
    show("ended", 0x3ffffe, "writer");
    EXPECT_EQ(all(), "");
    system_.connected.reset();
    const auto process = program();
    show("here", process, "writer");
    system_.clients.back().ignoresClose = true;
    EXPECT_TRUE(quitting_.terminate(named("Writer")));
    EXPECT_FALSE(quitting_.forceTerminate(named("Writer"))) << "nobody tells who is connected";
}

TEST_F(IdentityTest, whereNobodyTellsProcessesApplicationsAreWhatTheirWindowsSay) {
    system_.tellsProcesses = false;
    system_.connected.reset();
    show("letter", 0, "writer");
    show("sums", 0, "calc");
    show("list", 0, "writer");
    show("own", 0).hints.applicationId = programIdentifier;
    install(programIdentifier, "Corvane", "Exec=" + place("bin/office"));
    const std::string own = "; Corvane|app.corvane.Corvane|/Applications/Corvane.app own";
    EXPECT_EQ(all(), writer + " letter list; " + calc + " sums" + own);
    const auto w = named("Writer"), c = named("Calc");
    for (const auto& each : {w, c})
        EXPECT_TRUE(each.processIdentifier != 0 && processOf(each.processIdentifier) == 0);
    EXPECT_NE(w.processIdentifier, c.processIdentifier);
    EXPECT_EQ(running_.ownWindow(0, "own")->title, "own");
    EXPECT_FALSE(quitting_.terminate(named("Corvane")));

    system_.clients[1].ignoresClose = true;
    EXPECT_TRUE(quitting_.terminate(w) && quitting_.terminate(c) && !quitting_.forceTerminate(c));
    EXPECT_EQ(text::joined(system_.askedToClose, " "), "list letter sums");
    EXPECT_EQ(all(), calc + " sums" + own);

    show("strange", 0, "Unknown");
    EXPECT_EQ(all(), "Calc|test.calc| sums; Corvane|app.corvane.Corvane| own")
        << "Focus Mode ends nothing while one of them could be anything";
    EXPECT_TRUE(quitting_.terminate(c));
    install("test.term", "Term", "Exec=xterm\nCategories=TerminalEmulator\nStartupWMClass=term");
    show("shell", 0, "term");
    EXPECT_TRUE(quitting_.terminate(named("Term")));
    EXPECT_EQ(jobs_, Words{"Term"}) << "what runs in it nobody tells";
    system_.clients.clear();
    launch("test.slow");
    EXPECT_EQ(all(), slow);
    show("slow", 0).hints.applicationId = "test.slow";
    EXPECT_EQ(all(), slow + " slow") << "it has come";
    system_.clients.clear();
    install("test.nap", "Nap", "Exec=sleep 9");
    show("by its program", 0).hints.applicationId = "sleep";
    show("of several", 0).hints.applicationId = "office";
    EXPECT_EQ(all(), "Nap|test.nap| by its program");
}

TEST_F(IdentityTest, aSandboxIsBelievedForWhatLiesInIt) {
    install("office_writer", "Snapped", "Exec=" + place("bin/office"));
    const auto inside = place("snap/office/7/bin/sleep");
    fs::copy_file("/bin/sleep", inside, fs::copy_options::overwrite_existing);
    const auto run = [&](const std::string& hint, const std::string& executable) {
        const auto process = program({"env", "SNAP=" + place("snap/office/7"), "SNAP_NAME=office",
                                      "BAMF_DESKTOP_FILE_HINT=" + hint, executable, "61"});
        EXPECT_TRUE(comesTrue([&] {
            const auto folder = "/proc/" + std::to_string(process);
            return fs::read_symlink(folder + "/exe").filename() == "sleep" &&
                   !read(folder + "/environ").empty();
        }));
        return process;
    };
    const std::string entry = "/var/lib/snapd/desktop/applications/office_writer.desktop";
    const std::tuple<std::string, pid_t, std::string, std::string> cases[]{
        {"its document", run(entry, inside), "", "Snapped|office_writer|"},
        {"a program that it started", run(entry, "/bin/sleep"), "", "sleep||"},
        {"a hint of another snap", run("/x/test.writer.desktop", inside), "writer", "writer||"}};
    for (const auto& [title, process, name, told] : cases) {
        system_.clients.clear();
        show(title, process, name);
        EXPECT_TRUE(all().starts_with(told)) << all();
    }
    system_.clients.clear();
    show("the compositor tells its sandbox", program(), "calc").hints.sandboxId = "test.writer";
    EXPECT_TRUE(all().starts_with("Writer|test.writer")) << all();
}

TEST_F(IdentityTest, whatLiesOutsideOfTheMenusIsItsProgramsBundle) {
    const auto own = place("home/own build");
    fs::copy_file("/bin/sleep", own, fs::copy_options::overwrite_existing);
    show("mine", program({own, "61"}), "Mine");
    EXPECT_EQ(all(), "Mine||" + own + " mine");
}

TEST_F(IdentityTest, whatWasLaunchedRunsBeforeItShowsAWindow) {
    EXPECT_EQ(all(), "");
    // Another launch, which has ended.
    launch("test.writer");
    ASSERT_TRUE(comesTrue([&] { return all().empty(); }));
    const auto process = launch("test.slow");
    EXPECT_EQ(all(), slow);
    const auto early = named("Slow");
    EXPECT_EQ(early.processIdentifier, process);
    EXPECT_TRUE(isSpared(early)) << "there is nothing that could be asked";
    // The wrapper has ended, and what it started shows the window.
    ASSERT_TRUE(comesTrue([&] { return !startTimeOf(process); }));
    EXPECT_EQ(all(), slow);
    const auto behind = processesLaunchedAs(process);
    ASSERT_EQ(behind.size(), 1u);
    started_.push_back(behind[0]);
    show("late", behind[0], "Unknown");
    EXPECT_EQ(all(), slow + " late");
    LinuxAccessibility accessibility(system_, running_);
    EXPECT_EQ(accessibility.windows(early.processIdentifier)->size(), 1u);
    system_.clients.clear();
    EXPECT_EQ(all(), "") << "its window has come and gone";
}

TEST_F(IdentityTest, whatALaunchedProgramOpensIsItsOwn) {
    install("test.slow", "Slow", "Exec=" + makeProgram("bin/stays", "sleep 62 &\nwait\n"));
    const auto process = launch("test.slow");
    std::vector<pid_t> processes;
    ASSERT_TRUE(comesTrue([&] { return (processes = processesLaunchedAs(process)).size() == 2; }));
    const auto child = processes[0] == process ? processes[1] : processes[0];
    started_.push_back(child);
    show("elsewhere", program(), "Stranger");
    EXPECT_TRUE(all().starts_with("Stranger||")) << all();
    system_.clients.clear();
    show("main", process, "Unknown");
    show("started from it", child, "Other");
    EXPECT_TRUE(all().starts_with(slow + " main; Other||")) << all();
}

} // namespace
