#pragma once

#include "foundation/Result.h"
#include "foundation/Timestamp.h"

#include <string>
#include <string_view>

namespace corvane {

class FileSystem;

/// A moment as part of a file name, in UTC: "2026-11-24T14-05-09".
std::string fileDate(Timestamp moment);

/// A path in the folder where nothing stands yet: stem and extension, with " 2", " 3" ... between
/// them as needed.
std::string unusedSiblingPath(const FileSystem& fileSystem, std::string_view folder,
                              std::string_view stem, std::string_view extension);

/// Keeps a file that nobody here has read before another is written in its place: it is copied to
/// "{stem}.{why}-{date}{extension}" in its folder, or where it can't be read, moved there. The new
/// path; empty where nothing stands at the path any more. An error where that can't be told, or the
/// file can't be kept.
Result<std::string> keepFileAside(FileSystem& fileSystem, const std::string& path,
                                  std::string_view why, Timestamp now);

} // namespace corvane
