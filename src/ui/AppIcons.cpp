#include "ui/AppIcons.h"

#include "foundation/Text.h"
#include "platform/Applications.h"
#include "platform/FileIcons.h"

namespace corvane {

namespace {

constexpr std::string_view applicationFolders[]{"/Applications/", "/System/Applications/",
                                                "/Applications/Utilities/",
                                                "/System/Applications/Utilities/"};

std::optional<Url> runningBundle(const std::string& name, const Applications& applications) {
    const auto wanted = text::lowercased(name);
    for (const auto& application : applications.runningApplications()) {
        if (!application.localizedName || !application.bundleURL) continue;
        const auto shown = text::lowercased(*application.localizedName);
        const bool isAlike =
            shown.find(wanted) != std::string::npos || wanted.find(shown) != std::string::npos;
        if (isAlike) return application.bundleURL;
    }
    return std::nullopt;
}

} // namespace

std::optional<std::string> appIconForName(const std::string& name, const Applications& applications,
                                          const FileIcons& icons) {
    const auto icon = [&](const std::string& path) { return icons.iconForFile(path); };
    for (const auto folder : applicationFolders) {
        if (auto found = icon(std::string(folder) + name + ".app")) return found;
    }
    if (const auto url = applications.urlForApplication(name)) {
        if (auto found = icon(url->path())) return found;
    }
    if (const auto url = runningBundle(name, applications)) {
        return icon(url->path());
    }
    return std::nullopt;
}

} // namespace corvane
