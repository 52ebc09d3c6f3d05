#include "core/BookmarkManager.h"

#include "foundation/Diagnostics.h"
#include "platform/Bookmarks.h"
#include "platform/FileSystem.h"
#include "platform/MainQueue.h"
#include "platform/SafeNames.h"

#include <utility>

namespace corvane {

namespace {

std::string dataDirectory(const FileSystem& fileSystem) {
    return path::join(fileSystem.applicationSupportDirectory(), "Corvane");
}

/// Nothing where the list isn't a dictionary with data alone.
std::optional<std::map<std::string, Bytes>> bytesByText(const PropertyList& list) {
    const auto* dictionary = list.as<PropertyList::Dictionary>();
    if (!dictionary) return std::nullopt;
    std::map<std::string, Bytes> map;
    for (const auto& [key, value] : *dictionary) {
        const auto* bytes = value.as<Bytes>();
        if (!bytes) return std::nullopt;
        map.emplace(key, *bytes);
    }
    return map;
}

} // namespace

BookmarkManager::BookmarkManager(FileSystem& fileSystem, Bookmarks& bookmarks, const Clock& clock)
    : fileSystem_(fileSystem), bookmarks_(bookmarks), clock_(clock),
      bookmarkCacheURL_(
          Url::fromPath(path::join(dataDirectory(fileSystem), "bookmark_cache.plist"))) {
    const auto made = fileSystem_.createDirectory(dataDirectory(fileSystem_));
    if (!made) diagnostic({"📚 ", made.error().localizedDescription});
    loadCache();
    diagnostic({"📚 BookmarkManager initialized with cache at: ", bookmarkCacheURL_.path()});
}

void BookmarkManager::loadCache() {
    const auto& file = bookmarkCacheURL_.path();
    const auto bytes = fileSystem_.readFile(file);
    if (!bytes && bytes.error().isMissing) return;
    fileIsUnreadable_ = true;
    const auto list = bytes ? PropertyList::parse(*bytes) : bytes.error();
    if (!list) {
        diagnostic({"📚 Failed to load bookmark cache: ", list.error().localizedDescription});
        return;
    }
    auto map = bytesByText(*list);
    if (!map) return;
    fileIsUnreadable_ = false;
    bookmarkCache_ = std::move(*map);
    diagnostic({"📚 Loaded ", std::to_string(bookmarkCache_.size()), " bookmarks from cache"});
}

void BookmarkManager::saveCache() {
    const auto failed = [](const Error& error) {
        diagnostic({"📚 Failed to save bookmark cache: ", error.localizedDescription});
    };
    const auto& file = bookmarkCacheURL_.path();
    const auto made = fileSystem_.createDirectory(path::parent(file));
    if (!made) return failed(made.error());
    if (fileIsUnreadable_) {
        const auto kept = moveFileAside(fileSystem_, file, "unreadable", clock_.now());
        if (!kept) return failed(kept.error());
        fileIsUnreadable_ = false;
    }
    PropertyList::Dictionary dictionary;
    for (const auto& [key, bookmark] : bookmarkCache_)
        dictionary.emplace(key, PropertyList{bookmark});
    const auto bytes = PropertyList{std::move(dictionary)}.toBinary();
    const auto written = fileSystem_.writeFile(file, bytes);
    if (!written) return failed(written.error());
    diagnostic({"📚 Saved bookmark cache with ", std::to_string(bookmarkCache_.size()), " entries"});
}

std::optional<Url> BookmarkManager::resolveBookmark(const Bytes& bookmark) {
    const auto url = bookmarks_.resolve(bookmark);
    if (!url) {
        diagnostic({"📚 Failed to resolve bookmark: ", url.error().localizedDescription});
        return std::nullopt;
    }
    if (!bookmarks_.startAccessing(*url)) {
        diagnostic({"📚 Failed to start accessing security-scoped resource: ", url->path()});
        return std::nullopt;
    }
    return *url;
}

std::optional<Url> BookmarkManager::resolveResource(const std::string& path, ResourceType type) {
    const auto key = bookmarkKey(path, type);
    if (const auto cached = bookmarkCache_.find(key); cached != bookmarkCache_.end()) {
        if (auto url = resolveBookmark(cached->second)) {
            diagnostic({"📚 Resolved '", path, "' using cached bookmark"});
            return url;
        }
        diagnostic({"📚 Cached bookmark for '", path, "' is invalid, removing from cache"});
        bookmarkCache_.erase(cached);
        saveCache();
    }
    auto url = Url::fromPath(path);
    if (factsOf(type).isInFileSystem && !fileSystem_.exists(path)) {
        diagnostic({"📚 Failed to resolve resource at path: ", path});
        return std::nullopt;
    }
    diagnostic({"📚 Resolved '", path, "' using direct path access"});
    createBookmark(url, key);
    return url;
}

bool BookmarkManager::createBookmark(const Url& url, const std::string& key) {
    auto bookmark = bookmarks_.create(url);
    if (!bookmark) {
        diagnostic({"📚 Failed to create bookmark for '", url.path(),
                    "': ", bookmark.error().localizedDescription});
        return false;
    }
    storeBookmark(key, std::move(*bookmark));
    diagnostic({"📚 Created and cached bookmark for: ", url.path()});
    return true;
}

void BookmarkManager::storeBookmark(const std::string& key, Bytes bookmark) {
    bookmarkCache_.insert_or_assign(key, std::move(bookmark));
    saveCache();
}

BookmarkCounts BookmarkManager::validateBookmarks() {
    BookmarkCounts counts;
    for (const auto& [key, bookmark] : bookmarkCache_) {
        ++counts.total;
        ++(resolveBookmark(bookmark) ? counts.valid : counts.invalid);
    }
    return counts;
}

std::string BookmarkManager::bookmarkKey(std::string_view path, ResourceType type) {
    return std::string(rawValue(type)) + ":" + std::string(path);
}

} // namespace corvane
