#pragma once

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

} // namespace corvane
