#pragma once

#include <optional>
#include <string>

namespace corvane {

class Applications;
class FileIcons;

/// The icon of an application by its name as the user sees it: of a bundle of that name, of the
/// application with that identifier, or of a running application whose name is part of it or has it
/// as a part. As FileIcons gives icons; nothing where none is found. Main thread.
std::optional<std::string> appIconForName(const std::string& name, const Applications& applications,
                                          const FileIcons& icons);

} // namespace corvane
