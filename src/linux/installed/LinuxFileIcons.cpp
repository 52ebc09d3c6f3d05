#include "linux/installed/LinuxFileIcons.h"

#include "linux/installed/InstalledApplications.h"
#include "linux/system/Gio.h"

#include <sys/stat.h>

namespace corvane {

namespace {

/// Anything may stand at the path that an entry names; a pipe would be waited for without end.
bool isPicture(const std::string& path) {
    constexpr off_t largest = 16 << 20;
    struct stat info{};
    return ::stat(path.c_str(), &info) == 0 && S_ISREG(info.st_mode) && info.st_size <= largest;
}

/// Old entries name an icon of the theme with the extension of a picture.
std::string withoutExtension(std::string name) {
    for (const auto* extension : {".png", ".svg", ".xpm"}) {
        if (name.ends_with(extension)) name.resize(name.size() - 4);
    }
    return name;
}

} // namespace

std::optional<std::string> LinuxFileIcons::iconForFile(const std::string& path) const {
    if (const auto application = installed_.byBundlePath(path)) {
        const auto& icon = application->icon;
        if (icon.empty()) return std::nullopt;
        if (!icon.starts_with('/')) return withoutExtension(icon);
        return isPicture(icon) ? std::optional(icon) : std::nullopt;
    }
    const gio::Ref<GFile> file(g_file_new_for_path(path.c_str()));
    const gio::Ref<GFileInfo> info(g_file_query_info(file.get(), G_FILE_ATTRIBUTE_STANDARD_ICON,
                                                     G_FILE_QUERY_INFO_NONE, nullptr, nullptr));
    GIcon* icon = info ? g_file_info_get_icon(info.get()) : nullptr;
    if (!icon || !G_IS_THEMED_ICON(icon)) return std::nullopt;
    const char* const* names = g_themed_icon_get_names(G_THEMED_ICON(icon));
    return names && *names ? std::optional<std::string>(*names) : std::nullopt;
}

} // namespace corvane
