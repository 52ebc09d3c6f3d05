#pragma once

#include "foundation/Url.h"
#include "linux/installed/InstalledApplications.h"

#include <optional>

namespace corvane {

/// Asks the session's file manager to show the item selected (org.freedesktop.FileManager1); where
/// nobody answers, opens the item's folder with `folderHandler`. Returns at once.
void revealInFileManager(const Url& item, std::optional<InstalledApplication> folderHandler);

} // namespace corvane
