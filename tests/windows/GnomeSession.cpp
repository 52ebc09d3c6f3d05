#include "foundation/Url.h"
#include "windows/CompositorSession.h"

#include <array>
#include <regex>

namespace corvane {
namespace {

using namespace machine;
namespace fs = std::filesystem;

/// Without its bar, as that leaves the whole monitor to windows.
class GnomeSession final : public CompositorSession {
public:
    explicit GnomeSession(bool isExtensionOn) {
        const auto prefix = folder_ + "/prefix";
        fs::create_directories(prefix + "/bin");
        fs::create_symlink(fs::read_symlink("/proc/self/exe"), prefix + "/bin/corvane");
        const fs::path extension(GNOME_EXTENSION);
        const auto extensions = prefix + "/share/gnome-shell/extensions";
        fs::create_directories(extensions);
        fs::copy(extension, extensions / extension.filename(), fs::copy_options::recursive);
        const auto name = "'" + extension.filename().string() + "'";
        write(folder_ + "/config/glib-2.0/settings/keyfile",
              "[org/gnome/shell]\nwelcome-dialog-last-shown-version='99'\nenabled-extensions=[" +
                  (isExtensionOn ? name : "") +
                  "]\n[org/gnome/desktop/interface]\nenable-animations=false\n"
                  "[org/gnome/mutter]\n"
                  "experimental-features=['scale-monitor-framebuffer']\n");
        set("XDG_DATA_HOME", prefix + "/share");
        set("XDG_CONFIG_HOME", folder_ + "/config");
        set("GSETTINGS_BACKEND", "keyfile");
        set("XDG_CURRENT_DESKTOP", "GNOME");
        set("DBUS_SYSTEM_BUS_ADDRESS", "unix:path=" + runtime_ + "/bus");
        run();
        set("WAYLAND_DISPLAY", "wayland-8");
        system_ = windowSystemHere();
    }
    bool has(Feature feature) const override {
        constexpr std::array lacking{Feature::shading,   Feature::tiling,
                                     Feature::sizeSteps, Feature::panelWindows,
                                     Feature::manager,   Feature::placesStoppedClients};
        return std::ranges::count(lacking, feature) == 0;
    }
    std::string seen(const WindowRef& window) override {
        return told(window, "(r => `${r.x},${r.y} ${r.width}x${r.height}`)(w.get_frame_rect())");
    }
    void act(const WindowRef& window, ByHand deed) override {
        static const std::map<ByHand, std::string> words{
            {ByHand::maximize, "w.maximize(3)"},
            {ByHand::fillScreen, "w.make_fullscreen()"},
            {ByHand::minimize, "w.minimize()"},
            {ByHand::move, "w.move_frame(true, 333, 222)"},
            {ByHand::toOtherWorkspace, "w.change_workspace_by_index(1, true)"}};
        told(window, words.at(deed));
    }
    /// Its bar.
    void addPanel() override {
        told("Main.panel.height = 30");
        told("Main.layoutManager.addChrome(Main.layoutManager.panelBox, "
             "{affectsStruts: true, trackFullscreen: true})");
    }
    void addSecondMonitor(double scale) override {
        const std::string isSecond = scale == 1 ? "false" : "true";
        const std::string isFirst = scale == 1 ? "true" : "false";
        useMonitors("(0, 0, 1, 0, " + isFirst + ", [('Meta-0', mode, {})]), (1440, 0, " +
                    std::to_string(scale) + ", 0, " + isSecond + ", [('Meta-1', mode, {})])");
    }

private:
    void run() override {
        CompositorSession::run("gnome-shell --headless --wayland --unsafe-mode "
                               "--virtual-monitor 1440x900 --virtual-monitor 1440x900 "
                               "--wayland-display wayland-8");
        useMonitors("(0, 0, 1, 0, true, [('Meta-0', mode, {})])");
        told("Main.layoutManager.removeChrome(Main.layoutManager.panelBox); Main.overview.hide()");
        EXPECT_TRUE(comesTrue([this] { return told("Main.overview.visible") == "false"; }));
    }
    bool isUp() override {
        std::smatch found;
        const auto log = read(folder_ + "/log");
        if (!std::regex_search(log, found, std::regex("public X11 display (:[0-9]+)")))
            return false;
        write(display(), found[1]);
        for (const auto& name : namesIn(runtime_))
            if (name.starts_with(".mutter-Xwaylandauth")) set("XAUTHORITY", runtime_ + '/' + name);
        return told("Main.layoutManager._startingUp") == "false";
    }
    static std::string call(const std::string& object, const std::string& method,
                            const std::string& parameters) {
        return outputOf("LC_ALL=C.UTF-8 gdbus call --session --timeout 5 -d " + object + " -m " +
                        method + ' ' + parameters);
    }
    /// What an expression of the shell comes to, with `w` for the window, found by its title.
    std::string told(const WindowRef& window, const std::string& expression) {
        const auto known = system_->window(window, soon());
        // gdbus takes a backslash out of it.
        const auto title = percentEncodedQuery(known ? known->title.value_or("") : "");
        return told(
            "(w => w ? " + expression +
            " : 'gone')(global.display.list_all_windows().find(w => w.get_title() === decodeURIComponent('" +
            title + "')))");
    }
    static std::string told(const std::string& expression) {
        const ScopedVariable words("WORDS", expression);
        const auto answer =
            call("org.gnome.Shell -o /org/gnome/Shell", "org.gnome.Shell.Eval", "\"$WORDS\"");
        // (true, '"words"')
        std::smatch found;
        const std::regex pattern("\\(true, '\"?([^'\"]*)\"?'\\)");
        return std::regex_search(answer, found, pattern) ? found[1].str() : "";
    }
    static void useMonitors(const std::string& monitors) {
        const std::string name = "org.gnome.Mutter.DisplayConfig";
        const auto object = name + " -o /org/gnome/Mutter/DisplayConfig";
        const auto state = call(object, name + ".GetCurrentState", "");
        std::smatch serial, mode;
        ASSERT_TRUE(std::regex_search(state, serial, std::regex("uint32 ([0-9]+)"))) << state;
        ASSERT_TRUE(std::regex_search(state, mode, std::regex("'1440x900@[^']*'"))) << state;
        const ScopedVariable words("MONITORS",
                                   '[' + text::replacingAll(monitors, "mode", mode.str()) + ']');
        ASSERT_NE(
            call(object, name + ".ApplyMonitorsConfig", serial[1].str() + " 1 \"$MONITORS\" '{}'"),
            "");
    }
};

} // namespace

std::unique_ptr<WindowSession> startGnomeSession(bool isExtensionOn) {
    return std::make_unique<GnomeSession>(isExtensionOn);
}

} // namespace corvane
