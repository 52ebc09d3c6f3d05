#include "core/BookmarkManager.h"

#include "foundation/Diagnostics.h"
#include "platform/FileSystem.h"

namespace corvane {

std::optional<Url> BookmarkManager::resolveResource(const std::string& path,
                                                    ResourceType type) const {
    const bool isOnDisk = type == ResourceType::file || type == ResourceType::folder ||
                          type == ResourceType::application;
    if (isOnDisk && !fileSystem_.exists(path)) {
        diagnostic({"📚 Failed to resolve resource at path: ", path});
        return std::nullopt;
    }
    diagnostic({"📚 Resolved '", path, "' using direct path access"});
    return Url::fromPath(path);
}

} // namespace corvane
