#include "desktop/DesktopTest.h"

#include <csignal>

namespace corvane::desktop {
namespace {

class Quit : public DesktopTest {
protected:
    void SetUp() override { writeFile(notes, "Some notes\n"); }
    bool isOpen(const std::string& windowClass) { return desktop.window(windowClass).has_value(); }
    bool goes(const std::string& program) {
        return comesTrue([&] { return desktop.processes(program).empty(); });
    }
    bool finish() { return desktop.press("Finish") && desktop.press("Finish & Close"); }

    const std::string notes = desktop.home("Documents/notes.txt");
    const std::string jobsMayRun = "Do you want to terminate running processes in this window?";
};

TEST_F(Quit, anEditorWithUnsavedTextAsksAndStays) {
    const auto bystander = desktop.start({TEST_CLIENT, "close"});
    start(
        {{"Writing", "", "pencil", {{"notes.txt", "file", notes}, {"Shell", "terminal", "true"}}}});
    ASSERT_TRUE(desktop.press("Start"));
    ASSERT_TRUE(opens("mousepad", "notes.txt"));
    ASSERT_TRUE(comesTrue([&] { return isOpen("xterm"); }));
    ASSERT_TRUE(comes("2 resources running"));
    // The window may take the keyboard late.
    ASSERT_TRUE(comesTrue([&] {
        const auto editor = desktop.window("mousepad", "notes.txt");
        return editor && desktop.type(*editor, "unsaved ") && desktop.window("mousepad", "*");
    }));
    ASSERT_TRUE(finish());
    // What runs in a terminal nobody tells on some.
    if (!desktop.screen().tellsProcesses()) {
        EXPECT_TRUE(answer(jobsMayRun, "Terminate"));
    }
    EXPECT_TRUE(goes("xterm"));
    EXPECT_TRUE(answer("Gracefully quit: 2", "OK"));
    EXPECT_FALSE(desktop.processes("mousepad").empty());
    EXPECT_EQ(readFile(notes), "Some notes\n");
    EXPECT_TRUE(bystander->isRunning());
}

TEST_F(Quit, aJobInATerminalLivesUntilTheQuestionIsAnswered) {
    start({{"Build", "", "hammer", {{"Shell", "terminal", "sleep 300"}}}});
    const auto startsJob = [&] {
        return desktop.press("Start") &&
               comesTrue([&] { return !desktop.processes("sleep").empty(); }) &&
               comes("1 resources running");
    };
    ASSERT_TRUE(startsJob());
    ASSERT_TRUE(finish());
    ASSERT_TRUE(comes("sleep"));
    EXPECT_TRUE(answer(jobsMayRun, "Cancel"));
    EXPECT_TRUE(answer("Gracefully quit: 1", "OK"));
    ASSERT_FALSE(desktop.processes("sleep").empty());
    // Without its job the terminal is closed like any other.
    kill(desktop.processes("sleep").front(), SIGKILL);
    ASSERT_TRUE(goes("sleep"));
    ASSERT_TRUE(startsJob());
    ASSERT_TRUE(finish());
    EXPECT_TRUE(answer(jobsMayRun, "Terminate"));
    EXPECT_TRUE(goes("sleep") && goes("xterm"));
}

TEST_F(Quit, ofTwoApplicationsInAProcessAndOfTwoWithOneNameOnlyTheNamedOneGoes) {
    const std::string client = TEST_CLIENT " close _NET_WM_WINDOW_TYPE_NORMAL ";
    desktop.install("office.writer", "Writer", client + "writer calc\nStartupWMClass=writer");
    desktop.install("office.calc", "Calc", client + "writer calc\nStartupWMClass=calc");
    for (const auto* name : {"a", "b"}) {
        const auto twin = std::string("twin") + name;
        desktop.install(twin, "Twin", client + twin + " " + twin + "\nStartupWMClass=" + twin);
    }
    const auto other =
        desktop.start({TEST_CLIENT, "close", "_NET_WM_WINDOW_TYPE_NORMAL", "twina", "twina"});
    start({{"Letters",
            "",
            "pencil",
            {{"Writer", "application", "/Applications/Writer.app"},
             {"Twin", "application", "/Applications/Twin [twinb].app"}}}});
    ASSERT_TRUE(desktop.press("Start"));
    for (const auto* each : {"writer", "calc", "twina", "twinb"})
        ASSERT_TRUE(comesTrue([&] { return isOpen(each); })) << each;
    ASSERT_TRUE(comes("2 resources running"));
    ASSERT_TRUE(finish());
    EXPECT_TRUE(answer("Successfully closed 2 workspace applications!", "OK"));
    EXPECT_TRUE(comesTrue([&] { return !isOpen("writer") && !isOpen("twinb"); }));
    EXPECT_TRUE(isOpen("calc") && isOpen("twina"));
}

TEST_F(Quit, focusModeClearsTheDeskOfAllButTheWorkspaceAndTheSession) {
    const auto unrelated = desktop.start({TEST_CLIENT, "close"});
    const std::string platform = desktop.screen().hasHands() ? "xcb" : "wayland";
    const auto native = desktop.start({"env", "QT_QPA_PLATFORM=" + platform, WINDOW_CLIENT,
                                       "native", "300", "200", "0", "0", "0", "0", "closes"});
    const auto panel = desktop.start(desktop.screen().panel());
    start({{"Writing", "", "pencil", {{"notes.txt", "file", notes}}}});
    ASSERT_TRUE(
        comesTrue([&] { return desktop.windows().size() >= 3 && isOpen("window_client"); }));
    ASSERT_TRUE(desktop.press("Focus Mode"));
    ASSERT_TRUE(desktop.press("Start"));
    EXPECT_TRUE(opens("mousepad", "notes.txt"));
    EXPECT_EQ(unrelated->waitForEnd(), 0);
    EXPECT_EQ(native->waitForEnd(), 0);
    EXPECT_TRUE(panel->isRunning());
    EXPECT_TRUE(desktop.corvane().isRunning());
    EXPECT_FALSE(desktop.shows("OK"));
}

} // namespace
} // namespace corvane::desktop
