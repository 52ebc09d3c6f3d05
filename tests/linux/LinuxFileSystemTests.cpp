#include "linux/files/LinuxFileSystem.h"
#include "linux/files/LinuxUserDefaults.h"
#include "linux/installed/LinuxFileIcons.h"
#include "linux/system/AtomicFile.h"
#include "machine/Machine.h"
#include "simulated/SimulatedQueue.h"

#include <sys/stat.h>
#include <sys/xattr.h>
#include <unistd.h>

using namespace corvane;
using namespace corvane::machine;

namespace {

struct LinuxFileSystemTest : testing::Test {
    void SetUp() override { fs::create_directories(folder_); }
    void TearDown() override {
        fs::permissions(folder_, fs::perms::owner_all);
        fs::remove_all(folder_);
    }
    std::string in(const std::string& name) const { return folder_ + "/" + name; }

    const std::string folder_ = place("files");
    InstalledApplications installed_;
    LinuxFileSystem files_{installed_};
};

TEST_F(LinuxFileSystemTest, knowsTheUsersFoldersAndVirtualBundles) {
    EXPECT_EQ(files_.applicationSupportDirectory(), place("data"));
    EXPECT_EQ(files_.documentsDirectory(), place("home") + "/Documents");
    EXPECT_TRUE(files_.exists("/Applications/Viewer.app"));
    EXPECT_TRUE(files_.isDirectory("/System/Library/CoreServices/Finder.app"));
    EXPECT_FALSE(files_.exists("/Applications/Nobody.app"));
    EXPECT_FALSE(files_.exists(folder_ + std::string("\0x", 2)));
}

TEST_F(LinuxFileSystemTest, writingKeepsModeAndSymbolicLink) {
    write(in("real"), "old");
    fs::permissions(in("real"), fs::perms(0640));
    fs::create_symlink("real", in("link"));
    ASSERT_TRUE(files_.writeFile(in("link"), "new"));
    EXPECT_TRUE(fs::is_symlink(in("link")));
    EXPECT_EQ(read(in("real")), "new");
    EXPECT_EQ(fs::status(in("real")).permissions(), fs::perms(0640));

    fs::create_symlink("later", in("dangling"));
    ASSERT_TRUE(files_.writeFile(in("dangling"), "x"));
    EXPECT_EQ(read(in("later")), "x");
    EXPECT_EQ(fs::status(in("later")).permissions(), fs::perms(0600));
    files_.makePrivate(in("link"));
    EXPECT_EQ(fs::status(in("real")).permissions(), fs::perms(0600));
    EXPECT_EQ(namesIn(folder_), (std::vector<std::string>{"dangling", "later", "link", "real"}));
}

TEST_F(LinuxFileSystemTest, anotherUsersLinkInASharedFolderLeadsNowhere) {
    if (::geteuid() != 0) GTEST_SKIP() << "needs files of three users";
    constexpr uid_t stranger = 12345;
    constexpr uid_t owner = 23456;
    const std::tuple<mode_t, uid_t, bool> cases[]{
        {01777, stranger, false}, {01777, owner, true},    {01777, 0, true},
        {0777, stranger, true},   {01755, stranger, true},
    };
    write(in("kept"), "old");
    for (const auto& [mode, link, follows] : cases) {
        const auto shared = in("shared");
        fs::remove_all(shared);
        fs::create_directory(shared);
        fs::create_symlink("../kept", shared + "/link");
        ASSERT_EQ(::lchown((shared + "/link").c_str(), link, link), 0);
        ASSERT_EQ(::chown(shared.c_str(), owner, owner), 0);
        ASSERT_EQ(::chmod(shared.c_str(), mode), 0);
        const auto written = files_.writeFile(shared + "/link", "new");
        EXPECT_EQ(bool(written), follows) << mode << " " << link;
        EXPECT_EQ(read(in("kept")), follows ? "new" : "old");
        write(in("kept"), "old");
    }
}

TEST_F(LinuxFileSystemTest, aWriteKeepsAttributesAndTakesAwayWhatAKilledOneLeft) {
    write(in("file"), "old");
    const auto set = [&](const char* name, const std::string& value) {
        return ::setxattr(in("file").c_str(), name, value.data(), value.size(), 0) == 0;
    };
    const auto get = [&](const char* name) {
        std::string value(100, '\0');
        const auto size = ::getxattr(in("file").c_str(), name, value.data(), value.size());
        return size < 0 ? std::string("none") : value.substr(0, static_cast<std::size_t>(size));
    };
    // Version 2: the owner may read and write, user 12345 may read, the group and others nothing.
    const std::string rights("\2\0\0\0\1\0\6\0\xff\xff\xff\xff\2\0\4\0\x39\x30\0\0\4\0\0\0"
                             "\xff\xff\xff\xff\x10\0\4\0\xff\xff\xff\xff\x20\0\0\0\xff\xff\xff\xff",
                             44);
    const bool takesTags = set("user.tag", "mine");
    const bool takesRights = set("system.posix_acl_access", rights);
    write(in(".corvane-old"), "half");
    write(in(".corvane-new"), "half");
    write(in("other"), "theirs");
    for (const char* name : {".corvane-old", "other"})
        fs::last_write_time(in(name), fs::file_time_type::clock::now() - std::chrono::hours(2));
    ASSERT_TRUE(files_.writeFile(in("file"), "new"));
    EXPECT_EQ(read(in("file")), "new");
    EXPECT_EQ(get("user.tag"), takesTags ? "mine" : "none");
    EXPECT_EQ(get("system.posix_acl_access"), takesRights ? rights : "none");
    EXPECT_EQ(namesIn(folder_), (std::vector<std::string>{".corvane-new", "file", "other"}));
}

TEST_F(LinuxFileSystemTest, whatComesAtTheLastMomentStays) {
    write(in("file"), "known");
    write(in("theirs"), "theirs");
    bool hasCome = false;
    const auto isKnown = [&](const std::string& path) {
        const bool known = read(path) == "known";
        if (!std::exchange(hasCome, true)) {
            fs::rename(in("theirs"), in("file"));
        } else {
            // If this program ended here, one that saves later cleans up.
            fs::last_write_time(path, fs::file_time_type::clock::now() - std::chrono::hours(2));
            EXPECT_TRUE(replaceFile(in("later"), "later"));
        }
        return known;
    };
    const auto refused = replaceFile(in("file"), "ours", isKnown);
    ASSERT_FALSE(refused);
    EXPECT_EQ(refused.error().localizedDescription,
              "Could not write " + in("file") + ": Another program changed it at the same time.");
    EXPECT_EQ(read(in("file")), "theirs");
    EXPECT_EQ(namesIn(folder_), (std::vector<std::string>{"file", "later"}));
}

TEST_F(LinuxFileSystemTest, refusalsNameThePathAndLeaveNothingBehind) {
    write(in("file"), "text");
    fs::create_directory(in("folder"));
    ASSERT_EQ(::mkfifo(in("pipe").c_str(), 0600), 0);
    fs::create_symlink("round", in("round"));
    const auto before = namesIn(folder_);
    for (const char* name : {"folder", "pipe", "round", "file/below", "missing/below"}) {
        const auto why = files_.writeFile(in(name), "x").error().localizedDescription;
        EXPECT_NE(why.find(in(name)), std::string::npos) << why;
        EXPECT_FALSE(files_.readFile(in(name))) << name;
    }
    EXPECT_FALSE(files_.createDirectory(in("file/below")) || files_.createDirectory(in("file")));
    EXPECT_FALSE(files_.removeItem(in("missing")));
    EXPECT_FALSE(files_.writeFile(in("file") + std::string("\0x", 2), "x"));
    EXPECT_EQ(files_.readFile(in("folder")).error().localizedDescription,
              "Could not read " + in("folder") + ": Is a directory.");
    EXPECT_EQ(namesIn(folder_), before);
    EXPECT_EQ(read(in("file")), "text");
}

TEST_F(LinuxFileSystemTest, readsAllBytesOfABigFileAndOfOneWithoutASize) {
    std::string content(5'000'000, '\0');
    for (std::size_t i = 0; i < content.size(); ++i)
        content[i] = static_cast<char>(i * 7);
    ASSERT_TRUE(files_.writeFile(in("big"), content));
    EXPECT_EQ(*files_.readFile(in("big")), content);
    EXPECT_NE(files_.readFile("/proc/self/status")->find("Pid:"), std::string::npos);
    ASSERT_TRUE(files_.writeFile(in("big"), ""));
    EXPECT_EQ(*files_.readFile(in("big")), "");
}

TEST_F(LinuxFileSystemTest, copiesAndMovesNeverReplace) {
    write(in("a/b/file"), "1");
    write(in("taken"), "2");
    for (const auto& [from, to] : {std::pair("a", "taken"), {"a", "a/b/c"}, {"missing", "x"}})
        EXPECT_FALSE(files_.copyItem(in(from), in(to)) || files_.moveItem(in(from), in(to))) << to;
    EXPECT_EQ(read(in("taken")), "2");
    EXPECT_EQ(namesIn(folder_), (std::vector<std::string>{"a", "taken"}));

    EXPECT_TRUE(files_.copyItem(in("a"), in("copy")) && files_.moveItem(in("a"), in("moved")));
    EXPECT_EQ(read(in("copy/b/file")) + read(in("moved/b/file")), "11");
    EXPECT_TRUE(files_.removeItem(in("copy")));
    EXPECT_EQ(namesIn(folder_), (std::vector<std::string>{"moved", "taken"}));
    for (int i = 0; i < 2; ++i)
        EXPECT_TRUE(files_.createDirectory(in("p/q/r")) && files_.isDirectory(in("p/q/r")));
}

TEST_F(LinuxFileSystemTest, filesAndFoldersHaveIcons) {
    const LinuxFileIcons fileIcons(installed_);
    const auto picture = place("icons/pen.svg");
    write(picture, "<svg/>");
    for (const auto& [name, size] : {std::pair{"large", 16u << 20}, {"larger", (16u << 20) + 1}}) {
        write(place("icons/") + name, "");
        fs::resize_file(place("icons/") + name, size);
    }
    const std::pair<std::string, std::optional<std::string>> cases[]{
        {"Icon=pen", "pen"},
        {"Icon=old.name.png", "old.name"},
        {"Icon=old.svg", "old"},
        {"Icon=old.xpm", "old"},
        {"Icon=" + picture, picture},
        {"Icon=" + place("icons/large"), place("icons/large")},
        {"Icon=" + place("icons/larger"), std::nullopt},
        {"Icon=/dev/zero", std::nullopt},
        {"Comment=none", std::nullopt}};
    for (const auto& [key, icon] : cases) {
        install("f.pen", "Pen", "Exec=sh\n" + key);
        EXPECT_TRUE(comesTrue([&] {
            return fileIcons.iconForFile("/Applications/Pen.app") == icon;
        })) << key;
    }
    write(in("a.json"), "[]");
    EXPECT_EQ(fileIcons.iconForFile(in("a.json")), "application-json");
    EXPECT_EQ(fileIcons.iconForFile(folder_), "inode-directory");
    EXPECT_EQ(fileIcons.iconForFile(in("missing")), std::nullopt);
}

struct LinuxUserDefaultsTest : testing::Test {
    void SetUp() override { fs::remove_all(folder_); }
    void setFlag(LinuxUserDefaults& defaults, bool value) {
        defaults.setObject("flag", {value});
        queue_.runFor(0);
    }
    LinuxUserDefaults open() { return LinuxUserDefaults(files_, queue_, queue_, queue_); }

    const std::string folder_ = place("defaults");
    const ScopedVariable variable_{"XDG_CONFIG_HOME", folder_};
    const std::string file_ = folder_ + "/app.corvane.Corvane.plist";
    InstalledApplications installed_;
    LinuxFileSystem files_{installed_};
    SimulatedQueue queue_;
};

TEST_F(LinuxUserDefaultsTest, comeBackAfterARestartUntilTheDomainIsRemoved) {
    EXPECT_FALSE(open().objectForKey("a"));
    EXPECT_FALSE(fs::exists(folder_)) << "reading makes nothing";
    write(folder_ + "/elsewhere/any", "");
    fs::create_symlink("elsewhere/preferences", file_);
    {
        auto defaults = open();
        defaults.setObject("flag", {true});
        defaults.setObject("text", {std::string("Größe")});
        defaults.setObject("gone", {std::int64_t{1}});
        defaults.removeObject("gone");
    }
    auto defaults = open();
    EXPECT_TRUE(!defaults.isUnreadable() && defaults.boolForKey("flag"));
    EXPECT_EQ(defaults.stringForKey("text"), "Größe");
    EXPECT_TRUE(!defaults.objectForKey("gone") && read(file_).starts_with("bplist00"));

    for (const auto& [value, text] : std::map<std::string, PropertyList>{
             {"1", {true}}, {"0", {false}}, {"7", {std::int64_t{7}}}, {"0.5", {0.5}}}) {
        defaults.setObject("other", text);
        EXPECT_EQ(defaults.stringForKey("other"), value);
    }
    defaults.setObject("other", {Bytes{1}});
    EXPECT_EQ(defaults.stringForKey("other"), std::nullopt);

    defaults.removePersistentDomain();
    EXPECT_FALSE(defaults.objectForKey("flag"));
    queue_.runFor(0);
    EXPECT_FALSE(open().objectForKey("flag"));
    for (const char* key : {"flag", "other"})
        defaults.setObject(key, {true});
    EXPECT_EQ(queue_.pending(), 1u) << "one write for a turn";
    queue_.runFor(0);
    EXPECT_TRUE(open().boolForKey("other") && fs::is_symlink(file_));
}

TEST_F(LinuxUserDefaultsTest, aValueIsWrittenOnceAndAgainWhereItCouldNotBe) {
    write(folder_, "a file where the folder should be");
    auto defaults = open();
    setFlag(defaults, true);
    EXPECT_TRUE(defaults.boolForKey("flag"));
    fs::remove(folder_);
    setFlag(defaults, true);
    EXPECT_TRUE(open().boolForKey("flag"));
    fs::remove(file_);
    defaults.removeObject("absent");
    setFlag(defaults, true);
    EXPECT_FALSE(fs::exists(file_));
    setFlag(defaults, false);
    EXPECT_TRUE(!open().boolForKey("flag") && fs::exists(file_));
}

TEST_F(LinuxUserDefaultsTest, anUnreadableFileIsKeptAsideBeforeTheFirstWriteAndThatIsTold) {
    const auto kept = folder_ + "/app.corvane.Corvane.unreadable-2026-01-01T12-00-00.plist";
    const auto noDictionary = PropertyList{PropertyList::Array{}}.toBinary();
    for (const auto& [content, isReset] :
         {std::pair(std::string("no property list"), false), {noDictionary, true}}) {
        fs::remove_all(folder_);
        write(file_, content);
        std::string told;
        auto defaults = open();
        defaults.onKeptAside = [&](const auto& where, const auto& why) {
            told = where + " " + why;
        };
        defaults.removeObject("absent");
        queue_.runFor(0);
        EXPECT_EQ(read(file_), content) << "nothing was written yet";
        EXPECT_TRUE(defaults.isUnreadable());
        isReset ? defaults.removePersistentDomain() : defaults.setObject("flag", {true});
        queue_.runFor(0);
        EXPECT_EQ(open().boolForKey("flag"), !isReset);
        EXPECT_EQ(read(kept), content);
        EXPECT_TRUE(told.starts_with(kept + " ") && told.size() > kept.size() + 5) << told;
    }
}

} // namespace
