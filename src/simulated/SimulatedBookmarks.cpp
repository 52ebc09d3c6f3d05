#include "simulated/SimulatedBookmarks.h"

#include "simulated/SimulatedFiles.h"

#include <charconv>

namespace corvane {

namespace {

constexpr std::string_view prefix = "bookmark ";

} // namespace

Result<Bytes> SimulatedBookmarks::create(const Url& url) {
    if (uncreatable.contains(url.path())) return Error{"A bookmark isn't allowed."};
    const auto identity = files_.identityOf(url.path());
    if (!identity) return Error{"There is no file “" + url.path() + "”."};
    const auto text = std::string(prefix) + std::to_string(*identity);
    return Bytes(text.begin(), text.end());
}

Result<Url> SimulatedBookmarks::resolve(const Bytes& bookmark) {
    const std::string text(bookmark.begin(), bookmark.end());
    int identity = 0;
    if (!text.starts_with(prefix) ||
        std::from_chars(text.data() + prefix.size(), text.data() + text.size(), identity).ec !=
            std::errc()) {
        return Error{"The bookmark isn't valid."};
    }
    const auto path = files_.pathOf(identity);
    if (!path || unresolvable.contains(*path)) return Error{"The file can't be found."};
    return Url::fromPath(*path);
}

bool SimulatedBookmarks::startAccessing(const Url& url) {
    if (inaccessible.contains(url.path())) return false;
    ++accesses[url.path()];
    return true;
}

void SimulatedBookmarks::stopAccessing(const Url& url) {
    --accesses[url.path()];
}

} // namespace corvane
