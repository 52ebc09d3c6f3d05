#include "linux/windows/sway/I3WindowSystem.h"
#include "linux/windows/x11/X11WindowSystem.h"
#include "machine/XDisplay.h"
#include "windows/WindowSession.h"
#include "world/XFrame.h"

#include <map>
#include <set>
#include <sstream>

namespace corvane {
namespace {

using namespace machine;

class X11Session : public WindowSession, XDisplay {
public:
    explicit X11Session(std::vector<std::string> manager) : managerWords_(std::move(manager)) {
        // Others take the server's outputs alone for monitors, of which there is one here.
        const bool hasTwo = has(Feature::secondMonitor);
        startServer(hasTwo ? "2880x900x24" : "1440x900x24");
        if (hasTwo) {
            EXPECT_TRUE(runs("xrandr --setmonitor '*first' 1440/1x900/1+0+0 screen"));
        }
        startManager(managerWords_);
        // KWin has one workspace until it is told of more.
        EXPECT_TRUE(runs("wmctrl -n 4"));
        EXPECT_TRUE(windowsBecome(0));
    }

    WindowSystem& system() override {
        if (managerWords_.front() == "i3") return i3_;
        return system_;
    }
    bool has(Feature feature) const override {
        const auto& manager = managerWords_.front();
        if (feature == Feature::tiling) return manager == "i3";
        // Others take any size from a pager.
        if (feature == Feature::secondMonitor || feature == Feature::sizeSteps)
            return manager == "openbox";
        static const std::map<Feature, std::set<std::string>> lacking{
            {Feature::sizeLimits, {"metacity", "marco", "icewm", "fluxbox", "i3"}},
            // The frame goes beyond the edges then.
            {Feature::maximizing, {"icewm", "i3"}},
            {Feature::minimizing, {"i3"}},
            {Feature::shading, {"i3"}},
            {Feature::bareScreen, {"icewm", "fluxbox"}},
            {Feature::panels, {"icewm", "fluxbox", "i3"}},
            {Feature::overTheEdge, {"metacity", "marco", "icewm"}},
            {Feature::order, {"fluxbox"}}};
        const auto found = lacking.find(feature);
        return found == lacking.end() || !found->second.contains(manager);
    }

    pid_t show(const ClientWishes& wishes) override {
        const auto before = probe_->managed().size();
        if (wishes.atClose == ClientWishes::AtClose::takesNoRequest) {
            XDisplay::show(own(wishes.title));
            return getpid();
        }
        const auto process = start(clientWords(wishes));
        EXPECT_TRUE(windowsBecome(before + (wishes.dialog.empty() ? 1 : 2))) << wishes.title;
        return process;
    }
    std::map<std::string, pid_t> showOthers() override {
        // A shadow that fades in moves the edges of what is visible.
        write(place("config/gtk-3.0/settings.ini"), "[Settings]\ngtk-enable-animations=0\n");
        std::map<std::string, pid_t> processes{
            {"steps", start({"xterm", "-e", "cat"})},
            {"plain", start({"xeyes"})},
            {"server side", start({"mousepad", "--disable-server"})},
            {"client side", start({"env", "GTK_CSD=1", "mousepad", "--disable-server"})}};
        constexpr std::uint32_t staticGravity = 10;
        constexpr std::uint32_t positionAndGravity = 1 | 1 << 9;
        const auto window = own("static");
        std::vector<std::uint32_t> hints(18);
        hints.front() = positionAndGravity;
        hints.back() = staticGravity;
        probe_->setList(window, "WM_NORMAL_HINTS", hints, XCB_ATOM_WM_SIZE_HINTS);
        XDisplay::show(window);
        processes["static"] = getpid();
        return processes;
    }
    std::string seen(const WindowRef& window) override {
        const auto frame =
            world::visibleFrame(outputOf(world::frameQuestion(std::to_string(window.number))));
        return frame.empty() ? "gone" : frame;
    }
    void act(const WindowRef& window, ByHand deed) override {
        static const std::map<ByHand, std::string> commands{
            {ByHand::maximize, "wmctrl -i -b add,maximized_vert,maximized_horz -r "},
            {ByHand::fillScreen, "wmctrl -i -b add,fullscreen -r "},
            {ByHand::minimize, "xdotool windowminimize "},
            {ByHand::shade, "wmctrl -i -b add,shaded -r "},
            {ByHand::move, "wmctrl -i -e 0,333,222,-1,-1 -r "},
            {ByHand::toOtherWorkspace, "wmctrl -i -t 1 -r "}};
        EXPECT_TRUE(runs(commands.at(deed) + std::to_string(window.number)));
    }
    void stop(Part part, const WindowRef& window) override { signal(part, window, SIGSTOP); }
    void goOn(Part part, const WindowRef& window) override { signal(part, window, SIGCONT); }
    void end() override {
        clients_.clear();
        manager_.reset();
        server_.reset();
    }
    void startAgain() override {
        startServer("1440x900x24", std::getenv("DISPLAY"));
        startManager(managerWords_);
        EXPECT_TRUE(windowsBecome(0));
    }
    void addPanel() override {
        const auto window = own("panel");
        probe_->setAtom(window, "_NET_WM_WINDOW_TYPE", "_NET_WM_WINDOW_TYPE_DOCK");
        probe_->setList(window, "_NET_WM_STRUT_PARTIAL", {0, 0, 30, 0, 0, 0, 0, 0, 0, 1439, 0, 0});
        XDisplay::show(window);
    }
    void addSecondMonitor(double) override {
        EXPECT_TRUE(runs("xrandr --setmonitor second 1440/1x900/1+1440+0 none"));
    }

private:
    xcb_window_t own(const std::string& title) {
        const auto window = probe_->make({200, 200, 300, 200});
        probe_->set(window, "_NET_WM_NAME", title, 8, probe_->atom("UTF8_STRING"));
        return window;
    }
    pid_t start(const std::vector<std::string>& words) {
        return clients_.emplace_back(std::make_unique<Program>(words))->id();
    }
    void signal(Part part, const WindowRef& window, int signal) {
        const std::map<Part, pid_t> processes{{Part::client, window.process},
                                              {Part::manager, manager_->id()},
                                              {Part::server, server_->id()}};
        kill(processes.at(part), signal);
    }

    ScopedVariable platform_{"QT_QPA_PLATFORM", "xcb"};
    std::vector<std::string> managerWords_;
    std::vector<std::unique_ptr<Program>> clients_;
    x11::X11WindowSystem system_;
    sway::I3WindowSystem i3_{system_};
};

/// Its user has everything float.
class I3Session final : ScopedVariable, public X11Session {
public:
    I3Session() : ScopedVariable("I3SOCK", place("i3.socket")), X11Session(manager()) {}

    void act(const WindowRef& window, ByHand deed) override {
        // It has no other workspace until a window goes there.
        static const std::map<ByHand, std::string> words{
            {ByHand::tile, "floating disable"},
            {ByHand::toOtherWorkspace, "move container to workspace 2"}};
        if (!words.contains(deed)) return X11Session::act(window, deed);
        EXPECT_TRUE(runs("i3-msg -s $I3SOCK '[id=" + std::to_string(window.number) + "] " +
                         words.at(deed) + "'"));
    }

private:
    static std::vector<std::string> manager() {
        write(place("i3.config"), "# i3 config file (v4)\nipc-socket " + place("i3.socket") +
                                      "\nfor_window [class=\".*\"] floating enable\n");
        return {"i3", "-c", place("i3.config")};
    }
};

} // namespace

std::unique_ptr<WindowSession> startI3Session() {
    return std::make_unique<I3Session>();
}

std::unique_ptr<WindowSession> startX11Session(const std::vector<std::string>& manager) {
    return std::make_unique<X11Session>(manager);
}

} // namespace corvane
