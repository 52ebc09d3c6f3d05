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

/// Makes room at the path of a file that nobody here has read, and keeps the file: it is renamed to
/// "{stem}.{why}-{date}{extension}" in its folder. The new path; empty where nothing stands at the
/// path any more. An error where that can't be told, or the file can't be moved.
Result<std::string> moveFileAside(FileSystem& fileSystem, const std::string& path,
                                  std::string_view why, Timestamp now);

} // namespace corvane
