#include "core/StoreScene.h"
#include "fuzz/Fuzz.h"

using namespace corvane;

namespace {

bool isCache(std::string_view content) {
    const auto list = PropertyList::parse(content);
    const auto* dictionary = list ? list->as<PropertyList::Dictionary>() : nullptr;
    return dictionary && std::ranges::all_of(*dictionary, [](const auto& entry) {
               return entry.second.template as<Bytes>();
           });
}

} // namespace

/// Whatever the cache holds: it loads or it is kept aside, and what it loaded is still there after
/// the next save.
void feed(std::string_view text) {
    StoreScene scene;
    auto& contents = scene.desktop.files.contents;
    contents[bookmarkCachePath] = text;
    contents["/a.txt"] = "";

    auto bookmarks = scene.newBookmarks();
    bookmarks.validateBookmarks();
    const auto loaded = bookmarks.bookmarkCache();
    expect(bookmarks.resolveResource("/a.txt", ResourceType::file).has_value());
    bookmarks.writeChanges();

    const auto again = scene.newBookmarks().bookmarkCache();
    expect(again == bookmarks.bookmarkCache());
    for (const auto& [key, bookmark] : loaded)
        expect(key == "file:/a.txt" || again.at(key) == bookmark);
    expect(isCache(text) ||
           std::ranges::any_of(contents, [&](const auto& entry) { return entry.second == text; }));
}
