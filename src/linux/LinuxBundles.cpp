#include "linux/LinuxBundles.h"

#include "linux/Catalogue.h"

namespace corvane {

std::optional<Bundle> LinuxBundles::open(const std::string& path) const {
    const auto application = catalogue_.byBundlePath(path);
    if (!application) return std::nullopt;
    return Bundle{.bundleIdentifier = application->bundleIdentifier,
                  .displayName = application->displayName,
                  .name = application->name};
}

std::string LinuxBundles::mainBundleIdentifier() const {
    return std::string(corvane::mainBundleIdentifier);
}

} // namespace corvane
