#include "qt/Interface.h"
#include "qt/toolkit/QtPanels.h"

#include <gtest/gtest.h>

namespace corvane {
namespace {

class PanelViews : public testing::Test {
protected:
    Interface interface;
    QtPanels panels{interface.engine, interface.windows};
    std::string outcome;

    PanelViews() {
        auto& files = interface.desktop.files;
        files.contents = {{"/home/user/Documents/Old/2024.json", "[]"},
                          {"/home/user/Documents/Old/.2023.json", "[]"},
                          {"/home/user/Documents/notes.txt", ""}};
        interface.desktop.install({.path = "/Applications/Quill.app"});
        panels.serve(interface.platform);
        interface.open({});
    }
    void begin(PanelContent content, const std::string& directory = "") {
        outcome = "still up";
        panels.beginOpenPanel(
            {.title = "Pick", .message = "Take one", .content = content, .directory = directory},
            [this](const auto& url) { outcome = url ? url->path() : "cancelled"; });
        interface.runFor(0);
        EXPECT_TRUE(interface.shows("Take one"));
    }
};

TEST_F(PanelViews, leadThroughFoldersToAFile) {
    begin(PanelContent::json);
    EXPECT_FALSE(interface.isEnabled("Open"));
    EXPECT_FALSE(interface.shows("notes.txt"));
    interface.type("o");
    EXPECT_TRUE(interface.isEnabled("Open"));
    interface.key(Qt::Key_Return);
    EXPECT_TRUE(interface.shows("2024.json"));
    ASSERT_TRUE(interface.press("Show hidden files"));
    ASSERT_TRUE(interface.press(".2023.json"));
    interface.key(Qt::Key_Down);
    EXPECT_EQ(outcome, "still up");
    ASSERT_TRUE(interface.press("Open"));
    EXPECT_EQ(outcome, "/home/user/Documents/Old/2024.json");
    EXPECT_FALSE(interface.shows("Take one"));
}

TEST_F(PanelViews, sayWhatIsWrongWithATypedPath) {
    begin(PanelContent::json);
    interface.type("/lost");
    EXPECT_EQ(interface.focused(), "Name or path:");
    interface.key(Qt::Key_Return);
    EXPECT_TRUE(interface.shows("There is no file “/lost”."));
    ASSERT_TRUE(interface.press("Home"));
    EXPECT_FALSE(interface.shows("There is no file “/lost”."));
    EXPECT_TRUE(interface.shows("Documents"));
    interface.key(Qt::Key_Escape);
    EXPECT_EQ(outcome, "cancelled");
}

TEST_F(PanelViews, offerApplicationsByTheirNames) {
    begin(PanelContent::application, "/Applications");
    EXPECT_FALSE(interface.shows("Name or path:"));
    ASSERT_TRUE(interface.press("Quill"));
    interface.key(Qt::Key_Return);
    EXPECT_EQ(outcome, "/Applications/Quill.app");
}

} // namespace
} // namespace corvane
