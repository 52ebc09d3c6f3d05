#include "core/BookmarkManager.h"

#include "core/DataDirectory.h"
#include "foundation/Diagnostics.h"
#include "platform/Bookmarks.h"
#include "platform/FileSystem.h"
#include "platform/MainQueue.h"

#include <utility>

namespace corvane {

namespace {

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

BookmarkManager::BookmarkManager(FileSystem& fileSystem, Bookmarks& bookmarks, const Clock& clock,
                                 MainQueue& mainQueue, DiskQueue& diskQueue)
    : fileSystem_(fileSystem), bookmarks_(bookmarks), mainQueue_(mainQueue),
      file_(fileSystem, clock, mainQueue, diskQueue,
            path::join(dataDirectoryOf(fileSystem), "bookmark_cache.plist"),
            {.written = [this](const auto& saved) { noteSaved(saved); }, .kept = {}}) {
    const auto made = fileSystem_.createDirectory(dataDirectoryOf(fileSystem_));
    if (!made) diagnostic({"📚 ", made.error().localizedDescription});
    loadCache();
    diagnostic({"📚 BookmarkManager initialized with cache at: ", file_.path()});
}

BookmarkManager::~BookmarkManager() {
    writeChanges();
}

void BookmarkManager::loadCache() {
    const auto bytes = file_.read();
    if (!bytes && bytes.error().isMissing) return;
    const auto list = bytes ? PropertyList::parse(*bytes) : bytes.error();
    if (!list) {
        const auto& why = list.error().localizedDescription;
        file_.distrust(why);
        diagnostic({"📚 Failed to load bookmark cache: ", why});
        return;
    }
    auto map = bytesByText(*list);
    if (!map) return file_.distrust("It holds something else.");
    bookmarkCache_ = std::move(*map);
    diagnostic({"📚 Loaded ", std::to_string(bookmarkCache_.size()), " bookmarks from cache"});
}

void BookmarkManager::saveCache() {
    if (std::exchange(isUnsaved_, true)) return;
    mainQueue_.async([this, alive = std::weak_ptr(alive_)] {
        if (!alive.expired()) writeChanges();
    });
}

void BookmarkManager::writeChanges() {
    if (!std::exchange(isUnsaved_, false)) return;
    PropertyList::Dictionary dictionary;
    for (const auto& [key, bookmark] : bookmarkCache_)
        dictionary.emplace(key, PropertyList{bookmark});
    file_.write(PropertyList{std::move(dictionary)}.toBinary());
}

void BookmarkManager::noteSaved(const Result<void>& saved) const {
    if (saved) {
        diagnostic(
            {"📚 Saved bookmark cache with ", std::to_string(bookmarkCache_.size()), " entries"});
    } else {
        diagnostic({"📚 Failed to save bookmark cache: ", saved.error().localizedDescription});
    }
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
    const bool isThere = path.starts_with('/') && fileSystem_.exists(path);
    if (factsOf(type).isInFileSystem && !isThere) {
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

void BookmarkManager::renewBookmark(const std::string& path, ResourceType type) {
    const auto cached = bookmarkCache_.find(bookmarkKey(path, type));
    if (cached == bookmarkCache_.end()) return;
    const auto place = bookmarks_.resolve(cached->second);
    auto renewed = bookmarks_.create(place ? *place : Url::fromPath(path));
    if (!renewed || *renewed == cached->second) return;
    cached->second = std::move(*renewed);
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
