#pragma once

#include "platform/FileIcons.h"

namespace corvane {

class InstalledApplications;

/// The icons that desktop entries name for applications, and the system's content types for files.
class LinuxFileIcons final : public FileIcons {
public:
    explicit LinuxFileIcons(const InstalledApplications& installed) : installed_(installed) {}

    std::optional<std::string> iconForFile(const std::string& path) const override;

private:
    const InstalledApplications& installed_;
};

} // namespace corvane
