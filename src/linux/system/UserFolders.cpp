#include "linux/system/UserFolders.h"

#include "linux/system/Gio.h"

namespace corvane::userFolders {
namespace {

std::string withoutTrailingSlash(std::string path) {
    while (path.size() > 1 && path.back() == '/')
        path.pop_back();
    return path;
}

std::string inHome(const std::string& relative) {
    return home() + "/" + relative;
}

/// The conventions say that a relative path is to be ignored.
std::string fromEnvironment(const char* variable, const std::string& fallback) {
    const std::string value = gio::text(g_getenv(variable));
    return value.starts_with('/') ? withoutTrailingSlash(value) : inHome(fallback);
}

} // namespace

std::string home() {
    return withoutTrailingSlash(gio::text(g_get_home_dir()));
}

std::string data() {
    return fromEnvironment("XDG_DATA_HOME", ".local/share");
}

std::string config() {
    return fromEnvironment("XDG_CONFIG_HOME", ".config");
}

std::string documents() {
    const std::string configured = gio::text(g_get_user_special_dir(G_USER_DIRECTORY_DOCUMENTS));
    return configured.empty() ? inHome("Documents") : withoutTrailingSlash(configured);
}

} // namespace corvane::userFolders
