#include "desktop/harness/Screen.h"
#include "foundation/Text.h"
#include "linux/windows/WindowSystems.h"
#include "machine/OwnWindows.h"
#include "machine/Program.h"
#include "windows/WindowSession.h"
#include "world/World.h"

#include <cstdio>
#include <optional>
#include <regex>
#include <set>

namespace corvane {
namespace {

using namespace machine;

/// Shown as the stories of the whole program have it shown, with clients of its own.
class ScreenSession final : public WindowSession {
public:
    ScreenSession(const std::string& command, bool isExtensionOn)
        : command_(command), program_(text::split(command, ' ').front()) {
        around_.root = world::makeFolder("corvane-windows");
        around_.corvane = fs::read_symlink("/proc/self/exe");
        around_.isExtensionOn = isExtensionOn;
        around_.monitors = has(Feature::secondMonitor) ? 2 : 1;
        around_.environment = environmentNow();
        const auto home = around_.root + "/home", runtime = around_.root + "/runtime";
        for (const auto& [name, value] : {std::pair<std::string, std::string>{"HOME", home},
                                          {"XDG_DATA_HOME", home + "/.local/share"},
                                          {"XDG_CONFIG_HOME", home + "/.config"},
                                          {"XDG_RUNTIME_DIR", runtime},
                                          {"QT_QPA_PLATFORM", isOnX11() ? "xcb" : "wayland"},
                                          {"LIBGL_ALWAYS_SOFTWARE", "1"},
                                          {"NO_AT_BRIDGE", "1"},
                                          {"GSETTINGS_BACKEND", "memory"},
                                          {"I3SOCK", around_.root + "/i3.socket"}})
            around_.set(name, value);
        // Where sway's user has to come to its programs.
        fs::permissions(place(""), fs::perms(0755));
        fs::create_directories(runtime);
        fs::permissions(runtime, fs::perms::owner_all);
        auto bus = world::busCommand(place("chosen"));
        bus.push_back("--print-address=3");
        bus_ = around_.startServer(bus, around_.bus);
        around_.set("DBUS_SESSION_BUS_ADDRESS", around_.bus);
        if (program_ == "i3") {
            // Its user has everything float.
            write(around_.root + "/i3.config", "# i3 config file (v4)\nipc-socket " + around_.root +
                                                   "/i3.socket\n" +
                                                   "for_window [class=\".*\"] floating enable\n");
            command_ += " -c " + around_.root + "/i3.config";
        }
        // A shadow that fades in moves the edges of what is visible.
        write(home + "/.config/gtk-3.0/settings.ini", "[Settings]\ngtk-enable-animations=0\n");
        session_ = around_.environment;
        startAgain();
        system_ = windowSystemHere();
    }
    ~ScreenSession() override {
        end();
        bus_.reset();
        fs::remove_all(around_.root);
    }
    WindowSystem& system() override { return *system_; }
    bool has(Feature feature) const override {
        if (program_ == "labwc") return false;
        static const std::map<Feature, std::set<std::string>> having{
            {Feature::tiling, {"i3", "sway"}},
            // Others take any size from a pager.
            {Feature::sizeSteps, {"openbox"}},
            {Feature::secondMonitor, {"openbox", "sway", "kwin_wayland", "gnome-shell"}}};
        static const std::map<Feature, std::set<std::string>> lacking{
            {Feature::owners, {"sway"}},
            // In sway they hold, but a while after a window was placed.
            {Feature::sizeLimits, {"metacity", "marco", "icewm", "fluxbox", "i3", "sway"}},
            // The frame goes beyond the edges in icewm then.
            {Feature::maximizing, {"icewm", "i3", "sway"}},
            {Feature::minimizing, {"i3", "sway"}},
            {Feature::shading, {"i3", "sway", "kwin_wayland", "gnome-shell"}},
            {Feature::bareScreen, {"icewm", "fluxbox"}},
            {Feature::panels, {"icewm", "fluxbox", "i3"}},
            {Feature::panelWindows, {"sway", "gnome-shell"}},
            {Feature::overTheEdge, {"metacity", "marco", "icewm"}},
            {Feature::order, {"fluxbox"}},
            {Feature::manager, {"sway", "kwin_wayland", "gnome-shell"}},
            {Feature::placesStoppedClients, {"kwin_wayland", "gnome-shell"}}};
        if (having.contains(feature)) return having.at(feature).contains(program_);
        return !lacking.contains(feature) || !lacking.at(feature).contains(program_);
    }

    pid_t show(const ClientWishes& wishes) override {
        if (wishes.atClose != ClientWishes::AtClose::takesNoRequest)
            return start(clientWords(wishes));
        probe_->show(own(wishes.title));
        return getpid();
    }
    std::map<std::string, pid_t> showOthers() override {
        std::map<std::string, pid_t> processes{
            {"on X11", start({"xterm", "-e", "cat"})},
            {"client side", start({"env", "GTK_CSD=1", "mousepad", "--disable-server"})}};
        if (!isOnX11()) return processes;
        processes["plain"] = start({"xeyes"});
        processes["server side"] = start({"mousepad", "--disable-server"});
        constexpr std::uint32_t staticGravity = 10;
        constexpr std::uint32_t positionAndGravity = 1 | 1 << 9;
        const auto window = own("static");
        std::vector<std::uint32_t> hints(18);
        hints.front() = positionAndGravity;
        hints.back() = staticGravity;
        probe_->setList(window, "WM_NORMAL_HINTS", hints, XCB_ATOM_WM_SIZE_HINTS);
        probe_->show(window);
        processes["static"] = getpid();
        return processes;
    }
    std::map<std::string, pid_t> showConfined() override {
        const auto confined = [this](std::vector<std::string> words) {
            words.insert(words.begin(), {"bwrap", "--unshare-pid", "--as-pid-1", "--dev-bind", "/",
                                         "/", "--proc", "/proc"});
            return start(words);
        };
        return {{"native", confined(clientWords({.title = "native"}))},
                {"on X11", confined({"xterm", "-T", "on X11", "-e", "cat"})}};
    }
    std::string seen(const WindowRef& window) override {
        const auto found = find(window);
        const auto look = found ? screen_->look(*found) : "";
        PixelRect frame;
        const int numbers = std::sscanf(look.c_str(), "%lf,%lf %lfx%lf", &frame.origin.x,
                                        &frame.origin.y, &frame.size.width, &frame.size.height);
        return numbers == 4 ? frameText(frame) : "gone";
    }
    void act(const WindowRef& window, ByHand deed) override {
        // It has no other workspace until a window goes there.
        static const std::map<ByHand, std::string> wordsOfI3{
            {ByHand::tile, "floating disable"},
            {ByHand::toOtherWorkspace, "move container to workspace 2"}};
        const auto found = find(window);
        ASSERT_TRUE(found);
        if (program_ == "i3" && wordsOfI3.contains(deed)) {
            around_.run({"i3-msg", "[id=" + found->id + "] " + wordsOfI3.at(deed)});
            return;
        }
        screen_->act(*found, deed);
        if (program_ == "labwc") screen_->act(*found, ByHand::comeForward);
    }
    void stop(Part part, const WindowRef& window) override { signal(part, window, SIGSTOP); }
    void goOn(Part part, const WindowRef& window) override { signal(part, window, SIGCONT); }
    void end() override {
        clients_.clear();
        screen_.reset();
        probe_.reset();
        for (const auto& left : fs::directory_iterator(around_.root + "/runtime"))
            fs::remove_all(left);
        fs::remove(around_.log());
    }
    void startAgain() override {
        around_.environment = session_;
        screen_ = desktop::startScreen(around_, command_);
        // A stale one, as a sway that was started again leaves in its clients' environment.
        auto environment = around_;
        if (program_ == "sway") environment.set("SWAYSOCK", "/nowhere/sway-ipc.gone.sock");
        variables_.clear();
        for (const auto& line : environment.environment) {
            const auto end = line.find('=');
            variables_.push_back(
                std::make_unique<ScopedVariable>(line.substr(0, end), line.substr(end + 1)));
        }
        probe_.emplace();
        if (program_ == "kwin_wayland") useMonitorsOfKWin("output.2.disable");
        if (program_ == "gnome-shell")
            useMonitorsOfGnome("(0, 0, 1, 0, true, [('Meta-0', mode, {})])");
    }
    void addPanel() override {
        if (isOnX11()) {
            const auto window = own("panel");
            probe_->setAtom(window, "_NET_WM_WINDOW_TYPE", "_NET_WM_WINDOW_TYPE_DOCK");
            probe_->setList(window, "_NET_WM_STRUT_PARTIAL",
                            {0, 0, 30, 0, 0, 0, 0, 0, 0, 1439, 0, 0});
            probe_->show(window);
        } else if (program_ == "gnome-shell") {
            // Its bar.
            gdbus("org.gnome.Shell -o /org/gnome/Shell -m org.gnome.Shell.Eval",
                  "Main.panel.height = 30; Main.layoutManager.addChrome("
                  "Main.layoutManager.panelBox, {affectsStruts: true, trackFullscreen: true})");
        } else {
            write(around_.root + "/bar", R"({"height": 30})");
            start({"waybar", "-c", around_.root + "/bar"});
        }
    }
    void addSecondMonitor(double scale) override {
        const auto factor = std::to_string(scale);
        if (program_ == "sway") {
            around_.run({"swaymsg", "create_output"});
            around_.run({"swaymsg", "output HEADLESS-2 scale " + factor});
        } else if (program_ == "kwin_wayland") {
            useMonitorsOfKWin("output.2.enable output.2.position.1440,0 output.2.scale." + factor +
                              (scale == 1 ? "" : " output.2.priority.1 output.1.priority.2"));
        } else if (program_ == "gnome-shell") {
            const std::string isFirst = scale == 1 ? "true" : "false";
            const std::string isSecond = scale == 1 ? "false" : "true";
            useMonitorsOfGnome("(0, 0, 1, 0, " + isFirst + ", [('Meta-0', mode, {})]), (1440, 0, " +
                               factor + ", 0, " + isSecond + ", [('Meta-1', mode, {})])");
        } else {
            around_.run({"xrandr", "--setmonitor", "second", "1440/1x900/1+1440+0", "none"});
        }
    }

private:
    static desktop::Environment environmentNow() {
        desktop::Environment lines;
        for (char** line = environ; *line; ++line)
            lines.emplace_back(*line);
        return lines;
    }
    bool isOnX11() const {
        return program_ != "sway" && program_ != "labwc" && program_ != "kwin_wayland" &&
               program_ != "gnome-shell";
    }
    pid_t start(const std::vector<std::string>& words) {
        return clients_.emplace_back(around_.start(words))->pid();
    }
    xcb_window_t own(const std::string& title) {
        const auto window = probe_->make({200, 200, 300, 200});
        probe_->set(window, "_NET_WM_NAME", title, 8, probe_->atom("UTF8_STRING"));
        probe_->set(window, "WM_CLASS", title + '\0' + title + '\0');
        return window;
    }
    /// By its title, as not every desktop numbers its windows as the system does.
    std::optional<desktop::Window> find(const WindowRef& window) {
        const auto known = system_->window(window, soon());
        for (const auto& each : screen_->windows()) {
            if (known && each.title == known->title && (!each.pid || each.pid == window.process))
                return each;
        }
        return std::nullopt;
    }
    void signal(Part part, const WindowRef& window, int number) {
        const auto process = part == Part::client    ? window.process
                             : part == Part::manager ? screen_->manager()
                                                     : screen_->server();
        ASSERT_GT(process, 0);
        kill(process, number);
    }
    static void useMonitorsOfKWin(const std::string& words) {
        EXPECT_TRUE(runs("KSCREEN_BACKEND_INPROCESS=1 timeout 5 kscreen-doctor " + words)) << words;
    }
    static std::string gdbus(const std::string& method, const std::string& last = "") {
        const ScopedVariable words("LAST", last);
        return outputOf("LC_ALL=C.UTF-8 gdbus call --session --timeout 5 -d " + method +
                        (last.empty() ? "" : " \"$LAST\""));
    }
    static void useMonitorsOfGnome(const std::string& monitors) {
        const std::string name = "org.gnome.Mutter.DisplayConfig";
        const auto method = name + " -o /org/gnome/Mutter/DisplayConfig -m " + name;
        const auto state = gdbus(method + ".GetCurrentState");
        std::smatch serial, mode;
        ASSERT_TRUE(std::regex_search(state, serial, std::regex("uint32 ([0-9]+)"))) << state;
        ASSERT_TRUE(std::regex_search(state, mode, std::regex("'1440x900@[^']*'"))) << state;
        const auto all = '[' + text::replacingAll(monitors, "mode", mode.str()) + ']';
        ASSERT_NE(
            gdbus(method + ".ApplyMonitorsConfig " + serial[1].str() + " 1 \"$LAST\" '{}' #", all),
            "");
    }

    std::string command_;
    const std::string program_;
    desktop::Surroundings around_;
    /// Before anything shows windows.
    desktop::Environment session_;
    std::vector<std::unique_ptr<ScopedVariable>> variables_;
    std::unique_ptr<desktop::Process> bus_;
    std::unique_ptr<desktop::Screen> screen_;
    std::unique_ptr<WindowSystem> system_;
    std::vector<std::unique_ptr<desktop::Process>> clients_;
    std::optional<OwnWindows> probe_;
};

} // namespace

std::unique_ptr<WindowSession> startSession(const std::string& command, bool isExtensionOn) {
    return std::make_unique<ScreenSession>(command, isExtensionOn);
}

} // namespace corvane
