#include "StoreOnDisk.h"
#include "core/StoreScene.h"
#include "foundation/Text.h"
#include "machine/Machine.h"

#include <algorithm>
#include <csignal>
#include <cstdio>
#include <filesystem>
#include <functional>

#include <gtest/gtest.h>
#include <sys/resource.h>
#include <unistd.h>

using namespace corvane;
using namespace corvane::machine;
namespace fs = std::filesystem;

namespace {

class StoreOnDiskTest : public testing::Test {
protected:
    void SetUp() override {
        fs::remove_all(folder_);
        fs::create_directories(folder_ + "/elsewhere");
        for (const char* name : {"a", "b", "c"})
            write(folder_ + "/elsewhere/" + name, name);
    }
    void TearDown() override { fs::remove_all(folder_); }

    /// A line for everything in the test's folder but one file: its mode, and what it holds.
    std::string everythingBut(const std::string& excluded) const {
        std::vector<std::string> lines;
        for (const auto& entry : fs::recursive_directory_iterator(
                 folder_, fs::directory_options::skip_permission_denied)) {
            const auto path = entry.path().string();
            if (path == excluded) continue;
            const auto mode = static_cast<int>(entry.symlink_status().permissions());
            lines.push_back(path + " " + std::to_string(mode) +
                            (entry.is_symlink()        ? " -> " + fs::read_symlink(path).string()
                             : entry.is_regular_file() ? " = " + read(path)
                                                       : " /"));
        }
        std::ranges::sort(lines);
        return text::joined(lines, "\n");
    }
    /// An edit and a bookmark, as a user without privileges.
    void use(StoreOnDisk& disk, const std::string& name) {
        const AsOrdinaryUser ordinary(folder_);
        disk.add(name);
        disk.bookmarks.resolveResource(folder_ + "/elsewhere/" + name, ResourceType::file);
    }
    std::string stored(StoreOnDisk& disk) const {
        return described(decodeWorkspaces(read(file_), disk.platform.bundles));
    }
    std::size_t storedBookmarks() const {
        const auto list = PropertyList::parse(read(cache_));
        return list ? list->as<PropertyList::Dictionary>()->size() : 0;
    }

    const std::string folder_ = place("disk");
    const ScopedVariable variable_{"XDG_DATA_HOME", folder_};
    const std::string data_ = folder_ + "/Corvane";
    const std::string file_ = data_ + "/corvane_workspaces.json";
    const std::string cache_ = data_ + "/bookmark_cache.plist";
};

/// Each trouble with the data directory or with a file in it: while it lasts memory keeps
/// everything and the disk stays as it is; the first save after it stores everything.
TEST_F(StoreOnDiskTest, whatCannotBeSavedIsKeptInMemoryUntilItCanBe) {
    const auto permit = [](const std::string& path, int mode) {
        fs::permissions(path, static_cast<fs::perms>(mode));
    };
    // A limit of the files' sizes stands for the end of the room: it comes in the middle of a file.
    const auto giveRoom = [](rlim_t bytes) {
        std::signal(SIGXFSZ, SIG_IGN);
        const rlimit limit{.rlim_cur = bytes, .rlim_max = RLIM_INFINITY};
        EXPECT_EQ(setrlimit(RLIMIT_FSIZE, &limit), 0);
    };
    const auto restore = [&](const std::string& file) { fs::remove_all(file); };
    using Step = std::function<void(const std::string& file)>;
    enum class Of { folder, file, cache, fileOfRoot };
    const struct {
        const char* name;
        Of of;
        Step begin;
        Step end;
    } troubles[]{
        {"a folder that can't be entered", Of::folder, [&](auto&) { permit(data_, 0); },
         [&](auto&) { permit(data_, 0755); }},
        {"no folder, and none can be made", Of::folder,
         [&](auto&) {
             fs::rename(data_, data_ + ".away");
             permit(folder_, 0555);
         },
         [&](auto&) { permit(folder_, 0755); }},
        {"a file in the folder's place", Of::folder,
         [&](auto&) {
             fs::rename(data_, data_ + ".away");
             write(data_, "text");
         },
         [&](auto&) { fs::remove(data_); }},
        {"a full disk", Of::folder, [&](auto&) { giveRoom(64); },
         [&](auto&) { giveRoom(RLIM_INFINITY); }},
        {"a folder in the file's place", Of::cache,
         [&](auto& file) {
             fs::remove(file);
             write(file + "/inside", "text");
         },
         restore},
        {"a read-only file", Of::file, [&](auto& file) { permit(file, 0444); },
         [&](auto& file) { permit(file, 0644); }},
        {"another user's file", Of::fileOfRoot,
         [&](auto& file) { EXPECT_EQ(chown(file.c_str(), 0, 0), 0); },
         [&](auto& file) { EXPECT_EQ(chown(file.c_str(), 65534, 65534), 0); }},
        {"a symbolic link into nowhere", Of::file,
         [&](auto& file) {
             fs::remove(file);
             fs::create_symlink(folder_ + "/later/file", file);
         },
         [&](auto&) {
             fs::create_directory(folder_ + "/later");
             permit(folder_ + "/later", 0777);
         }},
        {"a symbolic link in a circle", Of::file,
         [&](auto& file) {
             fs::remove(file);
             fs::create_symlink(file, file);
         },
         restore},
    };
    for (const auto& [name, of, begin, end] : troubles) {
        if (of == Of::fileOfRoot && geteuid() != 0) continue;
        for (const auto& file : {file_, cache_}) {
            if (of == Of::cache && file == file_) continue;
            SCOPED_TRACE(name + (" " + file));
            SetUp();
            std::unique_ptr<StoreOnDisk> disk;
            {
                const AsOrdinaryUser ordinary(folder_);
                disk = std::make_unique<StoreOnDisk>();
            }
            use(*disk, "a");
            begin(file);
            const auto unhindered = of == Of::folder ? "" : file == file_ ? cache_ : file_;
            const auto before = everythingBut(unhindered);
            use(*disk, "b");
            EXPECT_EQ(everythingBut(unhindered), before);
            EXPECT_EQ(described(disk->store.workspaces), "Personal() Work() Creative() a() b()");
            EXPECT_EQ(disk->bookmarks.bookmarkCache().size(), 2u);
            end(file);
            const bool isLink = fs::is_symlink(file);
            use(*disk, "c");
            EXPECT_EQ(stored(*disk), "Personal() Work() Creative() a() b() c()");
            EXPECT_EQ(storedBookmarks(), 3u);
            EXPECT_EQ(fs::is_symlink(file), isLink);
            EXPECT_EQ(read(folder_ + "/elsewhere/b"), "b");
        }
    }
}

TEST_F(StoreOnDiskTest, whatCanBeWrittenButNotReplacedIsWrittenInPlace) {
    std::unique_ptr<StoreOnDisk> disk;
    {
        const AsOrdinaryUser ordinary(folder_);
        disk = std::make_unique<StoreOnDisk>();
    }
    use(*disk, "a");
    fs::permissions(data_, fs::perms(0555));
    use(*disk, "b");
    EXPECT_EQ(stored(*disk), "Personal() Work() Creative() a() b()");
    EXPECT_EQ(storedBookmarks(), 2u);
    fs::permissions(data_, fs::perms(0755));
}

/// What Python's own reader or writer of property lists says.
std::string python(const std::string& script) {
    const auto command = "python3 -c '" + script + "'";
    std::string output;
    FILE* pipe = popen(command.c_str(), "r");
    for (int c = std::fgetc(pipe); c != EOF; c = std::fgetc(pipe))
        output += static_cast<char>(c);
    EXPECT_EQ(pclose(pipe), 0) << command;
    return output;
}

TEST_F(StoreOnDiskTest, anotherReaderAndWriterOfPropertyListsAgreesOnTheBookmarkCache) {
    const auto file = folder_ + "/elsewhere/Größe 📚.txt";
    write(file, "x");
    write(folder_ + "/applications/pad.desktop",
          "[Desktop Entry]\nType=Application\nName=Pad\nExec=true\n");
    {
        StoreOnDisk disk;
        disk.bookmarks.resolveResource(file, ResourceType::file);
        disk.bookmarks.resolveResource(folder_ + "/elsewhere", ResourceType::folder);
        disk.bookmarks.resolveResource("/Applications/Pad.app", ResourceType::application);
    }
    const auto load = "import plistlib as p\ncache = p.load(open(\"" + cache_ +
                      "\", \"rb\"), fmt=p.FMT_BINARY)\n";
    EXPECT_EQ(python(load + "for key, data in sorted(cache.items()):\n"
                            "    print(key, p.loads(data)[\"path\"].decode())"),
              "application:/Applications/Pad.app /Applications/Pad.app\n"
              "file:" +
                  file + " " + file + "\nfolder:" + folder_ + "/elsewhere " + folder_ +
                  "/elsewhere\n");

    fs::rename(file, file + ".moved");
    python(load + "p.dump(cache, open(\"" + cache_ + "\", \"wb\"), fmt=p.FMT_BINARY)");
    StoreOnDisk disk;
    EXPECT_EQ(disk.bookmarks.validateBookmarks(), (BookmarkCounts{3, 3, 0}));
    EXPECT_EQ(disk.bookmarks.resolveResource(file, ResourceType::file),
              Url::fromPath(file + ".moved"));
}

} // namespace
