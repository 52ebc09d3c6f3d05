#include "core/StoreScene.h"
#include "foundation/Text.h"

#include <gtest/gtest.h>

namespace corvane {
namespace {

using Lines = std::vector<std::string>;

class Bookmark : public testing::Test {
protected:
    void SetUp() override {
        for (const auto* file : {"/a.txt", "/b.txt", "/c.txt"})
            desktop.files.contents[file] = "";
    }

    StoreScene scene;
    SimulatedDesktop& desktop = scene.desktop;
    DiagnosticLog diagnostics;

    BookmarkManager manager() {
        struct Forget {
            DiagnosticLog& log;
            ~Forget() { log.take(); }
        } forget{diagnostics};
        return BookmarkManager(desktop.files, desktop.bookmarks, desktop.queue, desktop.queue,
                               desktop.queue);
    }
    /// The keys of the cache on disk.
    Lines storedKeys() const {
        Lines keys;
        const auto list = PropertyList::parse(desktop.files.contents.at(bookmarkCachePath));
        for (const auto& [key, value] : *list->as<PropertyList::Dictionary>())
            keys.push_back(key);
        return keys;
    }
};

TEST_F(Bookmark, isMadeAtTheFirstResolveAndFollowsTheFileFromThen) {
    {
        auto bookmarks = manager();
        EXPECT_EQ(bookmarks.resolveResource("/a.txt", ResourceType::file), Url::fromPath("/a.txt"));
        desktop.runUntilIdle();
        EXPECT_EQ(diagnostics.take(), (Lines{"📚 Resolved '/a.txt' using direct path access",
                                             "📚 Created and cached bookmark for: /a.txt",
                                             "📚 Saved bookmark cache with 1 entries"}));
        EXPECT_TRUE(desktop.bookmarks.accesses.empty());
    }
    EXPECT_TRUE(desktop.files.contents.at(bookmarkCachePath).starts_with("bplist00"));
    ASSERT_TRUE(desktop.files.moveItem("/a.txt", "/moved/a.txt"));
    desktop.files.contents["/a.txt"] = "another file";

    BookmarkManager bookmarks(desktop.files, desktop.bookmarks, desktop.queue, desktop.queue,
                              desktop.queue);
    EXPECT_EQ(diagnostics.take(), (Lines{"📚 Loaded 1 bookmarks from cache",
                                         "📚 BookmarkManager initialized with cache at: " +
                                             std::string(bookmarkCachePath)}));
    EXPECT_EQ(bookmarks.resolveResource("/a.txt", ResourceType::file),
              Url::fromPath("/moved/a.txt"));
    EXPECT_EQ(diagnostics.take(), Lines{"📚 Resolved '/a.txt' using cached bookmark"});
    EXPECT_EQ(desktop.bookmarks.accesses.at("/moved/a.txt"), 1);

    // The same path as a folder is another resource.
    EXPECT_EQ(bookmarks.resolveResource("/a.txt", ResourceType::folder), Url::fromPath("/a.txt"));
    desktop.runUntilIdle();
    EXPECT_EQ(storedKeys(), (Lines{"file:/a.txt", "folder:/a.txt"}));
}

TEST_F(Bookmark, thatFailsLeavesTheCacheBeforeThePathIsTried) {
    const std::string notFound = "📚 Failed to resolve bookmark: The file can't be found.\n";
    const std::string dropped = "📚 Cached bookmark for '/a.txt' is invalid, removing from cache\n";
    const std::string direct = "📚 Resolved '/a.txt' using direct path access\n";
    const std::string madeAgain = direct + "📚 Created and cached bookmark for: /a.txt\n";
    const struct {
        const char* name;
        std::function<void()> change;
        std::string said;
        bool found;
        bool isKept;
    } cases[]{
        {"can't be found", [&] { desktop.bookmarks.unresolvable = {"/a.txt"}; },
         notFound + dropped + madeAgain, true, true},
        {"gives no access", [&] { desktop.bookmarks.inaccessible = {"/a.txt"}; },
         "📚 Failed to start accessing security-scoped resource: /a.txt\n" + dropped + madeAgain,
         true, true},
        {"can't be made again",
         [&] { desktop.bookmarks.unresolvable = desktop.bookmarks.uncreatable = {"/a.txt"}; },
         notFound + dropped + direct +
             "📚 Failed to create bookmark for '/a.txt': A bookmark isn't allowed.\n",
         true, false},
        {"is of a file that went", [&] { EXPECT_TRUE(desktop.files.removeItem("/a.txt")); },
         notFound + dropped + "📚 Failed to resolve resource at path: /a.txt\n", false, false},
    };
    for (const auto& [name, change, said, found, isKept] : cases) {
        SetUp();
        desktop.bookmarks.uncreatable = desktop.bookmarks.unresolvable =
            desktop.bookmarks.inaccessible = {};
        auto bookmarks = manager();
        bookmarks.resolveResource("/a.txt", ResourceType::file);
        desktop.runUntilIdle();
        change();
        diagnostics.take();
        EXPECT_EQ(bookmarks.resolveResource("/a.txt", ResourceType::file).has_value(), found)
            << name;
        desktop.runUntilIdle();
        const auto saved = std::string("📚 Saved bookmark cache with ") + (isKept ? "1" : "0");
        EXPECT_EQ(text::joined(diagnostics.take(), "\n"), said + saved + " entries") << name;
        EXPECT_EQ(storedKeys(), isKept ? Lines{"file:/a.txt"} : Lines{}) << name;
    }
}

TEST_F(Bookmark, ofManyFilesAreWrittenOnceATurnAndAtTheEnd) {
    auto& writes = desktop.files.writes[bookmarkCachePath];
    {
        auto bookmarks = manager();
        for (const auto* path : {"/a.txt", "/b.txt", "/c.txt", "b.txt"})
            bookmarks.resolveResource(path, ResourceType::file);
        EXPECT_EQ(writes, 0);
        desktop.runUntilIdle();
        EXPECT_EQ(writes, 1);
        bookmarks.resolveResource("/b.txt", ResourceType::folder);
    }
    EXPECT_EQ(writes, 2);
    EXPECT_EQ(storedKeys(), (Lines{"file:/a.txt", "file:/b.txt", "file:/c.txt", "folder:/b.txt"}))
        << "a path that isn't whole leads nowhere";
    desktop.runUntilIdle();
    EXPECT_EQ(writes, 2);
}

TEST_F(Bookmark, isMadeAnewOfTheFileThatAnEditorPutInThePlace) {
    auto bookmarks = manager();
    bookmarks.resolveResource("/a.txt", ResourceType::file);
    ASSERT_TRUE(desktop.files.removeItem("/a.txt"));
    desktop.files.contents["/a.txt"] = "edited";
    bookmarks.renewBookmark("/a.txt", ResourceType::file);
    bookmarks.renewBookmark("/b.txt", ResourceType::file);
    ASSERT_TRUE(desktop.files.moveItem("/a.txt", "/moved.txt"));
    bookmarks.renewBookmark("/a.txt", ResourceType::file);
    EXPECT_EQ(bookmarks.resolveResource("/a.txt", ResourceType::file), Url::fromPath("/moved.txt"));
    ASSERT_TRUE(desktop.files.removeItem("/moved.txt"));
    bookmarks.renewBookmark("/a.txt", ResourceType::file);
    desktop.runUntilIdle();
    EXPECT_EQ(storedKeys(), Lines{"file:/a.txt"}) << "one is neither made nor dropped";
}

TEST_F(Bookmark, aCacheThatAnotherProgramChangedIsKeptAside) {
    auto bookmarks = manager();
    bookmarks.resolveResource("/a.txt", ResourceType::file);
    desktop.runUntilIdle();
    desktop.files.contents[bookmarkCachePath] = "theirs";
    bookmarks.resolveResource("/b.txt", ResourceType::file);
    desktop.runUntilIdle();
    EXPECT_EQ(desktop.files.contents.at(std::string(storeFolder) +
                                        "/bookmark_cache.changed-2026-01-01T12-00-00.plist"),
              "theirs");
    EXPECT_EQ(storedKeys().size(), 2u);
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
}

TEST_F(Bookmark, aCacheThatCannotBeReadIsKeptAsideBeforeTheFirstSave) {
    const std::string kept = std::string(storeFolder) + "/bookmark_cache.unreadable-";
    const std::string listOfText =
        PropertyList{PropertyList::Dictionary{{"file:/a.txt", {std::string("text")}}}}.toBinary();
    const struct {
        const char* name;
        std::string path;
        std::string content;
        bool isRefused;
        std::size_t diagnostics;
    } cases[]{
        {"no list", bookmarkCachePath, "garbage", false, 1},
        {"empty", bookmarkCachePath, "", false, 1},
        {"another list", bookmarkCachePath, listOfText, false, 0},
        {"an array", bookmarkCachePath, PropertyList{PropertyList::Array{}}.toBinary(), false, 0},
        {"not for our eyes", bookmarkCachePath, "secret", true, 1},
        {"a folder", std::string(bookmarkCachePath) + "/inside", "x", false, 1},
    };
    for (const auto& [name, path, content, isRefused, said] : cases) {
        desktop.files = {};
        SetUp();
        desktop.files.contents[path] = content;
        if (isRefused) desktop.files.unreadable = {path};
        diagnostics.take();
        BookmarkManager bookmarks(desktop.files, desktop.bookmarks, desktop.queue, desktop.queue,
                                  desktop.queue);
        EXPECT_EQ(diagnostics.take().size(), said + 1) << name;
        EXPECT_TRUE(bookmarks.bookmarkCache().empty()) << name;
        bookmarks.validateBookmarks();
        EXPECT_EQ(desktop.files.contents.at(path), content) << name << ": nothing was written yet";

        desktop.files.unreadable = desktop.files.unremovable = {bookmarkCachePath};
        bookmarks.resolveResource("/a.txt", ResourceType::file);
        desktop.runUntilIdle();
        EXPECT_EQ(desktop.files.contents.at(path), content) << name << ": it can't be kept";
        desktop.files.unremovable.clear();
        bookmarks.resolveResource("/b.txt", ResourceType::file);
        desktop.runUntilIdle();
        bookmarks.resolveResource("/c.txt", ResourceType::file);
        desktop.runUntilIdle();
        std::string found;
        for (const auto& [file, bytes] : desktop.files.contents) {
            if (file.starts_with(kept)) found += bytes;
        }
        EXPECT_EQ(found, content) << name;
        EXPECT_EQ(storedKeys().size(), 3u) << name;
    }
}

TEST_F(Bookmark, inAnOldWorkspacesFileMovesToTheCacheOnce) {
    // "bookmark 0" is that of /a.txt, "bookmark 1" that of /b.txt; /c.txt has an invalid one,
    // /d.txt an empty one, /e.txt none.
    for (const auto* path : {"/a.txt", "/b.txt"})
        desktop.files.identityOf(path);
    scene.writeFile(
        {scene.workspace("First", {scene.resource("a", "/a.txt"), scene.resource("c", "/c.txt")}),
         scene.workspace("Second", {scene.resource("b", "/b.txt"), scene.resource("d", "/d.txt"),
                                    scene.resource("e", "/e.txt")})});
    auto& file = desktop.files.contents[workspacesPath];
    const std::pair<const char*, const char*> bookmarks[]{{"/a.txt", "Ym9va21hcmsgMA=="},
                                                          {"/b.txt", "Ym9va21hcmsgMQ=="},
                                                          {"/c.txt", "Ym9vaw=="},
                                                          {"/d.txt", ""}};
    for (const auto& [path, bookmark] : bookmarks) {
        file = text::replacingAll(file, "\"path\":\"" + std::string(path) + "\"",
                                  "\"path\":\"" + std::string(path) + R"(","bookmarkData":")" +
                                      bookmark + "\"");
    }
    const std::string old = file;

    const auto firstStart = [&] {
        scene.start();
        Lines said = diagnostics.take();
        std::erase_if(said, [](const auto& line) { return !line.starts_with("📚"); });
        said.erase(said.begin());
        return said;
    };
    EXPECT_EQ(firstStart(), (Lines{"📚 Migrated valid bookmark for: /a.txt",
                                   "📚 Failed to resolve bookmark: The bookmark isn't valid.",
                                   "📚 Skipped invalid bookmark during migration: /c.txt",
                                   "📚 Migrated valid bookmark for: /b.txt",
                                   "📚 Failed to resolve bookmark: The bookmark isn't valid.",
                                   "📚 Skipped invalid bookmark during migration: /d.txt",
                                   "📚 Saved bookmark cache with 2 entries",
                                   "📚 Bookmark migration completed: 4 migrated, 1 skipped",
                                   "📚 Bookmark cache: 2 total, 2 valid, 0 invalid"}));
    EXPECT_EQ(storedKeys(), (Lines{"file:/a.txt", "file:/b.txt"}));
    EXPECT_EQ(file.find("bookmarkData"), std::string::npos);
    EXPECT_EQ(scene.saves(), 1);
    EXPECT_TRUE(scene.store->workspaces->front().resources.front().bookmarkData);

    // With the flag set nobody looks at them, and the next save takes them out.
    file = old;
    desktop.files.contents.erase(bookmarkCachePath);
    EXPECT_EQ(firstStart(), Lines{});
    EXPECT_FALSE(desktop.files.exists(bookmarkCachePath));
    EXPECT_EQ(file, old);
    scene.store->renameResource(scene.store->workspaces->front().resources.front().id, "x",
                                scene.store->workspaces->front().id);
    EXPECT_EQ(file.find("bookmarkData"), std::string::npos);
}

} // namespace
} // namespace corvane
