#include "desktop/DesktopTest.h"
#include "foundation/Text.h"

#include <algorithm>
#include <filesystem>

namespace corvane::desktop {
namespace {

class Start : public DesktopTest {
protected:
    std::string document(const std::string& name) {
        const auto path = desktop.home("Documents/" + name);
        writeFile(path, "Text of " + name + "\n");
        return path;
    }
    static bool standsIn(pid_t process, const std::string& folder) {
        std::error_code gone;
        const auto link = "/proc/" + std::to_string(process) + "/cwd";
        return std::filesystem::read_symlink(link, gone) == folder;
    }
    /// A terminal emulator can be there twice: as the Terminal, and as an application.
    long terminalWindows() const {
        return std::ranges::count_if(desktop.windows(), [](const Window& window) {
            return text::lowercased(window.windowClass).ends_with("xterm");
        });
    }
};

TEST_F(Start, opensOneResourceOfEachType) {
    writeFile(desktop.home("site/page.html"), "<title>Served page</title>A page.");
    const auto server = desktop.start({"python3", "-m", "http.server", "--bind", "127.0.0.1",
                                       "--directory", desktop.home("site"), "8765"});
    writeFile(desktop.home("Pictures/sketch.txt"), "");
    start({{"Everything",
            "",
            "star",
            {{"notes.txt", "file", document("notes.txt")},
             {"Pictures", "folder", desktop.home("Pictures")},
             {"XTerm", "application", "/Applications/XTerm.app"},
             {"-", "separator", ""},
             {"Page", "url", "http://127.0.0.1:8765/page.html"},
             {"Command", "terminal", desktop.home("site") + "|ls > listed"}}}});
    ASSERT_TRUE(comes("Everything"));
    const auto before = readFile(desktop.workspacesFile());
    ASSERT_TRUE(desktop.press("Start"));

    EXPECT_TRUE(opens("mousepad", "notes.txt"));
    EXPECT_TRUE(opens("pcmanfm", "Pictures"));
    EXPECT_TRUE(comesTrue([&] { return terminalWindows() == 2; }));
    EXPECT_TRUE(comesTrue([&] { return readFile(desktop.home("site/listed")) != ""; }));
    EXPECT_EQ(readFile(desktop.home("site/listed")), "listed\npage.html\n");
    EXPECT_TRUE(opens("firefox-esr", "Served page"));
    for (const auto* program : {"mousepad", "pcmanfm", "xterm", "firefox-esr"}) {
        EXPECT_FALSE(desktop.processes(program).empty()) << program;
    }
    EXPECT_TRUE(comes("Running"));
    EXPECT_TRUE(comes("5 resources running"));
    EXPECT_EQ(readFile(desktop.workspacesFile()), before);

    EXPECT_EQ(closeWindow(), 0);
    EXPECT_TRUE(desktop.window("mousepad", "notes.txt"));
}

TEST_F(Start, opensAFolderInAnEmulatorThatAServerShows) {
    writeFile(desktop.home(".config/mimeapps.list"),
              "[Default Applications]\ninode/directory=org.gnome.Terminal.desktop\n");
    const auto folder = desktop.home("Documents");
    writeFile(folder + "/notes.txt", "");
    start({{"Texts", "", "star", {{"Documents", "folder", folder}}}});
    ASSERT_TRUE(desktop.press("Start"));
    EXPECT_TRUE(comesTrue([&] { return desktop.window("gnome-terminal").has_value(); }));
    const auto shellStandsThere = [&] {
        const auto servers = desktop.processes("gnome-terminal-server");
        const auto shells = servers.empty() ? std::vector<pid_t>() : descendants(servers.front());
        return shells.size() == 1 && standsIn(shells.front(), folder);
    };
    EXPECT_TRUE(comesTrue(shellStandsThere));
}

TEST_F(Start, comesInFrontOfCorvane) {
    start({{"Notes", "", "star", {{"notes.txt", "file", document("notes.txt")}}}});
    ASSERT_TRUE(desktop.press("Start"));
    EXPECT_TRUE(
        comesTrue([&] { return desktop.screen().front().find("notes.txt") != std::string::npos; }));
    // Compositors give nobody a token for that.
    if (!desktop.screen().hasHands()) return;
    const auto editors = desktop.processes("mousepad");
    ASSERT_EQ(editors.size(), 1u);
    const auto environment = readFile("/proc/" + std::to_string(editors.front()) + "/environ");
    for (const auto* told : {"DESKTOP_STARTUP_ID=corvane-", "XDG_ACTIVATION_TOKEN=corvane-"})
        EXPECT_NE(environment.find(told), std::string::npos) << told;
}

TEST_F(Start, goesOnWhenTheWindowIsClosedAtOnce) {
    start({{"Notes", "", "star", {{"notes.txt", "file", document("notes.txt")}}}});
    ASSERT_TRUE(desktop.press("Start"));
    EXPECT_EQ(closeWindow(), 0);
    EXPECT_TRUE(opens("mousepad", "notes.txt"));
}

} // namespace
} // namespace corvane::desktop
