#include "desktop/DesktopTest.h"
#include "foundation/Json.h"

namespace corvane::desktop {
namespace {

class ImportExport : public DesktopTest {
protected:
    /// Presses the button of that name, and sees the chooser come.
    bool begin(const std::string& button, const std::string& message) {
        return desktop.press(button) && comes(message);
    }
    void type(const std::string& text) { desktop.run({"xdotool", "type", "--delay", "40", text}); }
    void key(const std::string& name) { desktop.run({"xdotool", "key", name}); }
    /// Imports that file, and gives the workspaces file.
    std::string import(const std::string& answered) {
        EXPECT_TRUE(begin("Import Workspaces", "Select a Corvane workspaces file to import"));
        EXPECT_TRUE(desktop.press("Out.json"));
        EXPECT_TRUE(desktop.press("Open"));
        EXPECT_TRUE(answer("Found 2 workspace(s). How would you like to import them?", answered));
        EXPECT_TRUE(answer("Successfully imported 2 workspace(s)!", "OK"));
        return readFile(desktop.workspacesFile());
    }
};

TEST_F(ImportExport, bringsEveryWorkspaceThroughAFile) {
    start({{"Garden", "What \"grows\"", "leaf", {{"Plan ä", "file", desktop.home("plan")}}},
           {"Office", "", "folder", {}}});
    openSettings();
    ASSERT_TRUE(begin("Export Workspaces", "Choose where to save your Corvane workspaces"));
    type("~/Out");
    key("Return");
    EXPECT_TRUE(answer("Workspaces exported to: Out.json", "OK"));
    const auto exported = readFile(desktop.home("Out.json"));

    const auto merged = import("Merge");
    const auto replaced = import("Replace All");
    EXPECT_EQ(json::prettyPrinted(replaced), exported);
    EXPECT_NE(exported.find("What \\\"grows\\\""), std::string::npos);
    const auto inside = replaced.substr(1, replaced.size() - 2);
    EXPECT_EQ(merged, "[" + inside + "," + inside + "]");

    EXPECT_EQ(closeWindow(), 0);
    desktop.startCorvane();
    EXPECT_TRUE(comes("Garden") && comes("Office"));
    EXPECT_EQ(closeWindow(), 0);
    EXPECT_EQ(readFile(desktop.workspacesFile()), replaced);
}

} // namespace
} // namespace corvane::desktop
