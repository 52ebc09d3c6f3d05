#include "desktop/harness/Screen.h"
#include "foundation/Text.h"
#include "world/XFrame.h"

#include <map>
#include <sstream>
#include <stdexcept>

namespace corvane::desktop {
namespace {

class X11Screen final : public Screen {
public:
    X11Screen(Surroundings& around, const std::string& manager) : around_(around) {
        std::string display;
        server_ = startXServer(around, display);
        around.set("DISPLAY", display);
        // Window managers take the server's outputs alone for monitors, of which there is one.
        if (around.monitors > 1)
            run({"xrandr", "--setmonitor", "*first", "1440/1x900/1+0+0", "screen"});
        manager_ = around.start(text::split(manager, ' '));
        const bool isManaged = comesTrue(
            [&] { return run({"wmctrl", "-m"}).find("Name: ") != std::string::npos; }, 20);
        if (!isManaged) throw std::runtime_error(manager + " doesn't come up");
        // Only one that is done with its start follows: openbox forgets a window that comes before.
        for (const auto* count : {"3", "4"}) {
            run({"wmctrl", "-n", count});
            comesTrue([&] { return run({"xdotool", "get_num_desktops"}).starts_with(count); }, 1);
        }
    }
    std::vector<Window> windows() const override {
        std::vector<Window> found;
        for (const auto& line : text::split(run({"wmctrl", "-lpx"}), '\n')) {
            Window window;
            std::string desktop, host;
            std::istringstream words(line);
            if (!(words >> window.id >> desktop >> window.pid >> window.windowClass >> host))
                continue;
            std::getline(words >> std::ws, window.title);
            found.push_back(window);
        }
        return found;
    }
    bool isViewable(const Window& window) const override {
        return run({"xwininfo", "-id", window.id}).find("IsViewable") != std::string::npos;
    }
    std::string look(const Window& window) const override {
        const auto told = run({"sh", "-c", world::frameQuestion(window.id)});
        const auto holds = [&](const char* word) { return told.find(word) != std::string::npos; };
        // Under a full screen nobody sees whether it is maximized.
        return world::visibleFrame(told) + (holds("_STATE_FULLSCREEN") ? " fullscreen"
                                            : holds("_MAXIMIZED_VERT") ? " maximized"
                                                                       : "");
    }
    std::string front() const override {
        const auto title = run({"xdotool", "getactivewindow", "getwindowname"});
        return title.substr(0, title.find('\n'));
    }
    void act(const Window& window, Deed deed) const override {
        using Words = std::vector<std::string>;
        static const std::map<Deed, Words> words{
            {Deed::comeForward, {"xdotool", "windowactivate", "--sync"}},
            {Deed::fillScreen, {"wmctrl", "-b", "add,fullscreen", "-i", "-r"}},
            {Deed::leaveFullScreen, {"wmctrl", "-b", "remove,fullscreen", "-i", "-r"}},
            {Deed::maximize, {"wmctrl", "-b", "add,maximized_vert,maximized_horz", "-i", "-r"}},
            {Deed::minimize, {"xdotool", "windowminimize", "--sync"}},
            {Deed::close, {"wmctrl", "-i", "-c"}},
            {Deed::shade, {"wmctrl", "-b", "add,shaded", "-i", "-r"}},
            {Deed::move, {"wmctrl", "-e", "0,333,222,-1,-1", "-i", "-r"}},
            {Deed::toOtherWorkspace, {"wmctrl", "-t", "1", "-i", "-r"}}};
        auto command = words.at(deed);
        command.push_back(window.id);
        run(command);
    }
    void place(const Window& window, const std::string& frame) const override {
        auto numbers = frame;
        for (auto& letter : numbers)
            if (letter == ' ' || letter == 'x') letter = ',';
        run({"wmctrl", "-i", "-r", window.id, "-e", "0," + numbers});
    }
    void goTo(int workspace) const override { run({"wmctrl", "-s", std::to_string(workspace)}); }
    int workspace() const override { return std::atoi(run({"xdotool", "get_desktop"}).c_str()); }
    void savePicture(const std::string& file) const override {
        run({"import", "-window", "root", file});
    }
    bool hasHands() const override { return true; }
    std::vector<std::string> panel() const override { return {"tint2"}; }
    pid_t server() const override { return server_->pid(); }
    pid_t manager() const override { return manager_->pid(); }
    void stopManager() override { manager_.reset(); }

private:
    std::string run(const std::vector<std::string>& command) const { return around_.run(command); }

    Surroundings& around_;
    std::unique_ptr<Process> server_, manager_;
};

} // namespace

std::unique_ptr<Process> startXServer(const Surroundings& around, std::string& name) {
    name = ":";
    const auto size = std::to_string(1440 * around.monitors) + "x900x24";
    return around.startServer(
        {"Xvfb", "-displayfd", "3", "-screen", "0", size, "-nolisten", "tcp", "-noreset"}, name);
}

std::unique_ptr<Screen> startX11Screen(Surroundings& around, const std::string& manager) {
    return std::make_unique<X11Screen>(around, manager);
}

std::unique_ptr<Screen> startScreen(Surroundings& around, const std::string& program) {
    if (program == "sway") return startSwayScreen(around);
    if (program == "labwc") return startLabwcScreen(around);
    if (program == "kwin_wayland") return startKWinScreen(around);
    if (program == "gnome-shell") return startGnomeScreen(around);
    return startX11Screen(around, program);
}

} // namespace corvane::desktop
