#include "world/World.h"

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <set>

namespace corvane::world {
namespace {

namespace fs = std::filesystem;

constexpr auto fonts = R"(<fontconfig>
<dir>/usr/share/fonts/opentype/inter</dir>
<dir>/usr/share/fonts/truetype/material-design-icons-iconfont</dir>
<dir>/usr/share/fonts/truetype/ancient-scripts</dir>
<dir>/usr/share/fonts/truetype/dejavu</dir>
<cachedir>/var/cache/fontconfig</cachedir>
<include>/etc/fonts/conf.d</include>
</fontconfig>
)";

void write(const fs::path& file, const std::string& content) {
    std::ofstream(file, std::ios::binary) << content;
}

/// Links to what is in the machine's folder, but what has one of those names.
void linkAllBut(const std::set<std::string>& left, const fs::path& from, const fs::path& to) {
    fs::create_directories(to);
    std::error_code none;
    for (const auto& each : fs::directory_iterator(from, none)) {
        const auto name = each.path().filename();
        if (!left.contains(name)) fs::create_symlink(each.path(), to / name);
    }
}

void linkEntries(const std::vector<std::string>& ids, const fs::path& from, const fs::path& to) {
    fs::create_directories(to);
    for (const auto& id : ids) {
        const auto name = id + ".desktop";
        if (fs::exists(from / name)) fs::create_symlink(from / name, to / name);
    }
}

} // namespace

std::map<std::string, std::string> make(const std::string& folder, const Chosen& chosen) {
    const fs::path place = folder;
    const fs::path machine = "/usr/share";
    linkAllBut({"applications", "dbus-1", "xdg-terminals", "xdg-terminal-exec"}, machine,
               place / "share");
    linkEntries(chosen.applications, machine / "applications", place / "share/applications");
    linkAllBut({"autostart", "mimeapps.list", "xdg-terminals.list"}, "/etc/xdg", place / "etc");
    write(place / "fonts.conf", fonts);
    std::map<std::string, std::string> variables{{"XDG_DATA_DIRS", place / "share"},
                                                 {"XDG_CONFIG_DIRS", place / "etc"},
                                                 {"FONTCONFIG_FILE", place / "fonts.conf"}};
    if (!chosen.terminal.empty()) {
        linkAllBut({"xdg-terminal-exec", "x-terminal-emulator"}, "/usr/bin", place / "bin");
        fs::create_symlink("/usr/bin/" + chosen.terminal, place / "bin/x-terminal-emulator");
        variables["PATH"] = (place / "bin").string() + ":/usr/sbin";
    }
    return variables;
}

void enter(const std::string& folder, const Chosen& chosen) {
    for (const auto& [name, value] : make(folder, chosen))
        setenv(name.c_str(), value.c_str(), 1);
    for (const auto* name :
         {"LC_ALL", "XDG_CURRENT_DESKTOP", "XDG_CACHE_HOME", "XDG_SESSION_TYPE", "DISPLAY",
          "WAYLAND_DISPLAY", "SWAYSOCK", "SESSION_MANAGER", "DBUS_SESSION_BUS_ADDRESS",
          "QT_QPA_PLATFORMTHEME", "QT_STYLE_OVERRIDE", "GTK_THEME"})
        unsetenv(name);
}

} // namespace corvane::world
