#pragma once

#include "platform/FileIcons.h"

namespace corvane {

class Catalogue;

/// The icons that desktop entries name for applications, and the system's content types for files.
class LinuxFileIcons final : public FileIcons {
public:
    explicit LinuxFileIcons(const Catalogue& catalogue) : catalogue_(catalogue) {}

    std::optional<std::string> iconForFile(const std::string& path) const override;

private:
    const Catalogue& catalogue_;
};

} // namespace corvane
