#pragma once

#include "foundation/Result.h"
#include "foundation/Timestamp.h"

#include <string>
#include <string_view>

namespace corvane {

class FileSystem;

/// Keeps the content of a workspaces file in the folder, under a name with the date in it, and of
/// all that were kept there the ten newest. Any thread.
Result<void> keepCopy(FileSystem& fileSystem, const std::string& folder, std::string_view bytes,
                      Timestamp now);

} // namespace corvane
