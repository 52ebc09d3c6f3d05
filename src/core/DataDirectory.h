#pragma once

#include "foundation/Url.h"
#include "platform/Bundles.h"
#include "platform/FileSystem.h"

#include <string>

namespace corvane {

/// The folder of what the program keeps, in the one of all programs' data.
inline std::string dataDirectoryOf(const FileSystem& fileSystem) {
    return path::join(fileSystem.applicationSupportDirectory(), programName);
}

} // namespace corvane
