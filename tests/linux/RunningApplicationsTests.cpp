#include "Machine.h"
#include "linux/ApplicationIdentity.h"
#include "linux/ApplicationOpener.h"
#include "linux/LinuxScriptEngine.h"
#include "linux/RunningApplications.h"

#include <chrono>
#include <csignal>
#include <cstring>
#include <filesystem>
#include <optional>

#include <fcntl.h>
#include <gtest/gtest.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

using namespace corvane;
using namespace corvane::machine;

namespace {

using x11::ClientWindow;

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
                                                entry("two-words", "/opt/two words")};
    installed[2].startupWmClass = "crx_1";
    installed[3].startupWmClass = "Browser";
    installed[4].tryExec = "clock";

    struct Case {
        ClientWindow window;
        RunningProcess process;
        std::string expected;
    };
    const auto ofClass = [](const std::string& instance, const std::string& name) {
        ClientWindow window;
        window.instanceName = instance;
        window.className = name;
        return window;
    };
    ClientWindow hinted = ofClass("crx_1", "Browser");
    hinted.desktopFileHint = "/apps/gnome-clock.desktop";
    ClientWindow gtk = ofClass("browser", "browser");
    gtk.gtkApplicationId = "org.x.Editor";
    const std::vector<Case> cases{
        {ofClass("crx_1", "Browser"), {.sandboxIdentifier = "org.x.Editor"}, "org.x.Editor"},
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
        {ofClass("x", "X"), {.executable = "/usr/bin/env", .commandName = "clock"}, "gnome-clock"},
        {ofClass("\xff", ""), {.launchedDesktopFile = "/gone.desktop"}, ""},
        {{}, {}, ""},
    };
    for (const auto& [window, process, expected] : cases) {
        const auto* found = applicationOf(window, process, installed);
        EXPECT_EQ(found ? found->bundleIdentifier : "", expected)
            << window.instanceName << "/" << window.className << " " << process.executable;
    }
}

/// A program that lives as long as this.
class Program {
public:
    explicit Program(std::vector<std::string> words) {
        std::vector<char*> arguments;
        for (auto& word : words)
            arguments.push_back(word.data());
        arguments.push_back(nullptr);
        EXPECT_EQ(
            posix_spawnp(&process_, arguments[0], nullptr, nullptr, arguments.data(), environ), 0);
    }
    ~Program() {
        kill(process_, SIGKILL);
        waitpid(process_, nullptr, 0);
    }
    Program(const Program&) = delete;
    pid_t id() const { return process_; }

private:
    pid_t process_ = 0;
};

TEST(RunningProcessTest, aScriptIsItsOwnProgram) {
    write(place("bin/odd) name"), "read line\n");
    int ends[2];
    ASSERT_EQ(pipe2(ends, 0), 0);
    const int before = dup(0);
    dup2(ends[0], 0);
    const Program script({"/bin/bash", "--norc", place("bin/odd) name"), "argument"});
    dup2(before, 0);
    ASSERT_TRUE(comesTrue([&] {
        const auto process = runningProcess(script.id());
        return process && process->commandName == "odd) name";
    }));
    const auto process = runningProcess(script.id());
    EXPECT_EQ(process->executable, place("bin/odd) name"));
    EXPECT_GE(process->startTime, runningProcess(getpid())->startTime);
    EXPECT_FALSE(runningProcess(0));
    EXPECT_FALSE(runningProcess(-1));
    EXPECT_FALSE(runningProcess(1 << 30));
    for (const int descriptor : {ends[0], ends[1], before})
        close(descriptor);
}

/// Windows of this process, which say what a test makes them say.
class OwnWindows {
public:
    OwnWindows() : connection_(xcb_connect(nullptr, nullptr)) {
        screen_ = xcb_setup_roots_iterator(xcb_get_setup(connection_)).data;
    }
    ~OwnWindows() { xcb_disconnect(connection_); }
    OwnWindows(const OwnWindows&) = delete;

    xcb_window_t make() {
        const auto window = xcb_generate_id(connection_);
        xcb_create_window(connection_, XCB_COPY_FROM_PARENT, window, screen_->root, 0, 0, 90, 90, 0,
                          XCB_WINDOW_CLASS_INPUT_OUTPUT, XCB_COPY_FROM_PARENT, 0, nullptr);
        return window;
    }
    xcb_atom_t atom(const std::string& name) {
        const x11::Reply<xcb_intern_atom_reply_t> reply(xcb_intern_atom_reply(
            connection_,
            xcb_intern_atom(connection_, 0, static_cast<std::uint16_t>(name.size()), name.data()),
            nullptr));
        return reply->atom;
    }
    void set(xcb_window_t window, const std::string& property, const std::string& bytes,
             std::uint8_t format = 8) {
        xcb_change_property(connection_, XCB_PROP_MODE_REPLACE, window, atom(property),
                            XCB_ATOM_STRING, format,
                            static_cast<std::uint32_t>(bytes.size() * 8 / format), bytes.data());
    }
    void set(xcb_window_t window, const std::string& property, std::uint32_t value) {
        set(window, property, {reinterpret_cast<const char*>(&value), sizeof value}, 32);
    }
    void show(xcb_window_t window) {
        xcb_map_window(connection_, window);
        xcb_flush(connection_);
    }
    void close(xcb_window_t window) {
        xcb_destroy_window(connection_, window);
        xcb_flush(connection_);
    }
    void remove(xcb_window_t window, const std::string& property) {
        xcb_delete_property(connection_, window, atom(property));
    }
    xcb_window_t root() const { return screen_->root; }

private:
    xcb_connection_t* connection_;
    xcb_screen_t* screen_;
};

/// An X server of its own with a window manager.
class RunningApplicationsTest : public testing::Test {
protected:
    void SetUp() override {
        int ends[2];
        ASSERT_EQ(pipe2(ends, 0), 0);
        server_.emplace(std::vector<std::string>{"Xvfb", "-noreset", "-displayfd",
                                                 std::to_string(ends[1]), "-screen", "0",
                                                 "800x600x24", "-nolisten", "tcp"});
        close(ends[1]);
        char number[16] = {};
        ASSERT_GT(read(ends[0], number, sizeof number - 1), 0);
        close(ends[0]);
        display_.emplace("DISPLAY", ":" + std::to_string(std::atoi(number)));
        manager_.emplace(std::vector<std::string>{"openbox"});
        probe_.emplace();
        ASSERT_TRUE(comesTrue([this] { return managesWindows(); }));
        ASSERT_TRUE(lists(0));
        std::filesystem::remove(place("emulators/x-terminal-emulator"));
        std::filesystem::create_symlink("/usr/bin/xterm", place("emulators/x-terminal-emulator"));
        install("test.eyes", "Eyes", "Name[de]=Augen\nExec=xeyes");
    }
    void TearDown() override {
        uninstall("test.eyes");
        std::filesystem::remove(place("emulators/x-terminal-emulator"));
    }

    /// A window that comes while the manager starts escapes it, so each try has a new one.
    bool managesWindows() {
        const auto window = probe_->make();
        probe_->show(window);
        bool managed = false;
        for (int look = 0; look < 50 && !managed; ++look)
            managed = !running_.list().empty();
        probe_->close(window);
        return managed;
    }
    bool lists(std::size_t count) {
        return comesTrue([&] { return running_.list().size() == count; });
    }

    std::optional<Program> server_;
    std::optional<ScopedVariable> display_;
    std::optional<Program> manager_;
    /// Stays, as the ids of its windows would be used again.
    std::optional<OwnWindows> probe_;
    ScopedVariable path_{"PATH", place("emulators") + ":/usr/bin:/bin"};
    Catalogue catalogue_;
    RunningApplications running_{catalogue_};
};

TEST_F(RunningApplicationsTest, listsProcessesInTheOrderOfTheirStart) {
    const Program eyes({"xeyes"});
    ASSERT_TRUE(lists(1));
    const Program first({"xterm", "-e", "cat"});
    ASSERT_TRUE(lists(2));
    const Program second({"xterm", "-name", "other", "-iconic", "-e", "cat"});
    ASSERT_TRUE(lists(3));
    const auto applications = running_.list();
    EXPECT_EQ(applications[0].processIdentifier, eyes.id());
    EXPECT_EQ(applications[0].localizedName, "Augen");
    EXPECT_EQ(applications[0].bundleIdentifier, "test.eyes");
    EXPECT_EQ(applications[0].bundleURL->path(), "/Applications/Eyes.app");
    EXPECT_EQ(applications[0].executableURL->path(), "/usr/bin/xeyes");
    EXPECT_EQ(applications[0].activationPolicy, 0);
    EXPECT_FALSE(applications[0].isHidden);
    EXPECT_EQ(applications[1].processIdentifier, first.id());
    EXPECT_EQ(applications[2].processIdentifier, second.id());
    for (const int terminal : {1, 2}) {
        EXPECT_EQ(applications[terminal].localizedName, "Terminal");
        EXPECT_EQ(applications[terminal].bundleIdentifier, "com.apple.Terminal");
        EXPECT_EQ(applications[terminal].bundleURL->path(), terminalPath);
    }
    ASSERT_TRUE(comesTrue([&] { return running_.list()[2].isHidden; }));
    EXPECT_TRUE(running_.activate(second.id()));
    EXPECT_TRUE(comesTrue([&] { return !running_.list()[2].isHidden; }));
    EXPECT_FALSE(running_.activate(manager_->id()));
}

TEST_F(RunningApplicationsTest, aScriptOpensATerminalThatStays) {
    const ScopedVariable shell("SHELL", "/bin/sh");
    const ApplicationOpener opener(
        catalogue_, {.list = [this] { return running_.list(); },
                     .activate = [this](std::int32_t id) { return running_.activate(id); }});
    LinuxScriptEngine engine(opener);
    const auto file = place("notes/where");
    const auto outcome = engine.execute("tell application \"Terminal\"\n activate\n do script \"cd "
                                        "'/usr' && pwd > '" +
                                        file + "'; (exit 3)\"\nend tell");
    ASSERT_TRUE(outcome && outcome->hasResult);
    EXPECT_TRUE(comesTrue([&] { return read(file) == "/usr\n"; }));
    ASSERT_TRUE(lists(1));
    const auto terminal = running_.list().at(0);
    EXPECT_EQ(terminal.localizedName, "Terminal");
    EXPECT_EQ(kill(terminal.processIdentifier, SIGTERM), 0) << "it is there still";
    EXPECT_TRUE(lists(0));
}

TEST_F(RunningApplicationsTest, survivesWhatClientsSay) {
    OwnWindows own;
    const auto dock = own.make();
    own.set(dock, "_NET_WM_WINDOW_TYPE", own.atom("_NET_WM_WINDOW_TYPE_DOCK"));
    own.set(dock, "WM_CLASS",
            std::string("dock\0Do\xff"
                        "ck",
                        10));
    own.set(dock, "_NET_WM_PID", 1);
    own.set(dock, "_NET_WM_STATE", "nonsense");
    own.show(dock);
    ASSERT_TRUE(lists(1));
    auto application = running_.list().at(0);
    EXPECT_EQ(application.processIdentifier, getpid());
    EXPECT_EQ(application.activationPolicy, 1);
    EXPECT_EQ(application.localizedName, "Do\xEF\xBF\xBD"
                                         "ck");
    EXPECT_FALSE(application.bundleURL);
    EXPECT_EQ(application.bundleIdentifier, "app.corvane.Corvane");

    const auto window = own.make();
    own.set(window, "WM_CLASS", "");
    own.set(window, "WM_TRANSIENT_FOR", window);
    own.set(window, "_NET_WM_WINDOW_TYPE", "text");
    own.show(window);
    EXPECT_TRUE(comesTrue([&] { return running_.list().at(0).activationPolicy == 0; }));
    EXPECT_TRUE(lists(1));

    own.close(window);
    EXPECT_TRUE(comesTrue([&] { return running_.list().at(0).activationPolicy == 1; }));
    manager_.reset();
    std::string vanished(4 * sizeof window, '\0');
    std::memcpy(vanished.data(), &window, sizeof window);
    std::memcpy(vanished.data() + 8, &dock, sizeof dock);
    own.set(own.root(), "_NET_CLIENT_LIST", vanished, 32);
    own.set(own.root(), "_NET_CLIENT_LIST_STACKING", "text");
    own.show(dock);
    EXPECT_TRUE(lists(1));
}

TEST_F(RunningApplicationsTest, needsNoListOfTheWindowManagers) {
    manager_.reset();
    OwnWindows own;
    own.remove(own.root(), "_NET_CLIENT_LIST");
    own.remove(own.root(), "_NET_CLIENT_LIST_STACKING");
    const auto frame = own.make();
    const auto plain = own.make();
    own.set(plain, "WM_STATE", 1);
    own.show(plain);
    own.show(frame);
    EXPECT_TRUE(lists(1));
    own.close(plain);
    EXPECT_TRUE(lists(0));
}

TEST_F(RunningApplicationsTest, neverWaitsLongForTheServer) {
    using Clock = std::chrono::steady_clock;
    const Program eyes({"xeyes"});
    ASSERT_TRUE(lists(1));
    kill(server_->id(), SIGSTOP);
    RunningApplications fresh(catalogue_);
    for (auto* each : {&running_, &fresh}) {
        const auto start = Clock::now();
        EXPECT_TRUE(each->list().empty());
        EXPECT_FALSE(each->activate(eyes.id()));
        EXPECT_LT(Clock::now() - start, std::chrono::seconds(2));
    }
    kill(server_->id(), SIGCONT);
    EXPECT_TRUE(lists(1));
    EXPECT_TRUE(comesTrue([&] { return fresh.list().size() == 1; }));
    server_.reset();
    EXPECT_TRUE(running_.list().empty());
    display_.reset();
    const ScopedVariable none("DISPLAY", "");
    EXPECT_TRUE(RunningApplications(catalogue_).list().empty());
}

} // namespace
