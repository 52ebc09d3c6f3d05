#pragma once

#include "core/Records.h"
#include "foundation/PropertyList.h"
#include "foundation/Url.h"
#include "platform/OwnFile.h"

#include <cstddef>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

namespace corvane {

class Bookmarks;
class Clock;
class DiskQueue;
class FileSystem;
class MainQueue;

/// Of the bookmarks in the cache, those that lead to a file and those that don't.
struct BookmarkCounts {
    std::size_t total = 0;
    std::size_t valid = 0;
    std::size_t invalid = 0;

    bool operator==(const BookmarkCounts&) const = default;
};

/// Turns a resource's path and type into a file URL that the program may use, also after the file
/// was moved: by the bookmarks that it keeps in `bookmark_cache.plist` in the data directory, a
/// binary property list from key to bookmark. Changes are written once a turn of the main queue,
/// and at the end. One instance for the life of the process; main thread.
class BookmarkManager {
public:
    /// Makes the data directory and reads the cache, an OwnFile.
    BookmarkManager(FileSystem& fileSystem, Bookmarks& bookmarks, const Clock& clock,
                    MainQueue& mainQueue, DiskQueue& diskQueue);
    ~BookmarkManager();

    /// By the cached bookmark where there is one that works, with access started; otherwise by the
    /// path itself, of which a bookmark is made then. A bookmark that no longer works leaves the
    /// cache. Nothing where a file, folder or application isn't there.
    std::optional<Url> resolveResource(const std::string& path, ResourceType type);
    /// The file that the bookmark leads to, with access started. Nothing where it can't be found or
    /// access isn't given.
    std::optional<Url> resolveBookmark(const Bytes& bookmark);
    /// Makes a bookmark and stores it under the key. False where none can be made; a cache that
    /// can't be written doesn't count.
    bool createBookmark(const Url& url, const std::string& key);
    /// Makes the cached bookmark of the resource anew, if there is one: of the file to which it
    /// leads, or else of the one at the path. An editor may have put another file there.
    void renewBookmark(const std::string& path, ResourceType type);
    /// Stores a bookmark that came from elsewhere, in place of any older one.
    void storeBookmark(const std::string& key, Bytes bookmark);
    /// Writes what isn't written yet.
    void writeChanges();
    /// Tries every cached bookmark; changes none.
    BookmarkCounts validateBookmarks();

    /// The raw value of the type, a colon and the path.
    static std::string bookmarkKey(std::string_view path, ResourceType type);

    const std::map<std::string, Bytes>& bookmarkCache() const { return bookmarkCache_; }

private:
    void loadCache();
    void saveCache();
    void noteSaved(const Result<void>& saved) const;

    FileSystem& fileSystem_;
    Bookmarks& bookmarks_;
    MainQueue& mainQueue_;
    OwnFile file_;
    std::map<std::string, Bytes> bookmarkCache_;
    /// A change of the cache isn't written yet.
    bool isUnsaved_ = false;
    /// What is done later asks by this whether the manager is still there.
    const std::shared_ptr<const bool> alive_ = std::make_shared<const bool>(true);
};

} // namespace corvane
