#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <tuple>

#include <sys/types.h>

/// The files of desktop entries, before anyone reads them.
namespace corvane {

constexpr std::string_view entrySuffix = ".desktop";

/// Tells one content of a file from another.
using EntryStamp = std::tuple<dev_t, ino_t, off_t, time_t, long>;
/// Nothing where there is no regular file, behind links too.
std::optional<EntryStamp> entryStampOf(const std::string& path);

struct EntryFile {
    std::string path;
    EntryStamp stamp;
    bool operator==(const EntryFile&) const = default;
};
/// By desktop id.
using EntryFiles = std::map<std::string, EntryFile, std::less<>>;

/// When a folder's list of names changed last, in nanoseconds; nothing where there is none.
std::optional<std::int64_t> changeTimeOf(const std::string& folder);
/// The same of several, by their paths.
using FolderTimes = std::map<std::string, std::optional<std::int64_t>>;

/// Adds the entries in a folder and in those below it, eight deep, unless one of that id is there.
/// What can't be read, or leads in a circle, is passed over.
void collectEntries(const std::string& root, EntryFiles& files, FolderTimes& folders);

} // namespace corvane
