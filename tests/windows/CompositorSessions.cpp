#include "foundation/Url.h"
#include "linux/windows/WindowSystems.h"
#include "machine/XDisplay.h"
#include "windows/WindowSession.h"

#include <array>
#include <regex>
#include <sstream>

namespace corvane {
namespace {

using namespace machine;
namespace fs = std::filesystem;

/// A Wayland compositor without a screen, with a session bus and clients of its own.
class CompositorSession : public WindowSession {
public:
    WindowSystem& system() override { return *system_; }
    pid_t show(const ClientWishes& wishes) override {
        if (wishes.atClose == ClientWishes::AtClose::takesNoRequest) {
            letXClientsIn();
            if (!probe_) probe_.emplace();
            const auto window = probe_->make({200, 200, 300, 200});
            probe_->set(window, "_NET_WM_NAME", wishes.title, 8, probe_->atom("UTF8_STRING"));
            probe_->set(window, "WM_CLASS", wishes.title + '\0' + wishes.title + '\0');
            probe_->show(window);
            return getpid();
        }
        return start(clientWords(wishes));
    }
    std::map<std::string, pid_t> showOthers() override {
        letXClientsIn();
        return {{"client side", start({"mousepad", "--disable-server"})},
                {"on X11", start({"xterm", "-e", "cat"})}};
    }
    std::map<std::string, pid_t> showConfined() override {
        letXClientsIn();
        const auto confined = [this](std::vector<std::string> words) {
            words.insert(words.begin(), {"bwrap", "--unshare-pid", "--as-pid-1", "--dev-bind", "/",
                                         "/", "--proc", "/proc"});
            return start(words);
        };
        return {{"native", confined(clientWords({.title = "native"}))},
                {"on X11", confined({"xterm", "-T", "on X11", "-e", "cat"})}};
    }
    void stop(Part part, const WindowRef& window) override { signal(part, window, SIGSTOP); }
    void goOn(Part part, const WindowRef& window) override { signal(part, window, SIGCONT); }
    void end() override {
        clients_.clear();
        compositor_.reset();
    }
    void startAgain() override { run(); }

protected:
    CompositorSession() {
        // So that an ordinary user comes to the folder of the session below it.
        fs::remove_all(folder_);
        fs::create_directories(folder_);
        for (const auto& each : {fs::path(folder_), fs::path(folder_).parent_path()})
            fs::permissions(each, fs::perms(0755));
        fs::create_directory(runtime_);
        fs::permissions(runtime_, fs::perms(0700));
        set("XDG_RUNTIME_DIR", runtime_);
        set("DBUS_SESSION_BUS_ADDRESS", "unix:path=" + runtime_ + "/bus");
        set("QT_QPA_PLATFORM", "wayland");
        set("LIBGL_ALWAYS_SOFTWARE", "1");
        set("NO_AT_BRIDGE", "1");
        set("GSETTINGS_BACKEND", "memory");
        bus_.emplace(std::vector<std::string>{"dbus-daemon", "--session", "--nofork", "--nopidfile",
                                              "--address=unix:path=" + runtime_ + "/bus"});
        EXPECT_TRUE(comesTrue([this] { return fs::exists(runtime_ + "/bus"); }));
    }
    void set(const std::string& name, const std::string& value) {
        variables_[name].reset();
        variables_[name] = std::make_unique<ScopedVariable>(name, value);
    }
    /// A shell command that becomes the compositor, which writes its X display down.
    void run(const std::string& command) {
        fs::remove(display());
        compositor_.emplace(
            std::vector<std::string>{"sh", "-c",
                                     "unset WAYLAND_DISPLAY DISPLAY SWAYSOCK; exec " + command +
                                         " >" + folder_ + "/log 2>&1"});
        const auto isThere = [this] { return isUp() && !read(display()).empty(); };
        // A busy machine takes its time.
        EXPECT_TRUE(comesTrue(isThere) || comesTrue(isThere));
        const auto words = text::words(read(display()));
        set("DISPLAY", words.at(0));
        if (words.size() > 1) set("XAUTHORITY", words[1]);
    }
    std::string display() const { return runtime_ + "/display"; }
    virtual void run() = 0;
    /// Where this process isn't of the user that the compositor runs as.
    virtual void letXClientsIn() {}
    virtual bool isUp() = 0;
    pid_t start(const std::vector<std::string>& words) {
        return clients_.emplace_back(std::make_unique<Program>(words))->id();
    }

    const std::string folder_ = place("compositor");
    const std::string runtime_ = folder_ + "/runtime";
    std::unique_ptr<WindowSystem> system_;

private:
    void signal(Part part, const WindowRef& window, int signal) {
        const auto process = part == Part::client ? window.process : compositor_->id();
        ASSERT_GT(process, 0);
        kill(process, signal);
    }

    std::map<std::string, std::unique_ptr<ScopedVariable>> variables_;
    std::optional<Program> bus_;
    std::optional<Program> compositor_;
    std::vector<std::unique_ptr<Program>> clients_;
    std::optional<OwnWindows> probe_;
};

/// Its user has everything float.
class SwaySession final : public CompositorSession {
public:
    SwaySession() {
        write(folder_ + "/config", "output HEADLESS-1 resolution 1440x900 position 0 0\n"
                                   "output HEADLESS-2 resolution 1440x900 position 1440 0\n"
                                   "for_window [app_id=\".*\"] floating enable\n"
                                   "for_window [class=\".*\"] floating enable\n"
                                   "exec sh -c 'echo $DISPLAY > " +
                                       display() + "'\n");
        set("WLR_BACKENDS", "headless");
        set("WLR_LIBINPUT_NO_DEVICES", "1");
        set("WLR_RENDERER", "pixman");
        EXPECT_TRUE(geteuid() != 0 || chown(runtime_.c_str(), nobody, nobody) == 0);
        run();
        // A stale one, as a sway that was started again leaves in its clients' environment.
        set("SWAYSOCK", runtime_ + "/sway-ipc.gone.sock");
        set("WAYLAND_DISPLAY", "wayland-1");
        system_ = windowSystemHere();
    }
    bool has(Feature feature) const override {
        // A client's limits hold, but a while after its window was placed.
        return feature == Feature::workspaces || feature == Feature::secondMonitor ||
               feature == Feature::overTheEdge || feature == Feature::order ||
               feature == Feature::bareScreen || feature == Feature::unaskable ||
               feature == Feature::placesStoppedClients;
    }
    std::string seen(const WindowRef& window) override {
        constexpr auto look = R"(
import json, sys
def walk(node):
    yield node
    for child in node['nodes'] + node['floating_nodes']: yield from walk(child)
for node in walk(json.load(sys.stdin)):
    if node['id'] == int(sys.argv[1]):
        box, bar = node['rect'], node['deco_rect']['height']
        print(f"{box['x']},{box['y'] - bar} {box['width']}x{box['height'] + bar}", end='')
)";
        const ScopedVariable program("LOOK", look);
        const auto frame = outputOf(command("-t get_tree") + " | python3 -c \"$LOOK\" " +
                                    std::to_string(window.number));
        return frame.empty() ? "gone" : frame;
    }
    void act(const WindowRef& window, ByHand deed) override {
        static const std::map<ByHand, std::string> words{
            {ByHand::fillScreen, "fullscreen enable"},
            {ByHand::move, "move absolute position 333 px 222 px"},
            {ByHand::toOtherWorkspace, "move container to workspace 2"}};
        tell("[con_id=" + std::to_string(window.number) + "] " + words.at(deed));
    }
    void addSecondMonitor() override { tell("create_output"); }

private:
    static constexpr uid_t nobody = 65534;

    /// Any client's word to it.
    static std::string command(const std::string& words) {
        return "swaymsg -s $(ls -t $XDG_RUNTIME_DIR/sway-ipc.*.sock | head -1) " + words;
    }
    static void tell(const std::string& words) {
        EXPECT_TRUE(runs(command("'" + words + "'"))) << words;
    }
    bool isUp() override { return runs(command("-t get_version")); }
    /// The X server ends with its last client, and a window that comes before its manager escapes.
    void letXClientsIn() override {
        tell("exec sh -c \"xhost +si:localuser:root && exec xprop -root -spy\"");
        EXPECT_TRUE(comesTrue([] {
            return outputOf("xprop -root _NET_SUPPORTING_WM_CHECK").find("window id") !=
                   std::string::npos;
        }));
    }
    void run() override {
        const std::string user = "setpriv --reuid=65534 --regid=65534 --clear-groups ";
        CompositorSession::run((geteuid() == 0 ? user : "") + "sway -c " + folder_ + "/config");
    }
};

/// Like any that lists its windows for everybody and has no words of its own.
class LabwcSession final : public CompositorSession {
public:
    LabwcSession() {
        set("WLR_BACKENDS", "headless");
        set("WLR_LIBINPUT_NO_DEVICES", "1");
        set("WLR_RENDERER", "pixman");
        set("XDG_CONFIG_HOME", folder_ + "/config");
        write(folder_ + "/app", "#!/bin/sh\nxhost +si:localuser:root\necho $DISPLAY > " +
                                    display() + "\nexec xprop -root -spy\n");
        fs::permissions(folder_ + "/app", fs::perms(0755));
        run();
        set("WAYLAND_DISPLAY", "wayland-0");
        system_ = windowSystemHere();
    }
    bool has(Feature) const override { return false; }
    std::string seen(const WindowRef&) override { return ""; }
    void act(const WindowRef& window, ByHand deed) override {
        ASSERT_EQ(deed, ByHand::fillScreen);
        system_->setFullscreen(window, true, soon());
        system_->activate(window, soon());
    }

private:
    void run() override { CompositorSession::run("labwc -s " + folder_ + "/app"); }
    bool isUp() override { return fs::exists(runtime_ + "/wayland-0"); }
};

class KWinSession final : public CompositorSession {
public:
    KWinSession() {
        // The installed one has rights that keep its environment from it.
        fs::copy_file("/usr/bin/kwin_wayland", folder_ + "/kwin_wayland");
        write(folder_ + "/app", "#!/bin/sh\necho $DISPLAY $XAUTHORITY > " + display() + '\n');
        fs::permissions(folder_ + "/app", fs::perms(0755));
        set("XDG_CONFIG_HOME", folder_ + "/config");
        set("XDG_CURRENT_DESKTOP", "KDE");
        set("KWIN_COMPOSE", "Q");
        run();
        set("WAYLAND_DISPLAY", "wayland-9");
        system_ = windowSystemHere();
    }
    bool has(Feature feature) const override {
        constexpr std::array lacking{Feature::shading, Feature::sizeSteps,
                                     Feature::panels,  Feature::secondMonitor,
                                     Feature::manager, Feature::placesStoppedClients};
        return std::ranges::count(lacking, feature) == 0;
    }
    std::string seen(const WindowRef& window) override {
        const auto info = call("/KWin org.kde.KWin.getWindowInfo " + identifier(window));
        const auto number = [&](const std::string& key) {
            std::smatch found;
            const std::regex pattern("'" + key + "': <([-0-9.]+)>");
            return std::regex_search(info, found, pattern) ? std::stod(found[1]) : -1;
        };
        return info.empty()
                   ? "gone"
                   : frameText({{number("x"), number("y")}, {number("width"), number("height")}});
    }
    void act(const WindowRef& window, ByHand deed) override {
        static const std::map<ByHand, std::string> words{
            {ByHand::maximize, "w.setMaximize(true, true)"},
            {ByHand::fillScreen, "w.fullScreen = true"},
            {ByHand::minimize, "w.minimized = true"},
            {ByHand::move, "w.frameGeometry = {x: 333, y: 222, width: w.width, height: w.height}"},
            {ByHand::toOtherWorkspace,
             "workspace.createDesktop(1, 'more'); "
             "isSix ? w.desktops = [workspace.desktops[1]] : w.desktop = 2"}};
        const auto file = folder_ + "/deed.js";
        write(file, "const isSix = workspace.windowList !== undefined;\n"
                    "(isSix ? workspace.windowList() : workspace.clientList())"
                    ".filter(w => String(w.internalId) == '" +
                        identifier(window) + "').forEach(w => { " + words.at(deed) + "; });\n");
        call("/Scripting org.kde.kwin.Scripting.loadScript " + file + ' ' + file);
        call("/Scripting org.kde.kwin.Scripting.start");
        call("/Scripting org.kde.kwin.Scripting.unloadScript " + file);
    }

private:
    void run() override {
        CompositorSession::run(folder_ +
                               "/kwin_wayland --virtual --width 1440 --height 900 "
                               "--no-lockscreen --no-global-shortcuts --xwayland "
                               "--socket wayland-9 " +
                               folder_ + "/app");
    }
    bool isUp() override { return !call("/KWin org.kde.KWin.currentDesktop").empty(); }
    /// An object's path, a method and its parameters.
    std::string call(const std::string& words) {
        std::istringstream all(words);
        std::string path, rest;
        all >> path;
        std::getline(all, rest);
        return outputOf("LC_ALL=C.UTF-8 gdbus call --session --timeout 2 -d org.kde.KWin -o " +
                        path + " -m" + rest);
    }
    /// As KWin calls it; found by its title.
    std::string identifier(const WindowRef& window) {
        const auto known = system_->window(window, soon());
        const auto title =
            "'" + text::replacingAll(known ? known->title.value_or("") : "", "\\", "\\\\") + "'";
        const ScopedVariable words("TITLE", title);
        const auto matches = call("/WindowsRunner org.kde.krunner1.Match \"$TITLE\"");
        const auto place = matches.find(", " + title);
        constexpr std::size_t length = 38;
        return place == matches.npos ? "none" : matches.substr(place - length - 1, length);
    }
};

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
                  "]\n[org/gnome/desktop/interface]\nenable-animations=false\n");
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
        constexpr std::array lacking{Feature::shading, Feature::sizeSteps, Feature::panels,
                                     Feature::manager, Feature::placesStoppedClients};
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
    void addSecondMonitor() override {
        useMonitors("(0, 0, 1, 0, true, [('Meta-0', mode, {})]), "
                    "(1440, 0, 1, 0, false, [('Meta-1', mode, {})])");
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

std::unique_ptr<WindowSession> startSwaySession() {
    return std::make_unique<SwaySession>();
}

std::unique_ptr<WindowSession> startLabwcSession() {
    return std::make_unique<LabwcSession>();
}

std::unique_ptr<WindowSession> startKWinSession() {
    return std::make_unique<KWinSession>();
}

std::unique_ptr<WindowSession> startGnomeSession(bool isExtensionOn) {
    return std::make_unique<GnomeSession>(isExtensionOn);
}

} // namespace corvane
