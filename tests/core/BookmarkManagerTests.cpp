#include "core/StoreScene.h"

using namespace corvane;

namespace {

using enum ResourceType;
using Lines = std::vector<std::string>;

struct Bookmark : SceneTest {
    void SetUp() override {
        for (const auto* path : {"/a.txt", "/b.txt", "/c.txt"})
            desktop.files.contents[path] = "";
    }

    BookmarkManager manager() { return scene.newBookmarks(); }
    Lines storedKeys() const {
        Lines keys;
        if (!desktop.files.exists(bookmarkCachePath)) return keys;
        const auto list = PropertyList::parse(desktop.files.contents.at(bookmarkCachePath));
        for (const auto& [key, value] : *list->as<PropertyList::Dictionary>())
            keys.push_back(key);
        return keys;
    }
};

TEST_F(Bookmark, isMadeAtTheFirstResolveAndFollowsTheFileFromThen) {
    {
        auto bookmarks = manager();
        EXPECT_EQ(bookmarks.resolveResource("/a.txt", file), Url::fromPath("/a.txt"));
        desktop.runUntilIdle();
        EXPECT_TRUE(desktop.bookmarks.accesses.empty());
    }
    EXPECT_TRUE(desktop.files.contents.at(bookmarkCachePath).starts_with("bplist00"));
    ASSERT_TRUE(desktop.files.moveItem("/a.txt", "/moved/a.txt"));
    desktop.files.contents["/a.txt"] = "another file";

    auto bookmarks = manager();
    EXPECT_EQ(bookmarks.resolveResource("/a.txt", file), Url::fromPath("/moved/a.txt"));
    EXPECT_EQ(desktop.bookmarks.accesses.at("/moved/a.txt"), 1);

    EXPECT_EQ(bookmarks.resolveResource("/a.txt", folder), Url::fromPath("/a.txt"));
    desktop.runUntilIdle();
    EXPECT_EQ(storedKeys(), (Lines{"file:/a.txt", "folder:/a.txt"}));
    EXPECT_EQ(desktop.files.namesIn(storeFolder), Lines{"bookmark_cache.plist"});
}

TEST_F(Bookmark, thatFailsLeavesTheCacheBeforeThePathIsTried) {
    const std::tuple<const char*, std::function<void()>, bool, bool> cases[]{
        {"can't be found", [&] { desktop.bookmarks.unresolvable = {"/a.txt"}; }, true, true},
        {"gives no access", [&] { desktop.bookmarks.inaccessible = {"/a.txt"}; }, true, true},
        {"can't be made again",
         [&] { desktop.bookmarks.unresolvable = desktop.bookmarks.uncreatable = {"/a.txt"}; }, true,
         false},
        {"is of a file that went", [&] { EXPECT_TRUE(desktop.files.removeItem("/a.txt")); }, false,
         false}};
    for (const auto& [name, change, found, isKept] : cases) {
        SetUp();
        desktop.bookmarks.uncreatable = desktop.bookmarks.unresolvable =
            desktop.bookmarks.inaccessible = {};
        auto bookmarks = manager();
        bookmarks.resolveResource("/a.txt", file);
        desktop.runUntilIdle();
        change();
        EXPECT_EQ(bookmarks.resolveResource("/a.txt", file).has_value(), found) << name;
        desktop.runUntilIdle();
        EXPECT_EQ(storedKeys(), isKept ? Lines{"file:/a.txt"} : Lines{}) << name;
    }
}

TEST_F(Bookmark, ofManyFilesAreWrittenOnceATurnAndAtTheEnd) {
    auto& writes = desktop.files.writes[bookmarkCachePath];
    {
        auto bookmarks = manager();
        for (const auto* path : {"/a.txt", "/b.txt", "/c.txt", "b.txt"})
            bookmarks.resolveResource(path, file);
        EXPECT_EQ(writes, 0);
        desktop.runUntilIdle();
        EXPECT_EQ(writes, 1);
        bookmarks.resolveResource("/b.txt", folder);
    }
    EXPECT_EQ(writes, 2);
    EXPECT_EQ(storedKeys(), (Lines{"file:/a.txt", "file:/b.txt", "file:/c.txt", "folder:/b.txt"}))
        << "a path that isn't whole leads nowhere";
    desktop.runUntilIdle();
    EXPECT_EQ(writes, 2);
}

TEST_F(Bookmark, isMadeAnewOfTheFileThatAnEditorPutInThePlace) {
    auto bookmarks = manager();
    bookmarks.resolveResource("/a.txt", file);
    desktop.runUntilIdle();
    ASSERT_TRUE(desktop.files.removeItem("/a.txt"));
    desktop.files.contents["/a.txt"] = "edited";
    bookmarks.renewBookmark("/a.txt", file);
    bookmarks.renewBookmark("/b.txt", file);
    ASSERT_TRUE(desktop.files.moveItem("/a.txt", "/moved.txt"));
    bookmarks.renewBookmark("/a.txt", file);
    desktop.runUntilIdle();
    EXPECT_EQ(manager().resolveResource("/a.txt", file), Url::fromPath("/moved.txt"))
        << "it was stored";
    EXPECT_EQ(bookmarks.resolveResource("/a.txt", file), Url::fromPath("/moved.txt"));
    ASSERT_TRUE(desktop.files.removeItem("/moved.txt"));
    bookmarks.renewBookmark("/a.txt", file);
    desktop.runUntilIdle();
    EXPECT_EQ(storedKeys(), Lines{"file:/a.txt"}) << "one is neither made nor dropped";
}

TEST_F(Bookmark, staysInMemoryWhereTheCacheCannotBeWritten) {
    auto bookmarks = manager();
    desktop.files.unwritable = {bookmarkCachePath};
    EXPECT_TRUE(bookmarks.createBookmark(Url::fromPath("/a.txt"), "file:/a.txt"));
    EXPECT_FALSE(bookmarks.createBookmark(Url::fromPath("/none.txt"), "file:/none.txt"));
    desktop.runUntilIdle();
    EXPECT_FALSE(desktop.files.exists(bookmarkCachePath));
    EXPECT_EQ(bookmarks.bookmarkCache().size(), 1u);
    desktop.files.unwritable.clear();
    EXPECT_TRUE(bookmarks.createBookmark(Url::fromPath("/b.txt"), "file:/b.txt"));
    desktop.runUntilIdle();
    EXPECT_EQ(storedKeys(), (Lines{"file:/a.txt", "file:/b.txt"}));

    desktop.files.contents.erase("/b.txt");
    EXPECT_EQ(bookmarks.validateBookmarks(), (BookmarkCounts{2, 1, 1}));
    EXPECT_EQ(bookmarks.bookmarkCache().size(), 2u);
    EXPECT_TRUE(bookmarks.createBookmark(Url::fromPath("/c.txt"), "file:/a.txt"));
    EXPECT_EQ(bookmarks.resolveResource("/a.txt", file), Url::fromPath("/c.txt"));
    desktop.bookmarks.inaccessible = {"/c.txt"};
    EXPECT_EQ(bookmarks.validateBookmarks(), (BookmarkCounts{2, 0, 2}));
}

TEST_F(Bookmark, aCacheThatIsNoneIsKeptAsideAndOneThatCannotBeReadLeftAlone) {
    const auto kept = storeFolder + "/bookmark_cache.unreadable-2026-01-01T12-00-00";
    const std::string listOfText =
        PropertyList{PropertyList::Dictionary{{"file:/a.txt", {std::string("text")}}}}.toBinary();
    for (const auto& content :
         {std::string("garbage"), listOfText, PropertyList{PropertyList::Array{}}.toBinary()}) {
        desktop.files = {};
        SetUp();
        desktop.files.contents[bookmarkCachePath] = content;
        auto bookmarks = manager();
        EXPECT_TRUE(bookmarks.bookmarkCache().empty());
        bookmarks.validateBookmarks();
        EXPECT_EQ(desktop.files.contents.at(bookmarkCachePath), content) << "nothing was written";
        bookmarks.resolveResource("/a.txt", file);
        desktop.runUntilIdle();
        EXPECT_EQ(desktop.files.contents.at(kept + ".plist"), content);
        EXPECT_EQ(storedKeys(), Lines{"file:/a.txt"});
    }
    desktop.files.contents[bookmarkCachePath] = "precious";
    desktop.files.unreadable = desktop.files.unremovable = {bookmarkCachePath};
    EXPECT_EQ(manager().resolveResource("/a.txt", file), Url::fromPath("/a.txt"));
    desktop.runUntilIdle();
    EXPECT_EQ(desktop.files.contents.at(bookmarkCachePath), "precious") << "nor written over";
}

TEST_F(Bookmark, inAnOldWorkspacesFileMovesToTheCacheOnce) {
    const std::tuple<const char*, Lines, int> cases[]{
        {R"(,"bookmarkData":"Ym9va21hcmsgMA==")", {"file:/a.txt"}, 1},
        {R"(,"bookmarkData":"Ym9vaw==")", {}, 1},
        {R"(,"bookmarkData":"")", {}, 1},
        {"", {}, 0}};
    for (const auto& [bookmark, keys, saves] : cases) {
        desktop.files = {};
        desktop.defaults.clear();
        SetUp();
        desktop.files.identityOf("/a.txt");
        scene.writeFile({scene.workspace("First", {scene.resource("a", "/a.txt")})});
        auto& content = desktop.files.contents[workspacesPath];
        content = text::replacingAll(content, R"("path":"/a.txt")",
                                     R"("path":"/a.txt")" + std::string(bookmark));
        const std::string old = content;
        scene.start();
        EXPECT_EQ(storedKeys(), keys) << bookmark;
        EXPECT_EQ(content.find("bookmarkData"), std::string::npos) << bookmark;
        EXPECT_EQ(scene.saves(), saves) << bookmark;

        // Nobody looks at them again, and the next save takes them out.
        content = old;
        desktop.files.contents.erase(bookmarkCachePath);
        auto& store = scene.start();
        EXPECT_FALSE(desktop.files.exists(bookmarkCachePath));
        EXPECT_EQ(content, old);
        store.renameResource(store.workspaces->front().resources.front().id, "x",
                             store.workspaces->front().id);
        EXPECT_EQ(content.find("bookmarkData"), std::string::npos);
    }
}

} // namespace
