#include "Display.h"
#include "linux/running/ApplicationIdentity.h"
#include "linux/running/ApplicationOpener.h"
#include "linux/running/LinuxApplications.h"
#include "linux/system/ProcessFacts.h"

#include <chrono>

using namespace corvane;
using namespace corvane::machine;

namespace {

TEST(ApplicationIdentityTest, findsTheInstalledApplication) {
    const auto entry = [](const std::string& id, const std::string& program, bool shown = true) {
        InstalledApplication application;
        application.desktopId = id + ".desktop";
        application.bundleIdentifier = id;
        application.desktopFile = "/apps/" + application.desktopId;
        application.executable = program;
        application.isShown = shown;
        return application;
    };
    std::vector<InstalledApplication> installed{entry("hidden-editor", "editor", false),
                                                entry("org.x.Editor", "/usr/bin/editor"),
                                                entry("web-app", "browser"),
                                                entry("browser", "browser"),
                                                entry("gnome-clock", "env"),
                                                entry("python-thing", "python3"),
                                                entry("two-words", "/opt/two words"),
                                                entry("officer", "/opt/officer"),
                                                entry("office_calc", "/snap/calc"),
                                                entry("org.x.Editor.quick", "/opt/quick"),
                                                entry("fedora-mail", "/opt/mail"),
                                                entry("mozilla-mail.old", "/opt/mail.old"),
                                                entry("debian-mail.new", "/opt/mail.new")};
    installed[2].startupWmClass = "crx_1";
    installed[3].startupWmClass = "Browser";
    installed[4].tryExec = "clock";

    const auto ofClass = [](const std::string& instance, const std::string& name) {
        return ApplicationHints{.instanceName = instance, .className = name};
    };
    auto hinted = ofClass("crx_1", "Browser");
    hinted.desktopFile = "/apps/gnome-clock.desktop";
    auto gtk = ofClass("browser", "browser");
    gtk.applicationId = "org.x.Editor";
    const std::tuple<ApplicationHints, ProcessFacts, std::string> cases[]{
        {{.desktopFile = "officer"}, {}, "officer"},
        {{.desktopFile = "officer.desktop"}, {}, "officer"},
        {{.applicationId = "Two Words"}, {}, "two-words"},
        {{.applicationId = "crx_1"}, {}, "web-app"},
        {ofClass("mail", ""), {}, "fedora-mail"},
        {ofClass("mail.old", ""), {}, "mozilla-mail.old"},
        {ofClass("mail.new", ""), {}, "debian-mail.new"},
        {ofClass("crx_1", "Browser"), {.sandboxIdentifier = "org.x.Editor"}, "org.x.Editor"},
        {ofClass("officer", ""), {.sandboxIdentifier = "office_writer"}, ""},
        {ofClass("office_calc", ""), {.sandboxIdentifier = "office_writer"}, "office_calc"},
        {ofClass("office_calc", ""), {.sandboxIdentifier = "office"}, "office_calc"},
        {ofClass("org.x.Editor.quick", ""),
         {.sandboxIdentifier = "org.x.Editor"},
         "org.x.Editor.quick"},
        {hinted, {}, "gnome-clock"},
        {ofClass("crx_1", "Browser"), {}, "web-app"},
        {ofClass("Navigator", "Browser"), {.executable = "/usr/bin/editor"}, "browser"},
        {gtk, {}, "org.x.Editor"},
        {ofClass("browser", "Org.X.Editor"), {}, "browser"},
        {ofClass("clock", "Clock"), {.executable = "/usr/bin/editor"}, "gnome-clock"},
        {ofClass("", "Two Words"), {}, "two-words"},
        {ofClass("x", "X"), {.launchedDesktopFile = "/apps/web-app.desktop"}, "web-app"},
        {ofClass("x", "X"), {.executable = "/usr/bin/editor"}, "org.x.Editor"},
        {ofClass("x", "X"), {.executable = "/snap/editor"}, "hidden-editor"},
        {ofClass("x", "X"), {.executable = "/usr/bin/python3.11"}, ""},
        {ofClass("x", "X"), {.executable = "/usr/bin/python3"}, ""},
        {ofClass("x", "X"), {.executable = "/usr/bin/env", .commandName = "clock"}, "gnome-clock"},
        {ofClass("\xff", ""), {.launchedDesktopFile = "/gone.desktop"}, ""},
        {{}, {}, ""}};
    for (const auto& [hints, process, expected] : cases) {
        const auto shares = sharesOf(process, {{.window = {1, 1}, .hints = hints}}, installed);
        const auto* found = shares.at(0).application;
        EXPECT_EQ(found ? found->bundleIdentifier : "", expected)
            << hints.instanceName << "/" << hints.className << " " << process.executable;
    }
}

TEST(RunningProcessTest, aScriptIsItsOwnProgram) {
    write(place("bin/odd) name"), "read line\n");
    int ends[2];
    ASSERT_EQ(pipe2(ends, 0), 0);
    const int before = dup(0);
    dup2(ends[0], 0);
    const Program script({"/bin/bash", "--norc", place("bin/odd) name"), "argument"});
    dup2(before, 0);
    ASSERT_TRUE(comesTrue([&] {
        const auto process = processFacts(script.id());
        return process && process->commandName == "odd) name";
    }));
    const auto process = processFacts(script.id());
    EXPECT_EQ(process->executable, place("bin/odd) name"));
    EXPECT_GE(process->startTime, processFacts(getpid())->startTime);
    EXPECT_FALSE(processFacts(0) || processFacts(-1));
    EXPECT_FALSE(processFacts(1 << 30));
    for (const int descriptor : {ends[0], ends[1], before})
        close(descriptor);
}

using RunningApplicationsTest = DisplayTest;

bool isTerminal(const RunningApplication& application) {
    return std::ranges::count(application.otherNames, "Terminal", &OtherName::name) == 1;
}

TEST_F(RunningApplicationsTest, listsProcessesInTheOrderOfTheirStart) {
    const Program eyes({"xeyes"});
    ASSERT_TRUE(lists(1));
    const Program first({"xterm", "-e", "cat"});
    ASSERT_TRUE(lists(2));
    const Program second({"xterm", "-name", "other", "-iconic", "-e", "cat"});
    ASSERT_TRUE(lists(3));
    const auto applications = running_.list();
    EXPECT_EQ(applications[0].processIdentifier, eyes.id());
    EXPECT_EQ(applications[0].localizedName, "Eyes");
    EXPECT_EQ(applications[0].executableURL->path(), "/usr/bin/xeyes");
    EXPECT_EQ(applications[0].activationPolicy, 0);
    EXPECT_FALSE(applications[0].isHidden);
    EXPECT_EQ(applications[1].processIdentifier, first.id());
    EXPECT_EQ(applications[2].processIdentifier, second.id());
    for (const int terminal : {1, 2}) {
        EXPECT_TRUE(isTerminal(applications[terminal]));
        EXPECT_EQ(applications[terminal].bundleURL->path(), installed_.terminal()->bundlePath);
    }
    ASSERT_TRUE(comesTrue([&] { return running_.list()[2].isHidden; }));
    EXPECT_TRUE(running_.activate(running_.list()[2]));
    EXPECT_TRUE(comesTrue([&] { return !running_.list()[2].isHidden; }));
    EXPECT_FALSE(running_.activate({.processIdentifier = manager_->id()}));
}

TEST_F(RunningApplicationsTest, survivesWhatClientsSay) {
    OwnWindows own;
    const auto dock = own.make();
    own.set(dock, "_NET_WM_WINDOW_TYPE", own.atom("_NET_WM_WINDOW_TYPE_DOCK"));
    own.set(dock, "WM_CLASS", std::string("dock\0Do\377ck", 10));
    own.set(dock, "_NET_WM_PID", 1);
    own.set(dock, "_NET_WM_STATE", "nonsense");
    own.show(dock);
    ASSERT_TRUE(lists(1));
    auto application = running_.list().at(0);
    EXPECT_EQ(application.processIdentifier, getpid());
    EXPECT_EQ(application.activationPolicy, 1);
    EXPECT_EQ(application.localizedName, "Do\uFFFDck");
    EXPECT_EQ(application.bundleURL, application.executableURL);
    EXPECT_EQ(application.bundleIdentifier, "app.corvane.Corvane");

    const auto window = own.make();
    own.set(window, "WM_CLASS", "");
    own.set(window, "WM_TRANSIENT_FOR", window);
    own.set(window, "_NET_WM_WINDOW_TYPE", "text");
    own.show(window);
    ASSERT_TRUE(windowsBecome(2));
    EXPECT_EQ(running_.list().at(0).activationPolicy, 1) << "a panel stays one with a dialog";
    own.close(dock);
    EXPECT_TRUE(comesTrue([&] { return running_.list().at(0).activationPolicy == 0; }));
}

struct QuittingTest : DisplayTest {
    RunningApplication listed(pid_t process) {
        std::vector<RunningApplication> found;
        EXPECT_TRUE(comesTrue([&] {
            found = running_.list();
            std::erase_if(found, [&](const auto& it) { return it.processIdentifier != process; });
            return !found.empty();
        })) << process;
        return found.empty() ? RunningApplication() : found.front();
    }
    /// Whether it is neither asked nor ended by force, though both are wanted.
    bool isSpared(const RunningApplication& application) {
        const bool asked = quitting_.terminate(application);
        return !quitting_.forceTerminate(application) && !asked;
    }
};

/// It takes its reaction, and the type of its second window if it shall have one.
Program client(const auto&... words) {
    return Program({TEST_CLIENT, words...});
}

TEST_F(QuittingTest, eachProcessIsAskedInItsOwnWay) {
    auto closing = client("close");
    auto ignoring = client("ignore");
    auto hiding = client("hide");
    auto bystander = client("close");
    ASSERT_TRUE(windowsBecome(8));
    const auto [c, i, h] =
        std::tuple(listed(closing.id()), listed(ignoring.id()), listed(hiding.id()));
    EXPECT_EQ(c.activationPolicy, 0);
    const ApplicationOpener opener(installed_, {});
    LinuxApplications applications(opener, running_, quitting_);
    EXPECT_EQ(applications.runningApplications().size(), 4u);
    for (const auto& application : {c, i, h})
        EXPECT_TRUE(applications.terminate(application));
    EXPECT_TRUE(closing.ends());
    EXPECT_TRUE(windowsBecome(4)) << "one ignores it, one wasn't asked";
    EXPECT_TRUE(isSpared(c)) << "it isn't there any more";

    EXPECT_TRUE(quitting_.terminate(h)) << "it is on its way";
    EXPECT_FALSE(applications.forceTerminate(h)) << "it may be saving still";
    EXPECT_TRUE(hiding.isRunning() && applications.forceTerminate(i) && ignoring.ends());
    EXPECT_TRUE(bystander.isRunning());
}

TEST_F(QuittingTest, aProcessThatIsntTheListedOneAndTheSessionStay) {
    auto process = client("close");
    Program unconnected({"sleep", "60"});
    probe_->show(probe_->make());
    ASSERT_TRUE(windowsBecome(3));
    const auto listedOne = listed(process.id());
    auto later = listedOne;
    ++later.startTime;
    auto unknown = listedOne;
    unknown.startTime = 0;
    std::vector<RunningApplication> staying{later, unknown, {}};
    for (const pid_t id : {unconnected.id(), getpid(), manager_->id(), server_->id()})
        staying.push_back({.processIdentifier = id, .startTime = *startTimeOf(id)});
    for (const auto& application : staying)
        EXPECT_TRUE(isSpared(application)) << application.processIdentifier;
    EXPECT_FALSE(sendSignal(process.id(), later.startTime, SIGKILL) || sendSignal(-1, 0, SIGKILL));
    EXPECT_TRUE(process.isRunning() && unconnected.isRunning());
    EXPECT_TRUE(manager_->isRunning() && server_->isRunning());
    EXPECT_EQ(probe_->managed().size(), 3u);

    kill(process.id(), SIGKILL);
    ASSERT_TRUE(windowsBecome(1));
    EXPECT_TRUE(startTimeOf(process.id())) << "it has ended, but nobody has taken note";
    EXPECT_TRUE(isSpared(listedOne));
}

/// A window manager can have windows like anyone's, and one that has gone leaves its word behind.
TEST_F(QuittingTest, theWindowManagerIsNoApplication) {
    manager_.reset();
    const auto window = probe_->make();
    const auto check = probe_->make();
    probe_->set(probe_->root(), "_NET_CLIENT_LIST", window);
    probe_->set(probe_->root(), "_NET_CLIENT_LIST_STACKING", window);
    probe_->set(probe_->root(), "_NET_SUPPORTING_WM_CHECK", check);
    probe_->show(window);
    EXPECT_TRUE(comesTrue([&] { return running_.list().at(0).activationPolicy == 0; }));
    probe_->set(check, "_NET_SUPPORTING_WM_CHECK", check);
    probe_->show(window);
    EXPECT_TRUE(comesTrue([&] { return running_.list().at(0).activationPolicy == 1; }));
}

TEST_F(QuittingTest, whatAClientSaysOfItselfMisleadsNoOne) {
    auto victim = client("close");
    ASSERT_TRUE(windowsBecome(2));
    const auto liar = probe_->make();
    probe_->set(liar, "_NET_WM_PID", static_cast<std::uint32_t>(victim.id()));
    char machine[256] = {};
    gethostname(machine, sizeof machine - 1);
    probe_->set(liar, "WM_CLIENT_MACHINE", machine);
    probe_->set(liar, "WM_CLASS", std::string("\xff\0\xfe", 3));
    probe_->show(liar);
    ASSERT_TRUE(windowsBecome(3));
    EXPECT_TRUE(quitting_.terminate(listed(victim.id())) && victim.ends() && windowsBecome(1));
}

TEST_F(QuittingTest, withoutAWindowManagerTheClientIsAskedItself) {
    auto process = client("close");
    ASSERT_TRUE(windowsBecome(2));
    const auto application = listed(process.id());
    manager_.reset();
    EXPECT_TRUE(quitting_.terminate(application) && process.ends());
}

TEST_F(QuittingTest, nothingIsWaitedForLong) {
    using Clock = std::chrono::steady_clock;
    auto process = client("close");
    ASSERT_TRUE(windowsBecome(2));
    const auto application = listed(process.id());
    kill(process.id(), SIGSTOP);
    kill(server_->id(), SIGSTOP);
    auto start = Clock::now();
    for (int i = 0; i < 5; ++i)
        EXPECT_TRUE(isSpared(application)) << "who is who can't be told";
    EXPECT_LT(Clock::now() - start, std::chrono::seconds(1)) << "one wait for all";
    start = Clock::now();
    x11::X11WindowSystem fresh;
    EXPECT_FALSE(fresh.isReady(halfASecondFromNow()));
    EXPECT_LT(Clock::now() - start, std::chrono::seconds(1));
    kill(server_->id(), SIGCONT);
    ASSERT_TRUE(comesTrue([&] { return !running_.list().empty(); }));
    EXPECT_TRUE(comesTrue([&] { return fresh.isReady(halfASecondFromNow()); }));
    EXPECT_FALSE(quitting_.forceTerminate(application)) << "it was never asked";
    EXPECT_TRUE(comesTrue([&] { return quitting_.terminate(application); }));
    EXPECT_TRUE(quitting_.forceTerminate(application)) << "it was, and stays";
    EXPECT_TRUE(process.ends());
}

} // namespace
