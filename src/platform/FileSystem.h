#pragma once

#include "foundation/Result.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace corvane {

/// What changes when another file, or another content, comes to stand at a path.
struct FileStamp {
    std::uint64_t device = 0, inode = 0, size = 0;
    /// In nanoseconds.
    std::int64_t modified = 0;

    bool operator==(const FileStamp&) const = default;
};

/// NSFileManager, and the reading and writing of whole files. Paths are absolute. The paths of
/// installed applications' bundles exist like files. Any thread.
class FileSystem {
public:
    virtual ~FileSystem() = default;

    /// URLsForDirectory: Application Support and Documents of the user. No trailing "/"; the
    /// folders needn't exist.
    virtual std::string applicationSupportDirectory() const = 0;
    virtual std::string documentsDirectory() const = 0;

    /// Whether something stands at the path, symbolic links followed.
    virtual bool exists(const std::string& path) const = 0;
    virtual bool isDirectory(const std::string& path) const = 0;
    /// The names of what stands in a folder, in no order; none where it can't be read.
    virtual std::vector<std::string> namesIn(const std::string& folder) const = 0;
    /// Tells one content of a file from another, and a file that is missing (`isMissing`) from one
    /// that can't be reached. Symbolic links are followed.
    virtual Result<FileStamp> stamp(const std::string& path) const = 0;
    /// The whole content. An error for what isn't a readable regular file of at most 64 MiB.
    virtual Result<std::string> readFile(const std::string& path) const = 0;
    /// Replaces the content: on success all of `bytes` is on disk, on failure the old content
    /// stands. A file that can be written but not replaced is written in place, and a crash or a
    /// failing disk may leave a part of either. A symbolic link is followed, permissions survive.
    virtual Result<void> writeFile(const std::string& path, std::string_view bytes) = 0;
    /// The same, where nothing stands at the path or still what `known` tells; anything else stays
    /// as it is, which is an error too. What stands there now.
    virtual Result<FileStamp> rewriteFile(const std::string& path, std::string_view bytes,
                                          const std::optional<FileStamp>& known) = 0;
    /// With the folders above it, each for this user alone; one that is there already is fine.
    virtual Result<void> createDirectory(const std::string& path) = 0;
    /// Both fail where something stands at `to`.
    virtual Result<void> copyItem(const std::string& from, const std::string& to) = 0;
    virtual Result<void> moveItem(const std::string& from, const std::string& to) = 0;
    virtual Result<void> removeItem(const std::string& path) = 0;
    /// Takes the rights of all other users at an item, where it is this user's.
    virtual void makePrivate(const std::string& path) = 0;
};

} // namespace corvane
