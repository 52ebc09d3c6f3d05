#include "world/World.h"

#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <set>
#include <sstream>
#include <system_error>

#include <sys/statvfs.h>
#include <unistd.h>

namespace corvane::world {
namespace {

namespace fs = std::filesystem;

constexpr auto fonts = R"(<fontconfig>
<dir>/usr/share/fonts/opentype/inter</dir>
<dir>/usr/share/fonts/truetype/material-design-icons-iconfont</dir>
<dir>/usr/share/fonts/truetype/ancient-scripts</dir>
<dir>/usr/share/fonts/truetype/dejavu</dir>
<cachedir>/var/cache/fontconfig</cachedir>
<include>/usr/share/fontconfig/conf.avail/10-hinting-slight.conf</include>
<include>/usr/share/fontconfig/conf.avail/10-yes-antialias.conf</include>
<include>/usr/share/fontconfig/conf.avail/11-lcdfilter-default.conf</include>
<include>/usr/share/fontconfig/conf.avail/45-latin.conf</include>
<include>/usr/share/fontconfig/conf.avail/49-sansserif.conf</include>
<include>/usr/share/fontconfig/conf.avail/60-latin.conf</include>
<include>/usr/share/fontconfig/conf.avail/90-synthetic.conf</include>
</fontconfig>
)";

/// Some machines let nobody run a program from there, or have little of it.
bool holdsTests(const char* folder) {
    constexpr auto enough = std::uint64_t(2) << 30;
    struct statvfs system{};
    return statvfs(folder, &system) == 0 && !(system.f_flag & ST_NOEXEC) &&
           access(folder, W_OK) == 0 && std::uint64_t(system.f_bavail) * system.f_frsize > enough;
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

void linkThose(const std::vector<std::string>& names, const std::string& ending,
               const fs::path& from, const fs::path& to) {
    fs::create_directories(to);
    for (const auto& each : names) {
        const auto name = each + ending;
        if (fs::exists(from / name)) fs::create_symlink(from / name, to / name);
    }
}

std::string busConfiguration(const fs::path& services) {
    return "<busconfig><type>session</type><keep_umask/><listen>unix:tmpdir=/tmp</listen>"
           "<servicedir>" +
           services.string() +
           "</servicedir><policy context='default'><allow send_destination='*' eavesdrop='true'/>"
           "<allow eavesdrop='true'/><allow own='*'/></policy></busconfig>\n";
}

} // namespace

std::string makeFolder(const std::string& name) {
    constexpr auto memory = "/dev/shm";
    const fs::path above = holdsTests(memory) ? memory : fs::temp_directory_path();
    std::string folder = above / (name + "-XXXXXX");
    if (!mkdtemp(folder.data())) throw std::system_error(errno, std::generic_category(), folder);
    return folder;
}

std::map<std::string, std::string> make(const std::string& folder, const Chosen& chosen) {
    const fs::path place = folder;
    const fs::path machine = "/usr/share";
    linkAllBut({"applications", "dbus-1", "icons", "mime", "pixmaps", "xdg-terminals",
                "xdg-terminal-exec"},
               machine, place / "share");
    linkThose(chosen.applications, ".desktop", machine / "applications",
              place / "share/applications");
    linkThose(chosen.services, ".service", machine / "dbus-1/services", place / "services");
    linkThose({"Adwaita", "hicolor"}, "", machine / "icons", place / "share/icons");
    fs::create_directory(place / "share/icons/default");
    std::ofstream(place / "share/icons/default/index.theme") << "[Icon Theme]\nInherits=Adwaita\n";
    fs::create_directory_symlink(TYPES, place / "share/mime");
    linkThose({"dunst", "libfm", "menus", "openbox", "pcmanfm", "tint2", "xfce4"}, "", "/etc/xdg",
              place / "etc");
    std::ofstream(place / "fonts.conf") << fonts;
    std::ofstream(place / "bus.conf") << busConfiguration(place / "services");
    // GVfs leaks where it is installed.
    std::map<std::string, std::string> variables{{"XDG_DATA_DIRS", place / "share"},
                                                 {"XDG_CONFIG_DIRS", place / "etc"},
                                                 {"FONTCONFIG_FILE", place / "fonts.conf"},
                                                 {"GIO_USE_VFS", "local"}};
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
    std::istringstream ofTheSession(
        "LC_ALL LC_MESSAGES LC_COLLATE LC_TIME LC_NUMERIC LC_CTYPE LANGUAGE QT_SCALE_FACTOR "
        "QT_FONT_DPI XDG_CURRENT_DESKTOP XDG_CACHE_HOME XDG_SESSION_TYPE DISPLAY WAYLAND_DISPLAY "
        "SWAYSOCK SESSION_MANAGER DBUS_SESSION_BUS_ADDRESS QT_QPA_PLATFORMTHEME QT_STYLE_OVERRIDE "
        "GTK_THEME");
    for (std::string name; ofTheSession >> name;)
        unsetenv(name.c_str());
}

std::vector<std::string> busCommand(const std::string& folder) {
    return {"dbus-daemon", "--config-file=" + folder + "/bus.conf", "--nofork"};
}

} // namespace corvane::world
