#include "desktop/DesktopTest.h"

#include <filesystem>

#include <sys/stat.h>

namespace corvane::desktop {
namespace {

namespace fs = std::filesystem;

class BadFile : public DesktopTest {
protected:
    /// The one file that was moved aside.
    std::string movedAside() const {
        std::string found;
        for (const auto& entry :
             fs::directory_iterator(fs::path(desktop.workspacesFile()).parent_path())) {
            const std::string path = entry.path();
            if (path.find("corvane_workspaces.unreadable-") == std::string::npos) continue;
            EXPECT_EQ(found, "") << "two files were moved aside";
            found = path;
        }
        return found;
    }
    void comesUpAndSaysSoOnce() {
        desktop.startCorvane();
        EXPECT_TRUE(comes("It was kept, and Corvane goes on with a new file."));
        desktop.run({"xdotool", "key", "Return"});
        EXPECT_TRUE(comesTrue([&] { return !desktop.shows("Workspaces File Not Readable"); }));
        EXPECT_TRUE(comes("Personal"));
        EXPECT_FALSE(desktop.shows("OK"));
        EXPECT_EQ(closeWindow(), 0);
        desktop.startCorvane();
        EXPECT_TRUE(comes("Creative"));
        EXPECT_FALSE(desktop.shows("Workspaces File Not Readable"));
    }
    void startsOver() { fs::remove_all(fs::path(desktop.workspacesFile()).parent_path()); }
};

TEST_F(BadFile, isToldOnceAndItsBytesOutliveIt) {
    const auto good = workspacesJson({{"One", "", "star", {{"a", "file", "/a"}}}});
    auto wrongDeepInside = good;
    wrongDeepInside.replace(wrongDeepInside.find("\"file\""), 6, "\"File\"");
    const struct {
        const char* what;
        std::string bytes;
    } cases[]{
        {"cut short", good.substr(0, good.size() - 20)},
        {"not UTF-8", "[\"\xff\xfe\"]"},
        {"one object", "{}"},
        {"a wrong type deep inside", wrongDeepInside},
        {"50 MB that don't end", "[" + std::string(50 << 20, ' ')},
    };
    for (const auto& [what, bytes] : cases) {
        SCOPED_TRACE(what);
        startsOver();
        writeFile(desktop.workspacesFile(), bytes);
        comesUpAndSaysSoOnce();
        EXPECT_TRUE(readFile(movedAside()) == bytes);
        EXPECT_EQ(closeWindow(), 0);
    }
}

TEST_F(BadFile, mayBeNoFileAtAll) {
    writeFile(desktop.workspacesFile() + "/inside", "kept");
    comesUpAndSaysSoOnce();
    EXPECT_EQ(readFile(movedAside() + "/inside"), "kept");
    EXPECT_EQ(closeWindow(), 0);

    startsOver();
    fs::create_directories(fs::path(desktop.workspacesFile()).parent_path());
    ASSERT_EQ(mkfifo(desktop.workspacesFile().c_str(), 0600), 0);
    comesUpAndSaysSoOnce();
    EXPECT_TRUE(fs::is_fifo(movedAside()));
}

TEST_F(BadFile, isNoneAtAFirstStart) {
    desktop.startCorvane();
    EXPECT_TRUE(comes("Personal"));
    EXPECT_TRUE(comes("Work"));
    EXPECT_TRUE(comes("Creative"));
    EXPECT_FALSE(desktop.shows("OK"));
    EXPECT_NE(readFile(desktop.workspacesFile()).find("\"Personal\""), std::string::npos);
}

} // namespace
} // namespace corvane::desktop
