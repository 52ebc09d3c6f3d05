#pragma once

#include "core/Records.h"
#include "foundation/Url.h"

#include <optional>
#include <string>

namespace corvane {

class FileSystem;

/// Turns a resource's path and type into a file URL that the program may use. One instance beside
/// the store. Main thread.
class BookmarkManager {
public:
    explicit BookmarkManager(const FileSystem& fileSystem) : fileSystem_(fileSystem) {}

    /// Nothing where a file, folder or application isn't there.
    std::optional<Url> resolveResource(const std::string& path, ResourceType type) const;

private:
    const FileSystem& fileSystem_;
};

} // namespace corvane
