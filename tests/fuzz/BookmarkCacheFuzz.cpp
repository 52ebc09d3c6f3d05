#include "core/BookmarkManager.h"
#include "simulated/SimulatedDesktop.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string>

using namespace corvane;

namespace {

bool isCache(const std::string& content) {
    const auto list = PropertyList::parse(content);
    const auto* dictionary = list ? list->as<PropertyList::Dictionary>() : nullptr;
    return dictionary && std::all_of(dictionary->begin(), dictionary->end(), [](const auto& entry) {
               return entry.second.template as<Bytes>();
           });
}

} // namespace

/// Whatever the cache holds: it loads or it is kept aside, and what it loaded is still there after
/// the next save.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string folder = "/home/user/.local/share/Corvane/";
    const std::string content(reinterpret_cast<const char*>(data), size);
    SimulatedDesktop desktop;
    desktop.files.contents[folder + "bookmark_cache.plist"] = content;
    desktop.files.contents["/a.txt"] = "";

    BookmarkManager bookmarks(desktop.files, desktop.bookmarks, desktop.queue, desktop.queue,
                              desktop.queue);
    bookmarks.validateBookmarks();
    const auto loaded = bookmarks.bookmarkCache();
    if (!bookmarks.resolveResource("/a.txt", ResourceType::file)) __builtin_trap();
    bookmarks.writeChanges();

    BookmarkManager again(desktop.files, desktop.bookmarks, desktop.queue, desktop.queue,
                          desktop.queue);
    if (again.bookmarkCache() != bookmarks.bookmarkCache()) __builtin_trap();
    for (const auto& [key, bookmark] : loaded) {
        if (key != "file:/a.txt" && again.bookmarkCache().at(key) != bookmark) __builtin_trap();
    }
    if (isCache(content)) return 0;
    bool isKept = false;
    for (const auto& [path, bytes] : desktop.files.contents)
        isKept |= bytes == content;
    if (!isKept) __builtin_trap();
    return 0;
}
