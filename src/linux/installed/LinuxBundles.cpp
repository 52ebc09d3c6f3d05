#include "linux/installed/LinuxBundles.h"

#include "linux/installed/InstalledApplications.h"
#include "linux/system/Gio.h"

#include <sys/utsname.h>

namespace corvane {

std::optional<Bundle> LinuxBundles::open(const std::string& path) const {
    const auto application = installed_.byBundlePath(path);
    if (!application) return std::nullopt;
    return Bundle{.bundleIdentifier = application->bundleIdentifier,
                  .displayName = application->displayName,
                  .name = application->name};
}

std::optional<std::string> LinuxBundles::bundlePathOfLauncher(const std::string& file) const {
    const auto application = installed_.byEntryFile(file);
    return application ? std::optional(application->bundlePath) : std::nullopt;
}

std::string LinuxBundles::mainBundleIdentifier() const {
    return programIdentifier;
}

std::optional<std::string> LinuxBundles::mainBundleInfo(std::string_view key) const {
    if (key == "CFBundleShortVersionString") return CORVANE_VERSION;
    if (key == "CFBundleVersion") return CORVANE_BUILD;
    return std::nullopt;
}

std::string LinuxBundles::operatingSystemVersion() const {
    const auto prettyName = gio::take(g_get_os_info(G_OS_INFO_KEY_PRETTY_NAME));
    utsname kernel{};
    ::uname(&kernel);
    return (prettyName.empty() ? "Linux" : prettyName) + " (" + kernel.sysname + " " +
           kernel.release + ")";
}

} // namespace corvane
