#include "StoreOnDisk.h"
#include "core/StoreScene.h"
#include "linux/system/FileDescriptor.h"
#include "machine/Program.h"

#include <csignal>

#include <fcntl.h>
#include <sched.h>
#include <sys/mount.h>
#include <sys/resource.h>
#include <sys/statvfs.h>
#include <sys/wait.h>
#include <unistd.h>

using namespace corvane;
using namespace corvane::machine;

namespace {

bool mayMount() {
    static const bool may = unshare(CLONE_NEWNS) == 0 &&
                            mount(nullptr, "/", nullptr, MS_REC | MS_PRIVATE, nullptr) == 0;
    return may;
}

/// Only the superuser makes some troubles, also in the middle of what another user does.
void asSuperuser(const std::function<void()>& act) {
    const uid_t user = geteuid();
    EXPECT_EQ(seteuid(0), 0);
    act();
    EXPECT_EQ(seteuid(user), 0);
}

void mountDeadFileSystem(const std::string& folder) {
    const FileDescriptor fuse(open("/dev/fuse", O_RDWR | O_CLOEXEC));
    const auto options =
        "fd=" + std::to_string(fuse.get()) + ",rootmode=40000,user_id=0,group_id=0,allow_other";
    EXPECT_EQ(mount("none", folder.c_str(), "fuse", 0, options.c_str()), 0);
}

struct Trouble;

struct StoreOnDiskTest : testing::Test {
    void SetUp() override { prepare(); }
    void TearDown() override {
        for (const auto& mounted : {file_, data_, folder_})
            umount2(mounted.c_str(), MNT_DETACH);
        fs::remove_all(folder_);
    }
    void prepare(bool onOwnDisk = false) {
        StoreOnDiskTest::TearDown();
        fs::create_directories(folder_);
        if (onOwnDisk) {
            ASSERT_EQ(mount("none", folder_.c_str(), "tmpfs", 0, "mode=755"), 0);
        }
        for (const char* name : {"a", "b", "c"})
            write(folder_ + "/elsewhere/" + name, name);
    }
    void giveOwnDiskRoom(bool hasRoom) const {
        struct statvfs disk{};
        EXPECT_EQ(statvfs(folder_.c_str(), &disk), 0);
        const auto used = (disk.f_blocks - disk.f_bfree) * disk.f_frsize;
        const auto size = "size=" + std::to_string(hasRoom ? 1 << 30 : used);
        asSuperuser([&] {
            EXPECT_EQ(mount("none", folder_.c_str(), "tmpfs", MS_REMOUNT, size.c_str()), 0);
        });
    }
    std::string everythingBut(const std::string& excluded) const {
        std::vector<std::string> lines;
        for (fs::recursive_directory_iterator
                 entry(folder_, fs::directory_options::skip_permission_denied),
             end;
             entry != end; ++entry) {
            const auto path = entry->path().string();
            if (path == excluded) continue;
            std::error_code gone;
            const auto mode = static_cast<int>(entry->symlink_status(gone).permissions());
            if (gone) entry.disable_recursion_pending();
            lines.push_back(path + " " + std::to_string(mode) +
                            (gone                       ? " ?"
                             : entry->is_symlink()      ? " -> " + fs::read_symlink(path).string()
                             : entry->is_regular_file() ? " = " + read(path)
                                                        : " /"));
        }
        std::ranges::sort(lines);
        return text::joined(lines, "\n");
    }
    std::unique_ptr<StoreOnDisk> start() const {
        const AsOrdinaryUser ordinary(folder_);
        return std::make_unique<StoreOnDisk>();
    }
    void use(StoreOnDisk& disk, const std::string& name) {
        const AsOrdinaryUser ordinary(folder_);
        disk.add(name);
        disk.bookmarks.resolveResource(folder_ + "/elsewhere/" + name, ResourceType::file);
        disk.desktop.runUntilIdle();
    }
    std::vector<Trouble> troubles() const;
    bool isKept(const std::string& name) const {
        const auto files = fs::recursive_directory_iterator(folder_);
        return std::ranges::any_of(files, [&](const auto& entry) {
            return entry.is_regular_file() &&
                   read(entry.path()).find("\"" + name + "\"") != std::string::npos;
        });
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

using Step = std::function<void()>;
enum class Of { folder, file };
struct Trouble {
    const char* name;
    Of of;
    Step begin, end;
    bool isPossibleHere = true;
};

std::vector<Trouble> StoreOnDiskTest::troubles() const {
    const auto permit = [](const std::string& path, int mode) -> Step {
        return [=] { fs::permissions(path, static_cast<fs::perms>(mode)); };
    };
    // A limit of the files' sizes stands for the end of the room: it comes in the middle of a file.
    const auto giveRoom = [](rlim_t bytes) -> Step {
        return [bytes] {
            std::signal(SIGXFSZ, SIG_IGN);
            const rlimit limit{.rlim_cur = bytes, .rlim_max = RLIM_INFINITY};
            EXPECT_EQ(setrlimit(RLIMIT_FSIZE, &limit), 0);
        };
    };
    const auto moveAwayAnd = [this](const Step& then) -> Step {
        return [this, then] {
            fs::rename(data_, data_ + ".away");
            then();
        };
    };
    const auto linkTo = [this](const std::string& target) -> Step {
        return [this, target] {
            fs::remove(file_);
            fs::create_symlink(target, file_);
        };
    };
    return {
        {"a folder that can't be entered", Of::folder, permit(data_, 0), permit(data_, 0755)},
        {"no folder, and none can be made", Of::folder, moveAwayAnd(permit(folder_, 0555)),
         permit(folder_, 0755)},
        {"a file in the folder's place", Of::folder, moveAwayAnd([this] { write(data_, "text"); }),
         [this] { fs::remove(data_); }},
        {"an end of the room", Of::folder, giveRoom(64), giveRoom(RLIM_INFINITY)},
        {"a read-only file", Of::file, permit(file_, 0444), permit(file_, 0644)},
        {"a disk that is full", Of::folder, [this] { giveOwnDiskRoom(false); },
         [this] { giveOwnDiskRoom(true); }, mayMount()},
        {"a mount that has died", Of::folder,
         [this] { asSuperuser([&] { mountDeadFileSystem(data_); }); },
         [this] { EXPECT_EQ(umount2(data_.c_str(), 0), 0); },
         mayMount() && access("/dev/fuse", R_OK | W_OK) == 0},
        {"a symbolic link into nowhere", Of::file, linkTo(folder_ + "/later/file"),
         [this] {
             fs::create_directory(folder_ + "/later");
             fs::permissions(folder_ + "/later", fs::perms(0777));
         }},
        {"a symbolic link in a circle", Of::file, linkTo(file_), [this] { fs::remove(file_); }}};
}

/// Each trouble, beginning before the load, at each step of a save, or with nothing left to save.
/// While it lasts the disk stays as it is.
TEST_F(StoreOnDiskTest, atNoMomentDoesATroubleLoseAnything) {
    enum { beforeTheLoad = -2, atTheEnd = -1, mostSteps = 8 };
    for (const auto& [name, of, begin, end, isPossibleHere] : troubles()) {
        for (int moment = beforeTheLoad; moment < mostSteps && isPossibleHere; ++moment) {
            SCOPED_TRACE(name + (" at " + std::to_string(moment)));
            prepare(mayMount());
            use(*start(), "precious");
            if (moment == beforeTheLoad) begin();
            auto disk = start();
            const auto unhindered = of == Of::folder ? "" : cache_;
            std::string before;
            int step = 0;
            disk->files.beforeEach = [&] {
                if (step++ != moment) return;
                begin();
                before = everythingBut(unhindered);
            };
            use(*disk, "b");
            disk->files.beforeEach = [] {};
            if (moment == 0) {
                const AsOrdinaryUser ordinary(folder_);
                EXPECT_EQ(everythingBut(unhindered), before);
            }
            const bool begins = moment < 0 || step > moment;
            if (moment == atTheEnd) {
                begin();
                EXPECT_TRUE(disk->store.savingProblem->empty());
                disk.reset();
                end();
            } else {
                if (begins) end();
                const bool isLink = fs::is_symlink(file_);
                use(*disk, "c");
                EXPECT_EQ(fs::is_symlink(file_), isLink);
                EXPECT_EQ(storedBookmarks(), 2u);
                EXPECT_EQ(stored(*disk), described(disk->store.workspaces));
                EXPECT_TRUE(isKept("c"));
            }
            // Those take the file itself away.
            const bool isGone = std::string_view(name).starts_with("a symbolic link");
            EXPECT_TRUE(isKept("b") || (isGone && moment == atTheEnd));
            EXPECT_TRUE(isKept("precious") || isGone);
        }
    }
    if (!std::ranges::all_of(troubles(), &Trouble::isPossibleHere))
        GTEST_SKIP() << "some troubles are a superuser's";
}

TEST_F(StoreOnDiskTest, aLinkInDocumentsMovesWithTheContentOfItsFile) {
    const auto old = place("home/Documents/corvane_workspaces.json");
    const auto file = place("home/Documents/of/old.json");
    const auto content = encodeWorkspaces({makeWorkspace("Old", "", "folder", {})});
    write(file, content);
    fs::create_symlink("of/old.json", old);
    StoreOnDisk disk;
    EXPECT_EQ(described(disk.store.workspaces), "Old()");
    disk.add("New");
    EXPECT_EQ(stored(disk), "Old() New()");
    EXPECT_FALSE(fs::exists(fs::symlink_status(old)));
    EXPECT_EQ(read(file), content);
}

TEST_F(StoreOnDiskTest, whatAnotherProgramWritesAtAnyMomentIsKept) {
    for (const bool replaces : {true, false}) {
        for (int moment = 0; moment < 8; ++moment) {
            SCOPED_TRACE((replaces ? "replaces at " : "writes at ") + std::to_string(moment));
            prepare();
            use(*start(), "precious");
            auto disk = start();
            int step = 0;
            disk->files.beforeEach = [&] {
                if (step++ != moment) return;
                write(replaces ? folder_ + "/new" : file_, "\"theirs\"");
                if (replaces) fs::rename(folder_ + "/new", file_);
            };
            use(*disk, "b");
            disk->files.beforeEach = [] {};
            use(*disk, "c");
            EXPECT_EQ(stored(*disk), "Personal() Work() Creative() precious() b() c()");
            EXPECT_EQ(isKept("theirs"), step > moment);
        }
    }
}

/// In a process of its own, whose memory nothing else has used.
TEST_F(StoreOnDiskTest, aPreparedFileTakesLittleMemoryAndIsKept) {
    constexpr std::size_t megabyte = 1 << 20;
    for (const std::size_t size : {60 * megabyte, 200 * megabyte}) {
        write(file_, std::string(size, '['));
        const pid_t child = fork();
        if (child == 0) {
            const auto most = [] {
                rusage used{};
                getrusage(RUSAGE_SELF, &used);
                return static_cast<std::size_t>(used.ru_maxrss) * 1024;
            };
            const auto before = most();
            const StoreOnDisk disk;
            const bool isKept = fs::file_size(file_) < megabyte;
            _exit(isKept && most() - before < 250 * megabyte ? 0 : 1);
        }
        int status = 0;
        ASSERT_EQ(waitpid(child, &status, 0), child);
        EXPECT_EQ(status, 0) << size;
        std::uintmax_t kept = 0;
        for (const auto& entry : fs::directory_iterator(data_)) {
            if (entry.is_regular_file()) kept = std::max(kept, entry.file_size());
        }
        EXPECT_EQ(kept, size);
        fs::remove_all(data_);
    }
}

TEST_F(StoreOnDiskTest, whatCanBeWrittenButNotReplacedIsWrittenInPlace) {
    auto disk = start();
    use(*disk, "a");
    fs::permissions(data_, fs::perms(0555));
    use(*disk, "b");
    EXPECT_EQ(stored(*disk), "Personal() Work() Creative() a() b()");
    EXPECT_EQ(storedBookmarks(), 2u);
    fs::permissions(data_, fs::perms(0755));

    if (!mayMount()) GTEST_SKIP() << "this user may mount nothing";
    prepare(true);
    disk = start();
    use(*disk, "a");
    ASSERT_EQ(mount(file_.c_str(), file_.c_str(), nullptr, MS_BIND, nullptr), 0);
    use(*disk, "b");
    EXPECT_EQ(stored(*disk), "Personal() Work() Creative() a() b()");
    write(file_, "\"theirs\"");
    use(*disk, "c");
    EXPECT_EQ(stored(*disk), "Personal() Work() Creative() a() b() c()");
    EXPECT_TRUE(isKept("theirs"));
    giveOwnDiskRoom(false);
    const auto before = read(file_);
    use(*disk, std::string(1 << 16, 'd'));
    EXPECT_EQ(read(file_), before);
    EXPECT_EQ(*disk->store.savingProblem,
              "Could not write " + file_ + ": No space left on device.");
    giveOwnDiskRoom(true);
    use(*disk, "e");
    EXPECT_EQ(stored(*disk), described(disk->store.workspaces));
}

TEST_F(StoreOnDiskTest, anotherReaderOfPropertyListsFindsThePathInTheBookmarkCache) {
    const auto file = folder_ + "/elsewhere/Größe 📚.txt";
    write(file, "x");
    StoreOnDisk().bookmarks.resolveResource(file, ResourceType::file);
    EXPECT_TRUE(runs("python3 -c 'import plistlib as p\n"
                     "cache = p.load(open(\"" +
                     cache_ + "\", \"rb\"), fmt=p.FMT_BINARY)\nassert p.loads(cache[\"file:" +
                     file + "\"])[\"path\"].decode() == \"" + file + "\"'"));
}

} // namespace
