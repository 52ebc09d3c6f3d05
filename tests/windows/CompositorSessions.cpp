#include "windows/CompositorSession.h"

#include <array>
#include <regex>
#include <sstream>
#include <thread>

namespace corvane {
namespace {

using namespace machine;
namespace fs = std::filesystem;

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
        return feature == Feature::workspaces || feature == Feature::tiling ||
               feature == Feature::secondMonitor || feature == Feature::panels ||
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
            {ByHand::tile, "floating disable"},
            {ByHand::toOtherWorkspace, "move container to workspace 2"}};
        tell("[con_id=" + std::to_string(window.number) + "] " + words.at(deed));
    }
    void addSecondMonitor(double scale) override {
        tell("create_output");
        tell("output HEADLESS-2 scale " + std::to_string(scale));
    }

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
        // On a busy machine the first one may never come to be listed.
        const auto isListed = [] {
            return outputOf(command("-t get_tree")).find("XEyes") != std::string::npos;
        };
        EXPECT_TRUE(comesTrue([&] {
            const Program first({"xeyes"});
            for (int look = 0; look < 100 && !isListed(); ++look)
                std::this_thread::sleep_for(std::chrono::milliseconds(20));
            return isListed();
        }));
        EXPECT_TRUE(comesTrue([&] { return !isListed(); }));
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
        constexpr std::array lacking{Feature::shading, Feature::tiling, Feature::sizeSteps,
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
    void addSecondMonitor(double scale) override {
        useMonitors("output.2.enable output.2.position.1440,0 output.2.scale." +
                    std::to_string(scale) +
                    (scale == 1 ? "" : " output.2.priority.1 output.1.priority.2"));
    }

private:
    void run() override {
        CompositorSession::run(folder_ +
                               "/kwin_wayland --virtual --width 1440 --height 900 "
                               "--output-count 2 --no-lockscreen --no-global-shortcuts --xwayland "
                               "--socket wayland-9 " +
                               folder_ + "/app");
        const ScopedVariable display("WAYLAND_DISPLAY", "wayland-9");
        useMonitors("output.2.disable");
    }
    static void useMonitors(const std::string& words) {
        EXPECT_TRUE(runs("KSCREEN_BACKEND_INPROCESS=1 timeout 5 kscreen-doctor " + words)) << words;
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

} // namespace corvane
