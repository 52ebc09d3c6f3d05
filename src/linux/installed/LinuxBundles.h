#pragma once

#include "platform/Bundles.h"

#include <string_view>

namespace corvane {

class InstalledApplications;

/// The installed applications' bundles. The display name is the desktop entry's name in the user's
/// language, the name the untranslated one.
class LinuxBundles final : public Bundles {
public:
    explicit LinuxBundles(const InstalledApplications& installed) : installed_(installed) {}

    std::optional<Bundle> open(const std::string& path) const override;
    std::optional<std::string> bundlePathOfLauncher(const std::string& file) const override;
    std::string mainBundleIdentifier() const override;
    std::optional<std::string> mainBundleInfo(std::string_view key) const override;
    std::string operatingSystemVersion() const override;

private:
    const InstalledApplications& installed_;
};

} // namespace corvane
