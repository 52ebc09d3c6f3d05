#include "bus/BusService.h"
#include "desktop/harness/CompositorScreen.h"
#include "desktop/harness/Scene.h"
#include "foundation/Json.h"

#include <filesystem>
#include <optional>
#include <regex>
#include <stdexcept>

namespace corvane::desktop {
namespace {

namespace fs = std::filesystem;

constexpr auto settings = R"([org/gnome/desktop/interface]
enable-animations=false
[org/gnome/mutter]
dynamic-workspaces=false
experimental-features=['scale-monitor-framebuffer']
[org/gnome/desktop/wm/preferences]
num-workspaces=4
[org/gnome/desktop/notifications]
show-banners=false
[org/gnome/shell]
welcome-dialog-last-shown-version='99'
)";

constexpr auto list = R"(
[global.workspace_manager.get_active_workspace_index()].concat(
    global.display.list_all_windows().map(w => {
        const box = w.get_frame_rect();
        const here = global.workspace_manager.get_active_workspace();
        return [w.get_id(), w.get_pid(), '.' + w.get_wm_class(),
                `${box.x},${box.y} ${box.width}x${box.height}` + (w.is_fullscreen() ? ' fullscreen'
                    : w.get_maximized() === 3 ? ' maximized' : ''),
                !w.minimized && w.located_on_workspace(here) ? 'seen' : '',
                w === global.display.focus_window ? 'front' : '', w.get_title()].join('\t');
    })).join('\n'))";

/// Without its bar, as that leaves the whole monitor to windows.
class GnomeScreen final : public CompositorScreen {
public:
    explicit GnomeScreen(Surroundings& around)
        : CompositorScreen(around,
                           {{{Deed::comeForward, "w.activate(global.get_current_time())"},
                             {Deed::fillScreen, "w.make_fullscreen()"},
                             {Deed::leaveFullScreen, "w.unmake_fullscreen()"},
                             {Deed::maximize, "w.maximize(3)"},
                             {Deed::minimize, "w.minimize()"},
                             {Deed::close, "w.delete(global.get_current_time())"},
                             {Deed::move, "w.move_frame(true, 333, 222)"},
                             {Deed::toOtherWorkspace, "w.change_workspace_by_index(1, true)"}},
                            "w.move_frame(true, $1, $2); "
                            "w.move_resize_frame(true, $1, $2, $3, $4)"}) {
        if (!fs::exists(home_ + "/.local/bin")) installForUser();
        around.set("GSETTINGS_BACKEND", "keyfile");
        around.set("XDG_CURRENT_DESKTOP", "GNOME");
        around.set("XDG_SESSION_TYPE", "wayland");
        around.set("DBUS_SYSTEM_BUS_ADDRESS", around.bus);
        std::vector<std::string> command{"setpriv",       "--pdeathsig",       "TERM",
                                         "gnome-shell",   "--headless",        "--wayland",
                                         "--unsafe-mode", "--wayland-display", "wayland-8"};
        for (int i = 0; i < around.monitors; ++i)
            command.insert(command.end(), {"--virtual-monitor", "1440x900"});
        compositor_ = around.start(command);
        std::smatch display;
        std::string log;
        const std::regex told("public X11 display (:[0-9]+)");
        if (!comesTrue(
                [&] { return std::regex_search(log = readFile(around.log()), display, told); }, 60))
            throw std::runtime_error("no display comes");
        around.set("WAYLAND_DISPLAY", "wayland-8");
        around.set("DISPLAY", display[1]);
        for (const auto& entry : fs::directory_iterator(around.root + "/runtime")) {
            if (entry.path().filename().string().starts_with(".mutter-Xwaylandauth"))
                around.set("XAUTHORITY", entry.path());
        }
        service_.emplace(around.bus, "app.corvane.Eye", std::vector<BusService::Object>{}, nullptr);
        // One that is hidden while the shell starts stays half hidden.
        const bool isUp = comesTrue(
            [&] {
                return ask("String(Main.layoutManager._startingUp || Main.overview.hide() || "
                           "Main.overview.visible)") == "false";
            },
            60);
        if (!isUp) throw std::runtime_error("it stays in its overview");
        ask("Main.layoutManager.removeChrome(Main.layoutManager.panelBox)");
    }
    void goTo(int workspace) const override {
        ask("global.workspace_manager.get_workspace_by_index(" + std::to_string(workspace) +
            ").activate(global.get_current_time())");
    }
    void savePicture(const std::string& file) const override {
        service_->call("org.gnome.Shell", "/org/gnome/Shell/Screenshot",
                       "org.gnome.Shell.Screenshot", "Screenshot",
                       g_variant_new("(bbs)", FALSE, FALSE, file.c_str()));
    }
    void stopManager() override {
        service_->call("org.gnome.Shell", "/org/gnome/Shell", "org.gnome.Shell.Extensions",
                       "DisableExtension", g_variant_new("(s)", "windows@corvane.app"));
    }
    std::vector<std::string> panel() const override { return {"sleep", "infinity"}; }

private:
    /// As a package does, in the user's own folders.
    void installForUser() const {
        const auto extensions = home_ + "/.local/share/gnome-shell/extensions";
        const auto extension = fs::path(GNOME_EXTENSION).filename();
        fs::create_directories(home_ + "/.local/bin");
        fs::create_symlink(around_.corvane, home_ + "/.local/bin/corvane");
        fs::create_directories(extensions);
        fs::copy(GNOME_EXTENSION, extensions / extension, fs::copy_options::recursive);
        writeFile(home_ + "/.config/glib-2.0/settings/keyfile",
                  std::string(settings) +
                      (around_.isExtensionOn ? "enabled-extensions=['" + extension.string() + "']\n"
                                             : ""));
    }
    std::string told() const override { return ask(list); }
    void tell(const Window& window, const std::string& words) const override {
        ask("global.display.list_all_windows().filter(w => w.get_id() == " + window.id +
            ").forEach(w => { " + words + "; })");
    }
    /// Empty where the shell doesn't answer, and where nothing comes of it.
    std::string ask(const std::string& words) const {
        const auto answer = service_->call("org.gnome.Shell", "/org/gnome/Shell", "org.gnome.Shell",
                                           "Eval", g_variant_new("(s)", words.c_str()));
        if (!answer) return {};
        gboolean isDone = FALSE;
        const char* text = nullptr;
        g_variant_get(answer.get(), "(b&s)", &isDone, &text);
        if (!isDone || *text != '"') return {};
        const json::Document document(text, "shell");
        return std::string(document.root().text());
    }

    const std::string home_ = around_.root + "/home";
    std::optional<BusService> service_;
};

} // namespace

std::unique_ptr<Screen> startGnomeScreen(Surroundings& around) {
    return std::make_unique<GnomeScreen>(around);
}

} // namespace corvane::desktop
