#include "desktop/DesktopTest.h"

#include <filesystem>

namespace corvane::desktop {
namespace {

using BadFile = DesktopTest;

TEST_F(BadFile, isToldOnceAndItsBytesOutliveIt) {
    const auto good = workspacesJson({{"One", "", "star", {{"a", "file", "/a"}}}});
    const auto folder = std::filesystem::path(desktop.workspacesFile()).parent_path();
    for (const auto& bytes : {good.substr(0, good.size() - 20), "[" + std::string(50 << 20, ' ')}) {
        std::filesystem::remove_all(folder);
        writeFile(desktop.workspacesFile(), bytes);
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
        EXPECT_EQ(closeWindow(), 0);
        int kept = 0;
        for (const auto& entry : std::filesystem::directory_iterator(folder)) {
            if (entry.path().string().find(".unreadable-") == std::string::npos) continue;
            EXPECT_TRUE(readFile(entry.path()) == bytes);
            ++kept;
        }
        EXPECT_EQ(kept, 1);
    }
}

} // namespace
} // namespace corvane::desktop
