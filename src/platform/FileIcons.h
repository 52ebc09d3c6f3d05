#pragma once

#include <optional>
#include <string>

namespace corvane {

/// NSWorkspace iconForFile:, as far as a name goes. Main thread.
class FileIcons {
public:
    virtual ~FileIcons() = default;
    /// The icon of a file, folder or application bundle: a name of the desktop's icon theme, or the
    /// absolute path of a picture. Nothing where there is none.
    virtual std::optional<std::string> iconForFile(const std::string& path) const = 0;
};

} // namespace corvane
