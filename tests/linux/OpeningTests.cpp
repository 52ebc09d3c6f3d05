#include "bus/BusService.h"
#include "linux/installed/EntryLaunching.h"
#include "linux/running/ApplicationOpener.h"
#include "linux/running/LaunchedApplications.h"
#include "linux/running/LinuxApplications.h"
#include "linux/running/Quitting.h"
#include "linux/running/RunningApplications.h"
#include "linux/scripts/OpenTool.h"
#include "linux/system/UserFolders.h"
#include "linux/windows/WindowSystems.h"
#include "machine/Machine.h"

#include <future>

using namespace corvane;
using namespace corvane::machine;

namespace {

struct OpeningTest : testing::Test {
    void SetUp() override { write(note_, "words\n"); }
    int openTool(const std::vector<std::string>& arguments) {
        return runOpenTool(opener_, arguments).status;
    }
    std::string openWith(const std::string& url, const std::string& application) {
        std::string outcome = "not called";
        applications_.openUrl(*Url::parse(url),
                              Url::fromPath("/Applications/" + application + ".app"),
                              [&](const auto& opened) { outcome = outcomeOf(opened); });
        return outcome;
    }
    static std::string outcomeOf(const auto& opened) {
        return opened ? "opened" : opened.error().localizedDescription;
    }

    const std::string note_ = place("notes/a note.txt");
    const std::string noteUrl_ = Url::fromPath(note_).absoluteString();
    std::vector<RunningApplication> running_;
    std::vector<int> activated_;
    std::vector<std::string> begun_, ended_, started_;
    InstalledApplications installed_;
    ApplicationOpener opener_{
        installed_,
        {.list = [this] { return running_; },
         .activate =
             [this](const RunningApplication& which) {
                 activated_.push_back(which.processIdentifier);
                 return which.processIdentifier != 1;
             },
         .launched =
             [this](const InstalledApplication& which, const std::vector<pid_t>& processes) {
                 started_.push_back(which.name + " in " + std::to_string(processes.size()));
             },
         .beginLaunch =
             [this](const InstalledApplication& which) {
                 begun_.push_back(which.name);
                 return "token-" + std::to_string(begun_.size());
             },
         .endLaunch = [this](const std::string& token) { ended_.push_back(token); }}};
    const std::unique_ptr<WindowSystem> system_ = windowSystemHere();
    LaunchedApplications launched_;
    RunningApplications onDisplay_{installed_, *system_, launched_};
    Quitting quitting_{*system_, onDisplay_, {}};
    LinuxApplications applications_{opener_, onDisplay_, quitting_};
};

RunningApplication process(std::int32_t identifier, const std::string& bundleIdentifier) {
    return {.processIdentifier = identifier, .bundleIdentifier = bundleIdentifier};
}

using Records = std::vector<std::string>;

TEST_F(OpeningTest, refusesWhatNothingOpens) {
    write(place("notes/odd.xyz"), std::string("\0\1\2", 3));
    for (const auto& url : {Url::fromPath(place("notes/missing.txt")), *Url::parse("unheard:of"),
                            Url::fromPath(place("notes/odd.xyz")), *Url::parse("relative"),
                            Url::fromPath("/Applications/Nobody.app")}) {
        EXPECT_FALSE(applications_.openUrl(url)) << url.absoluteString();
    }
}

TEST_F(OpeningTest, aBundleComesForwardOrStarts) {
    const auto viewer = Url::fromPath("/Applications/Viewer.app");
    running_ = {{.processIdentifier = 9},
                process(1, "test.viewer"),
                process(2, "test.viewer"),
                process(3, "com.apple.finder")};
    EXPECT_TRUE(applications_.openUrl(viewer));
    EXPECT_TRUE(applications_.openUrl(Url::fromPath("/Applications/Files.app")));
    EXPECT_EQ(activated_, (std::vector{1, 2, 3}));
    EXPECT_EQ(started_, Records{});
    running_.resize(2);
    EXPECT_TRUE(applications_.openUrl(viewer));
    EXPECT_EQ(records("viewer", 1), Records{""}) << "process 1 has no window to show";
    EXPECT_EQ(started_, Records{"Viewer in 1"});
    running_.clear();
    EXPECT_TRUE(ApplicationOpener(installed_, {}).open(viewer));
    EXPECT_EQ(records("viewer", 2), (Records{"", ""})) << "where nobody tells what runs";
    std::string here;
    LinuxApplications with(opener_, onDisplay_, quitting_, [&](const Url& url) {
        here += url.absoluteString();
        return true;
    });
    EXPECT_TRUE(with.openUrl(*Url::parse("unheard:of")));
    EXPECT_EQ(here, "unheard:of") << "it is the program's own affair";
}

TEST_F(OpeningTest, aGivenApplicationOpensOrSaysWhyNot) {
    EXPECT_EQ(openWith(noteUrl_, "Web"), "opened");
    EXPECT_EQ(records("web", 1), Records{noteUrl_});
    EXPECT_EQ(openWith("file:///Applications/Web.app", "Viewer"), "opened");
    EXPECT_EQ(records("viewer", 1), Records{""});
    EXPECT_EQ(openWith(noteUrl_, "Nobody"), "There is no application at /Applications/Nobody.app.");
    install("test.nobody", "Unheard", "DBusActivatable=true");
    for (const auto* application : {"Viewer", "Unheard"})
        EXPECT_EQ(openWith("nowhere", application), "nowhere is not an address.");
    // Installed when looked up, gone when started.
    const auto program = makeProgram("bin/vanishing", "");
    install("test.vanishing", "Vanishing", "Exec=" + program);
    ASSERT_TRUE(installed_.byDesktopId("test.vanishing.desktop"));
    fs::remove(program);
    EXPECT_FALSE(applications_.openUrl(Url::fromPath("/Applications/Vanishing.app")));
    EXPECT_NE(openWith(noteUrl_, "Vanishing").find("The program is missing"), std::string::npos);
    InstalledApplication nothing;
    nothing.displayName = "Nothing";
    EXPECT_EQ(outcomeOf(launchEntry(nothing, {}, {}, {})),
              "Nothing could not be opened: its entry names no program.");
}

TEST_F(OpeningTest, looksUpHandlersAndListsAndTheHandlerGetsTheItem) {
    EXPECT_TRUE(applications_.openUrl(Url::fromPath(note_)));
    EXPECT_EQ(records("viewer", 1), Records{noteUrl_});
    const auto handler = [&](const std::string& url) {
        const auto found = applications_.urlForApplicationToOpen(*Url::parse(url));
        return found ? found->path() : "";
    };
    EXPECT_EQ(handler("HTTP://x.example/?a"), "/Applications/Web.app");
    EXPECT_EQ(handler(noteUrl_), "/Applications/Viewer.app");
    EXPECT_EQ(handler("file:///usr/"), "/Applications/Files.app");
    EXPECT_EQ(handler("file:///Applications/Web.app/"), "/Applications/Web.app");
    EXPECT_EQ(handler("unheard:of"), "");
    EXPECT_EQ(handler("file://otherhost" + noteUrl_.substr(7)), "") << "it isn't that file";
    EXPECT_EQ(applications_.urlForApplication("test.web")->path(), "/Applications/Web.app");
    const auto all = applications_.urlsForApplications("");
    for (const char* path : {"/Applications/Web.app", "/Applications/Files.app"})
        EXPECT_EQ(std::ranges::count(all, Url::fromPath(path)), 1);
    EXPECT_EQ(applications_.urlsForApplications("test.web").size(), 1u);
    EXPECT_TRUE(applications_.urlsForApplications("nobody").empty());
}

TEST_F(OpeningTest, revealingIsTheFileManagersAffairAndWithoutASessionBusOpensTheFolder) {
    applications_.activateFileViewerSelecting(Url::fromPath(note_));
    EXPECT_EQ(records("files", 1), Records{place("notes")});
    clearRecords();
    const auto manager = place("data/applications/test.files.desktop");
    const auto kept = read(manager);
    fs::remove(manager);
    applications_.activateFileViewerSelecting(Url::fromPath(note_)); // Nothing opens folders.
    write(manager, kept);
    const TestBus bus;
    const BusService service(bus.address(), "org.freedesktop.FileManager1",
                             {{"/org/freedesktop/FileManager1",
                               "<interface name='org.freedesktop.FileManager1'>"
                               "<method name='ShowItems'><arg type='as' direction='in'/>"
                               "<arg type='s' direction='in'/></method></interface>"}},
                             [](const BusService::Call&) -> GVariant* { return nullptr; });
    applications_.activateFileViewerSelecting(Url::fromPath(note_));
    EXPECT_TRUE(comesTrue([&] { return service.calls().size() == 1; }));
    applications_.activateFileViewerSelecting(Url::fromPath("/Applications/Viewer.app"));
    EXPECT_TRUE(comesTrue([&] { return service.calls().size() == 2; }));
    const auto entry = Url::fromPath(place("data/applications/test.viewer.desktop"));
    EXPECT_EQ(service.calls(), (Records{"ShowItems (['" + noteUrl_ + "'], '')",
                                        "ShowItems (['" + entry.absoluteString() + "'], '')"}));
    EXPECT_TRUE(namesIn(place("records")).empty());
}

TEST_F(OpeningTest, openToolHandsOverItemsAndArguments) {
    const std::tuple<Records, std::string, Records> cases[]{
        {{"-a", "Viewer", note_}, "viewer", {noteUrl_}},
        {{"-a", "Viewer", noteUrl_}, "viewer", {noteUrl_}},
        {{"-a", "Web", "--args", "--new-tab", "-a"}, "web", {"--new-tab|-a"}},
        {{"-a", "Web", note_, "http://y", "--args", "x"}, "web", {"http://y|x", noteUrl_ + "|x"}},
        {{"--new", "-a", "Viewer"}, "viewer", {""}},
        {{"-a", "/Applications/Viewer.app", "/Applications/Web.app", "--new"}, "viewer", {""}}};
    running_ = {process(5, "test.viewer"), process(6, "test.web")};
    for (const auto& [arguments, label, starts] : cases) {
        clearRecords();
        EXPECT_EQ(openTool(arguments), 0) << text::joined(arguments, " ");
        auto expected = starts;
        std::ranges::sort(expected);
        EXPECT_EQ(records(label, starts.size()), expected) << text::joined(arguments, " ");
    }
    EXPECT_TRUE(activated_.empty());
    EXPECT_EQ(openTool({"-a", "Viewer"}), 0);
    EXPECT_EQ(openTool({"-a", "/Applications/Viewer.app", "/Applications/Viewer.app"}), 0);
    EXPECT_EQ(activated_, (std::vector{5, 5}));
}

TEST_F(OpeningTest, openToolFailsWithStatusOne) {
    for (const auto& arguments :
         {Records{}, {"-a"}, {"-a", "Nobody"}, {note_}, {"-R", "-a", "Web"}})
        EXPECT_EQ(openTool(arguments), 1) << text::joined(arguments, " ");
    for (const auto& item : {place("notes/missing"), std::string("http://x"), std::string("x")})
        EXPECT_EQ(openTool({"-a", "Files", item}), 1) << item;
}

TEST_F(OpeningTest, nothingThatAStrangerNamesRunsOrBecomesAnOption) {
    const auto world = place("world");
    const std::string run = "$(touch PWNED)`touch PWNED`;touch PWNED;'\"";
    const auto evil = place("world/a" + run + "\n%f %U.txt");
    write(evil, "x");
    const std::string recorder = place("bin/recorder");
    for (const auto* line :
         {"RECORDER hostile %f", "sh -c \"RECORDER hostile %f\"", "sh -c \"RECORDER hostile '%f'\"",
          "sh -c \"RECORDER hostile \\\\\"%f\\\\\"\"",
          "env A=b bash -ec \"RECORDER hostile %f\" name"}) {
        clearRecords();
        install("test.hostile", "Hostile " + run,
                "Path=" + world + "\nExec=" + text::replacingAll(line, "RECORDER", recorder));
        const auto application = installed_.byDesktopId("test.hostile.desktop");
        EXPECT_EQ(outcomeOf(opener_.open(Url::fromPath(evil), application.value())), "opened");
        EXPECT_EQ(records("hostile", 1), Records{evil}) << line;
        EXPECT_EQ(namesIn(world).size(), 1u) << line;
    }
}

TEST_F(OpeningTest, whatNeedsATerminalGetsOneAndATerminalOpensAFolderByStandingInIt) {
    fs::copy_file(place("bin/recorder"), place("terminals/x-terminal-emulator"),
                  fs::copy_options::overwrite_existing);
    install("test.pager", "Pager", recording("pager", "%F") + "\nTerminal=true\nPath=/usr");
    const auto where =
        makeProgram("bin/where", "exec " + place("bin/recorder") + " where \"$PWD\"\n");
    install("test.emulator", "Emulator", "Exec=" + where + "\nCategories=TerminalEmulator;");
    {
        const ScopedVariable path("PATH", place("terminals") + ":" + std::getenv("PATH"));
        EXPECT_EQ(openWith(noteUrl_, "Pager"), "opened");
        EXPECT_EQ(records("-e", 1), Records{place("bin/recorder") + "|pager|" + note_});
    }
    const auto pager = *installed_.byDesktopId("test.pager.desktop");
    EXPECT_EQ(outcomeOf(launchEntry(pager, {}, {}, {})),
              "Pager could not be opened: it runs in a terminal, and none is installed.");
    const std::pair<std::string, std::string> paths[]{{place("notes"), place("notes")},
                                                      {"/no/such/folder", userFolders::home()}};
    fs::create_directories(userFolders::home());
    for (const auto& [path, folder] : paths) {
        clearRecords();
        install("test.placed", "Placed", "Exec=" + where + "\nPath=" + path);
        EXPECT_EQ(openWith(noteUrl_, "Placed"), "opened");
        EXPECT_EQ(records("where", 1), Records{folder}) << path;
    }
    clearRecords();
    const auto folder = Url::fromPath(place("notes"));
    EXPECT_EQ(openWith(folder.absoluteString(), "Emulator"), "opened");
    EXPECT_EQ(records("where", 1), Records{place("notes")});
    EXPECT_NE(openWith(noteUrl_, "Emulator").find("only folders"), std::string::npos);
    const auto emulator = *installed_.byDesktopId("test.emulator.desktop");
    EXPECT_EQ(launchEntry(emulator, {folder.absoluteString()}, {}, {})->size(), 1u);
    install("test.taker", "Taker", recording("taker", "%F") + "\nCategories=TerminalEmulator;");
    EXPECT_EQ(openWith(noteUrl_, "Taker"), "opened");
    EXPECT_EQ(records("taker", 1), Records{note_}) << "it asks for items";
}

TEST_F(OpeningTest, whatTakesATokenHasOneInItsEnvironment) {
    const auto program =
        makeProgram("bin/told", "exec " + place("bin/recorder") +
                                    " told \"$XDG_ACTIVATION_TOKEN\" \"$DESKTOP_STARTUP_ID\"\n");
    const ScopedVariable token("XDG_ACTIVATION_TOKEN", "our own");
    const ScopedVariable startupId("DESKTOP_STARTUP_ID", "our own");
    const std::pair<std::string, std::string> cases[]{
        {"StartupNotify=true\nExec=", "token-1|token-1"},
        {"StartupNotify=false\nExec=", "|"},
        {"Exec=", "|"},
        {"StartupNotify=true\nCategories=TerminalEmulator;\nExec=", "token-2|token-2"}};
    for (const auto& [keys, told] : cases) {
        clearRecords();
        install("test.told", "Told", keys + program);
        EXPECT_EQ(openWith(Url::fromPath(place("notes")).absoluteString(), "Told"), "opened");
        EXPECT_EQ(records("told", 1), Records{told}) << keys;
    }
    EXPECT_TRUE(ended_.empty()) << "the program says it itself";
    const auto application = installed_.byDesktopId("test.told.desktop");
    fs::remove(program);
    EXPECT_FALSE(opener_.launch(application.value()));
    EXPECT_EQ(ended_, Records{"token-3"});
}

TEST_F(OpeningTest, anEntryWithoutAProgramIsStartedOnTheBusWithItsTokenAndNoArguments) {
    install("test.on.bus", "On Bus", "DBusActivatable=true\nStartupNotify=true");
    const auto application = installed_.byDesktopId("test.on.bus.desktop").value();
    const auto whyNot = [&](const Records& arguments) {
        return outcomeOf(launchEntry(application, {}, arguments, {}));
    };
    EXPECT_EQ(whyNot({}), "On Bus could not be opened: there is no session bus to start it on.");
    const TestBus bus;
    std::promise<void> answers;
    const auto whenever = answers.get_future().share();
    const BusService service(
        bus.address(), "test.on.bus",
        {{"/test/on/bus", "<interface name='org.freedesktop.Application'><method name='Activate'>"
                          "<arg type='a{sv}' direction='in'/></method><method name='Open'>"
                          "<arg type='as' direction='in'/><arg type='a{sv}' direction='in'/>"
                          "</method></interface>"}},
        [&](const BusService::Call& call) -> GVariant* {
            if (call.method == "Activate") whenever.wait();
            return nullptr;
        });
    const auto told = [](const std::string& token) {
        return "{'desktop-startup-id': <'" + token + "'>, 'activation-token': <'" + token + "'>}";
    };
    EXPECT_EQ(openTool({"-a", "On Bus", note_}), 0);
    EXPECT_EQ(openTool({"-a", "On Bus", "--args", "x"}), 1);
    EXPECT_EQ(ended_, Records{"token-2"});
    EXPECT_EQ(whyNot({"x"}),
              "On Bus could not be opened: it is started over the session bus, with no arguments.");
    EXPECT_EQ(openTool({"-a", "On Bus"}), 0) << "it may take as long as it likes";
    answers.set_value();
    EXPECT_EQ(service.calls(), (Records{"Open (['" + noteUrl_ + "'], " + told("token-1") + ")",
                                        "Activate (" + told("token-3") + ",)"}));
    install("test.nobody", "Nobody", "DBusActivatable=true");
    EXPECT_EQ(openTool({"-a", "Nobody"}), 1);
}

TEST_F(OpeningTest, anExecutableThatNothingOpensIsRun) {
    const auto program = place("notes/program");
    fs::copy_file("/usr/bin/mktemp", program);
    place("notes/made/any");
    const ScopedVariable made("TMPDIR", "made");
    fs::permissions(program, fs::perms::owner_read);
    const auto whyNot = [&](const std::string& url) {
        return outcomeOf(opener_.open(*Url::parse(url)));
    };
    const auto url = Url::fromPath(program).absoluteString();
    EXPECT_EQ(whyNot(url), "No application opens " + url + ".") << "it isn't executable yet";
    fs::permissions(program, fs::perms::owner_all);
    EXPECT_TRUE(applications_.openUrl(Url::fromPath(program)));
    EXPECT_TRUE(comesTrue([&] { return namesIn(place("notes/made")).size() == 1; }));
    EXPECT_FALSE(applications_.openUrl(*Url::parse("file://otherhost" + url.substr(7))));
    const auto stranger = "corvane-nobody:" + url.substr(7);
    EXPECT_EQ(whyNot(stranger), "No application opens " + stranger + ".");
    EXPECT_EQ(namesIn(place("notes/made")).size(), 1u) << "it wasn't run";
    const auto beginning = read(program).substr(0, 64);
    fs::remove(program);
    write(program, beginning);
    fs::permissions(program, fs::perms::owner_all);
    EXPECT_TRUE(whyNot(url).starts_with("Could not start " + program + ": ")) << whyNot(url);
    fs::remove(program);
}

} // namespace
