#include "linux/files/LinuxBookmarks.h"
#include "linux/system/FileDescriptor.h"
#include "machine/Machine.h"

#include <fcntl.h>
#include <unistd.h>

using namespace corvane;
using namespace corvane::machine;

namespace {

struct LinuxBookmarksTest : testing::Test {
    void SetUp() override {
        fs::remove_all(root_);
        for (const char* folder : {"up/home/below", "up/beside", "far/away"})
            fs::create_directories(in(folder));
        write(plan_, "plan");
        write(in("up/home/other.md"), "other");
    }
    void TearDown() override { fs::remove_all(root_); }

    std::string in(const std::string& name) const { return root_ + "/" + name; }
    Bytes bookmarkOf(const std::string& path) { return *bookmarks_.create(Url::fromPath(path)); }
    std::string resolved(const Bytes& bookmark) {
        const auto url = bookmarks_.resolve(bookmark);
        if (!url) return url.error().localizedDescription;
        const auto path = url->path();
        return path.starts_with(root_) ? path.substr(root_.size() + 1) : path;
    }

    const std::string root_ = place("bookmarks");
    const std::string plan_ = in("up/home/plan.md");
    const std::string lost_ = "“" + plan_ + "” can't be found.";
    InstalledApplications installed_;
    LinuxBookmarks bookmarks_{installed_};
};

TEST_F(LinuxBookmarksTest, followAFileAndAFolderThroughRenamesAndMovesNearby) {
    const std::tuple<const char*, const char*, const char*> moves[]{
        {"up/home/plan.md", "up/home/plan.md", "up/home/plan.md"},
        {"up/home/plan.md", "up/home/renamed \xff.txt", "up/home/renamed \xff.txt"},
        {"up/home/plan.md", "up/home/below/plan.md", "up/home/below/plan.md"},
        {"up/home/plan.md", "up/plan.md", "up/plan.md"},
        {"up/home/plan.md", "up/beside/plan.md", "up/beside/plan.md"},
        {"up/home", "up/house", "up/house/plan.md"}};
    for (const auto& [from, to, found] : moves) {
        SetUp();
        const auto bookmark = bookmarkOf(plan_);
        const auto folder = bookmarkOf(in("up/home/below"));
        write(in(from) + "~", "what an editor left");
        fs::rename(in(from), in(to));
        // Nobody relies on a privilege for this.
        const AsOrdinaryUser ordinary(root_);
        EXPECT_EQ(resolved(bookmark), found);
        EXPECT_EQ(resolved(folder),
                  std::string(to) == "up/house" ? "up/house/below" : "up/home/below");
    }
}

TEST_F(LinuxBookmarksTest, findAFileFarAwayOnlyWhereTheSystemAllowsIt) {
    const auto bookmark = bookmarkOf(plan_);
    fs::rename(plan_, in("far/away/plan.md"));
    {
        const AsOrdinaryUser ordinary(root_);
        EXPECT_EQ(resolved(bookmark), lost_);
    }
    if (geteuid() != 0) GTEST_SKIP() << "opening by handle is a privilege";
    EXPECT_EQ(resolved(bookmark), "far/away/plan.md");
    // Its handle lives as long as a program reads it.
    const FileDescriptor reader(open(in("far/away/plan.md").c_str(), O_RDONLY | O_CLOEXEC));
    fs::remove(in("far/away/plan.md"));
    EXPECT_EQ(resolved(bookmark), lost_);
}

TEST_F(LinuxBookmarksTest, searchAtNoMoreThanAFewThousandEntries) {
    for (const int entries : {2'400, 5'100}) {
        SetUp();
        const auto bookmark = bookmarkOf(plan_);
        fs::rename(plan_, in("up/beside/plan.md"));
        // The folder of the file comes first, and again for the folders in it.
        for (int i = 0; i < entries; ++i)
            fs::create_symlink("nowhere", in("up/home/" + std::to_string(i)));
        const AsOrdinaryUser ordinary(root_);
        EXPECT_EQ(resolved(bookmark), entries < 5'000 ? "up/beside/plan.md" : lost_);
    }
}

TEST_F(LinuxBookmarksTest, followAFileOfWhichAnotherOneTookThePlace) {
    const auto bookmark = bookmarkOf(plan_);
    fs::rename(plan_, in("up/home/older plan.md"));
    fs::rename(in("up/home/other.md"), plan_);
    EXPECT_EQ(resolved(bookmark), "up/home/older plan.md");
}

TEST_F(LinuxBookmarksTest, neverLeadToAnotherFile) {
    const auto home = in("up/home/");
    const auto* another = "is another file now";
    /// What is moved, to where, or away where that is empty, and what is made then.
    const std::tuple<const char*, const char*, std::string, std::string, const char*> cases[]{
        {"gone", "plan.md", "", "", "can't be found"},
        {"gone, and a copy remains", "plan.md", "", "new.md", "can't be found"},
        {"saved by an editor that keeps a backup", "plan.md", "plan.md~", "plan.md", another},
        {"saved with a backup of another ending", "plan.md", "plan.bak", "plan.md", another},
        {"moved, and another took its place", "plan.md", "../beside/plan.md", "plan.md", another},
        {"another file was moved there", "other.md", "plan.md", "", another},
        // The file system likes to use the inode again at once.
        {"made anew", "plan.md", "", "plan.md", another}};
    for (const auto& [name, from, to, made, error] : cases) {
        for (int round = 0; round < 20; ++round) {
            SetUp();
            const auto bookmark = bookmarkOf(plan_);
            to.empty() ? void(fs::remove(home + from)) : fs::rename(home + from, home + to);
            if (!made.empty()) write(home + made, "plan");
            const AsOrdinaryUser ordinary(root_);
            EXPECT_EQ(resolved(bookmark), "“" + plan_ + "” " + error + ".") << name;
        }
    }
    // A file made within the same tick of the clock has even the birth of the one before it.
    SetUp();
    const auto fieldsOf = [&](const std::string& path) {
        const auto bookmark = bookmarkOf(path);
        const std::string bytes(bookmark.begin(), bookmark.end());
        return *PropertyList::parse(bytes)->as<PropertyList::Dictionary>();
    };
    auto fields = fieldsOf(plan_);
    for (const char* field : {"inode", "birth"})
        fields[field] = fieldsOf(in("up/home/other.md"))[field];
    fs::remove(plan_);
    const auto list = PropertyList{fields}.toBinary();
    EXPECT_EQ(resolved(Bytes(list.begin(), list.end())), lost_);

    // Where neither births nor handles are kept, a file counts in its own place on its own disk.
    const std::string bare = "/proc/version";
    const auto changed = [&](const char* field, PropertyList value) {
        auto changedFields = fieldsOf(bare);
        EXPECT_EQ(changedFields.at("birth"), PropertyList{std::int64_t{0}});
        changedFields[field] = std::move(value);
        const auto bytes = PropertyList{changedFields}.toBinary();
        return resolved(Bytes(bytes.begin(), bytes.end()));
    };
    EXPECT_EQ(resolved(bookmarkOf(bare)), bare);
    EXPECT_EQ(changed("device", {std::int64_t{1}}), "“" + bare + "” is another file now.");
    const std::string gone = "/proc/gone";
    EXPECT_EQ(changed("path", {Bytes(gone.begin(), gone.end())}), "“" + gone + "” can't be found.");

    EXPECT_FALSE(bookmarks_.create(Url::fromPath(in("missing"))));
    EXPECT_FALSE(bookmarks_.create(*Url::parse("https://example.org" + plan_)));
}

TEST_F(LinuxBookmarksTest, thatAreDamagedLeadToTheirFileOrNowhere) {
    const auto bookmark = bookmarkOf(plan_);
    for (std::size_t i = 0; i < bookmark.size(); ++i) {
        for (const int flip : {0x01, 0x80, 0xff}) {
            auto damaged = bookmark;
            damaged[i] = static_cast<std::uint8_t>(damaged[i] ^ flip);
            const auto url = bookmarks_.resolve(damaged);
            EXPECT_TRUE(!url || url->path() == plan_) << i << " " << url->path();
        }
        const auto shortened = Bytes(bookmark.begin(), bookmark.begin() + static_cast<long>(i));
        EXPECT_EQ(resolved(shortened), "The bookmark isn't valid.") << i;
    }
    for (const std::string foreign : {"book\4\0\0\0mark", "<plist><dict/></plist>", "bplist00"})
        EXPECT_EQ(resolved(Bytes(foreign.begin(), foreign.end())), "The bookmark isn't valid.");
}

TEST_F(LinuxBookmarksTest, knowAnApplicationByItsIdentifier) {
    install("test.noted", "Noted", "Exec=true");
    const auto bookmark = bookmarkOf("/Applications/Noted.app");
    EXPECT_EQ(resolved(bookmark), "/Applications/Noted.app");
    install("test.noted", "Noted Again", "Exec=true");
    install("test.NOTED", "Noted", "Exec=true");
    EXPECT_EQ(resolved(bookmark), "/Applications/Noted Again.app");
    uninstall("test.noted");
    EXPECT_EQ(resolved(bookmark), "The application “test.noted” isn't installed.");
    EXPECT_EQ(resolved(bookmarkOf("/System/Library/CoreServices/Finder.app")),
              "/System/Library/CoreServices/Finder.app");
}

} // namespace
