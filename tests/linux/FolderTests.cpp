#include "Machine.h"
#include "linux/LinuxFileIcons.h"
#include "linux/LinuxFileSystem.h"

#include <algorithm>
#include <filesystem>

#include <gtest/gtest.h>
#include <sys/stat.h>

using namespace corvane;
using namespace corvane::machine;
namespace fs = std::filesystem;

namespace {

class FolderTest : public testing::Test {
protected:
    void SetUp() override { fs::create_directories(folder_); }
    void TearDown() override {
        fs::permissions(folder_, fs::perms::owner_all);
        fs::remove_all(folder_);
    }
    /// "name kind|" of each entry, in the order of the names; or the error.
    std::string listed(const std::string& path) const {
        auto found = files_.contentsOfDirectory(path);
        if (!found) return found.error().localizedDescription;
        std::ranges::sort(*found, {}, &DirectoryEntry::name);
        constexpr const char* kinds[]{"file", "folder", "application", "other"};
        std::string text;
        for (const auto& [name, kind] : *found)
            text += name + " " + kinds[std::size_t(kind)] + "|";
        return text;
    }

    const std::string folder_ = place("folder");
    Catalogue catalogue_;
    LinuxFileSystem files_{catalogue_};
};

TEST_F(FolderTest, holdsWhatStandsInItBehindItsLinks) {
    write(folder_ + "/.hidden", "");
    write(folder_ + "/Not an.app/file", "");
    write(folder_ + "/b\xff", "");
    fs::create_symlink("Not an.app", folder_ + "/link");
    fs::create_symlink("nowhere", folder_ + "/lost");
    ASSERT_EQ(::mkfifo((folder_ + "/pipe").c_str(), 0600), 0);
    EXPECT_EQ(listed(folder_), ".hidden file|Not an.app folder|b\xff file|link folder|lost other|"
                               "pipe other|");
    EXPECT_EQ(listed(folder_ + "/link/"), "file file|");
    for (const char* name : {"/.hidden", "/nowhere", "/lost"})
        EXPECT_TRUE(listed(folder_ + name).starts_with("Could not read " + folder_ + name));
}

TEST_F(FolderTest, ofTheApplicationsHoldsThoseThatTheDesktopShows) {
    install("f.background", "Background", "Exec=sh\nNoDisplay=true");
    const auto found = listed("/Applications");
    EXPECT_NE(found.find("Viewer.app application|"), std::string::npos) << found;
    EXPECT_EQ(found.find("Background"), std::string::npos);
    EXPECT_EQ(found, listed("/Applications/"));
    uninstall("f.background");
}

TEST_F(FolderTest, mayBeClosedToItsUser) {
    const AsOrdinaryUser user(folder_);
    EXPECT_TRUE(files_.isWritable(folder_));
    EXPECT_FALSE(files_.isWritable(folder_ + "/missing"));
    EXPECT_FALSE(files_.isWritable("/etc"));
    fs::permissions(folder_, fs::perms::owner_write | fs::perms::owner_read);
    EXPECT_FALSE(files_.isWritable(folder_)) << "can't be entered";
    fs::permissions(folder_, fs::perms::none);
    EXPECT_EQ(listed(folder_), "Could not read " + folder_ + ": Permission denied.");
}

TEST_F(FolderTest, andItsFilesHaveIcons) {
    const LinuxFileIcons fileIcons(catalogue_);
    const struct {
        const char* key;
        std::optional<std::string> icon;
    } cases[]{{"Icon=pen", "pen"},
              {"Icon=old.name.png", "old.name"},
              {"Icon=/a/pen.svg", "/a/pen.svg"},
              {"Icon=", std::nullopt},
              {"Comment=none", std::nullopt}};
    for (const auto& [key, icon] : cases) {
        install("f.pen", "Pen", std::string("Exec=sh\n") + key);
        EXPECT_TRUE(comesTrue([&] {
            return fileIcons.iconForFile("/Applications/Pen.app") == icon;
        })) << key;
    }
    uninstall("f.pen");
    write(folder_ + "/a.json", "[]");
    EXPECT_EQ(fileIcons.iconForFile(folder_ + "/a.json"), "application-json");
    EXPECT_EQ(fileIcons.iconForFile(folder_), "inode-directory");
    EXPECT_EQ(fileIcons.iconForFile(folder_ + "/missing"), std::nullopt);
}

} // namespace
