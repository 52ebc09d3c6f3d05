#include "desktop/harness/Desktop.h"

#include "desktop/harness/Scene.h"
#include "foundation/PropertyList.h"
#include "foundation/Text.h"
#include "world/World.h"

#include <algorithm>
#include <array>
#include <csignal>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <stdexcept>
#include <utility>

namespace corvane::desktop {

namespace fs = std::filesystem;

namespace {

/// Nothing of the first start, and nothing that leaves the machine: all but the machine itself is
/// behind a proxy that isn't there.
constexpr auto browserPreferences = R"(user_pref("browser.aboutwelcome.enabled", false);
user_pref("browser.shell.checkDefaultBrowser", false);
user_pref("browser.startup.homepage", "about:blank");
user_pref("browser.startup.homepage_override.mstone", "ignore");
user_pref("datareporting.policy.dataSubmissionEnabled", false);
user_pref("toolkit.telemetry.reportingpolicy.firstRun", false);
user_pref("network.captive-portal-service.enabled", false);
user_pref("network.connectivity-service.enabled", false);
user_pref("network.proxy.type", 1);
user_pref("network.proxy.http", "127.0.0.1");
user_pref("network.proxy.http_port", 9);
user_pref("network.proxy.ssl", "127.0.0.1");
user_pref("network.proxy.ssl_port", 9);
user_pref("network.proxy.no_proxies_on", "localhost, 127.0.0.1");
)";

} // namespace

Desktop::Desktop() {
    around_.root = world::makeFolder("corvane-desktop");
    around_.corvane = corvaneProgram();
    adoptOrphans();
    const world::Chosen chosen{
        {"org.xfce.mousepad", "pcmanfm", "firefox-esr", "debian-xterm", "org.gnome.Terminal"},
        {"org.a11y.Bus", "org.gnome.Terminal", "org.xfce.Xfconf", "ca.desrt.dconf",
         "org.gnome.Shell.Extensions", "org.gnome.ScreenSaver"},
        "xterm"};
    for (const auto& [name, value] : world::make(around_.root + "/world", chosen)) {
        around_.set(name, value);
        // What is started is looked for along this process's own: the machine's may lead to
        // wrappers.
        if (name == "PATH") setenv("PATH", value.c_str(), 1);
    }
    around_.set("LANG", "C.UTF-8");
    around_.set("SHELL", "/bin/bash");
    around_.set("HOME", home(""));
    around_.set("XDG_DATA_HOME", home(".local/share"));
    around_.set("XDG_CONFIG_HOME", home(".config"));
    around_.set("XDG_CACHE_HOME", home(".cache"));
    around_.set("XDG_RUNTIME_DIR", around_.root + "/runtime");
    around_.set("QT_LINUX_ACCESSIBILITY_ALWAYS_ON", "1");
    around_.set("CORVANE_DIAGNOSTICS", "1");
    // Else a prepared profile isn't taken, since it doesn't name this installation of Firefox.
    around_.set("MOZ_LEGACY_PROFILES", "1");
    prepareHome();
    startSession();
}

Desktop::~Desktop() {
    accessibility_.reset();
    killDescendants();
    std::error_code ignored;
    fs::remove_all(around_.root, ignored);
}

std::string Desktop::home(const std::string& relative) const {
    const auto path = fs::path(around_.root) / "home" / relative;
    fs::create_directories(path.parent_path());
    return path;
}

std::string Desktop::workspacesFile() const {
    return home(".local/share/Corvane/corvane_workspaces.json");
}

std::string Desktop::preferencesFile() const {
    return home(".config/app.corvane.Corvane.plist");
}

void Desktop::prepareHome() const {
    fs::create_directory(around_.root + "/runtime");
    fs::permissions(around_.root + "/runtime", fs::perms::owner_all);
    fs::create_directories(home("Documents"));
    writeFile(home(".config/mimeapps.list"), "[Default Applications]\n"
                                             "text/plain=org.xfce.mousepad.desktop\n"
                                             "inode/directory=pcmanfm.desktop\n"
                                             "text/html=firefox-esr.desktop\n"
                                             "x-scheme-handler/http=firefox-esr.desktop\n"
                                             "x-scheme-handler/https=firefox-esr.desktop\n");
    // These bring trays of their own, in which the program would stay.
    writeFile(home(".icewm/preferences"), "ShowTaskBar=0\n");
    writeFile(home(".fluxbox/init"), "session.screen0.toolbar.tools: clock\n");
    writeFile(home(".mozilla/firefox/profiles.ini"), "[General]\nStartWithLastProfile=1\n"
                                                     "[Profile0]\nName=default\nIsRelative=1\n"
                                                     "Path=default\nDefault=1\n");
    writeFile(home(".mozilla/firefox/default/user.js"), browserPreferences);
}

void Desktop::skipIntroduction() const {
    writeFile(
        preferencesFile(),
        PropertyList{PropertyList::Dictionary{{"HasCompletedOnboarding", {true}}}}.toBinary());
}

void Desktop::install(const std::string& id, const std::string& name,
                      const std::string& exec) const {
    writeFile(home(".local/share/applications/" + id + ".desktop"),
              "[Desktop Entry]\nType=Application\nName=" + name + "\nExec=" + exec + "\n");
}

void Desktop::startSession() {
    auto bus = world::busCommand(around_.root + "/world");
    bus.push_back("--print-address=3");
    bus_ = around_.startServer(bus, around_.bus);
    around_.set("DBUS_SESSION_BUS_ADDRESS", around_.bus);
    const auto program = variable("WINDOW_MANAGER", "openbox");
    try {
        screen_ = startScreen(around_, program);
    } catch (const std::exception& error) {
        throw std::runtime_error(program + ": " + error.what() + "\n" + readFile(around_.log()));
    }
    // What the bus starts is shown there too.
    run({"dbus-update-activation-environment", "--all"});
    accessibility_ = std::make_unique<Accessibility>(around_.bus);
}

std::string Desktop::corvaneProgram() {
    return CORVANE_PROGRAM;
}

Process& Desktop::startCorvane(const std::vector<std::string>& prefix) {
    auto command = prefix;
    command.push_back(corvaneProgram());
    corvane_.reset();
    corvane_ =
        std::make_unique<Process>(command, around_.environment, around_.root + "/corvane.log");
    return *corvane_;
}

std::optional<Window> Desktop::window(const std::string& windowClass,
                                      const std::string& titlePart) const {
    for (const auto& window : windows()) {
        const auto found = text::lowercased(window.windowClass);
        if (!found.ends_with("." + text::lowercased(windowClass))) continue;
        if (window.title.find(titlePart) == std::string::npos) continue;
        if (screen_->isViewable(window)) return window;
    }
    return std::nullopt;
}

bool Desktop::act(Deed deed, const std::string& windowClass, const std::string& titlePart) const {
    const auto found = window(windowClass, titlePart);
    if (found) screen_->act(*found, deed);
    return found.has_value();
}

std::vector<pid_t> Desktop::processes(const std::string& program) const {
    auto found = descendants(getpid());
    std::erase_if(found, [&](pid_t pid) { return programOf(pid) != program; });
    return found;
}

std::vector<Control> Desktop::controls() const {
    return corvane_ ? accessibility_->controls(corvane_->pid()) : std::vector<Control>{};
}

bool Desktop::shows(const std::string& text) const {
    for (const auto& control : controls()) {
        if (control.name.find(text) != std::string::npos) return true;
    }
    return false;
}

std::string Desktop::raise() const {
    // The newest window is last, and that is the one to answer first.
    std::string own;
    for (const auto& window : windows()) {
        if (window.pid == corvane_->pid()) own = window.id;
    }
    if (!own.empty()) run({"xdotool", "windowactivate", "--sync", own});
    return own;
}

Point Desktop::asShown(Point place, const std::string& id) const {
    const auto all = controls();
    const auto frame = std::find_if(all.rbegin(), all.rend(),
                                    [](const Control& control) { return control.isWindow; });
    const auto shown = run({"xwininfo", "-id", id});
    const auto corner = [&](const std::string& mark) {
        return std::atoi(shown.c_str() + shown.find(mark) + mark.size());
    };
    if (frame == all.rend() || shown.find("Absolute") == std::string::npos) return place;
    place.x += corner("Absolute upper-left X:") - int(frame->place.x);
    place.y += corner("Absolute upper-left Y:") - int(frame->place.y);
    return place;
}

std::optional<Control> Desktop::find(const std::string& name, const std::string& inside) const {
    const auto all = controls();
    const auto isInside = [](const Rect& part, const Rect& whole) {
        return part.x >= whole.x && part.y >= whole.y &&
               part.x + part.width <= whole.x + whole.width &&
               part.y + part.height <= whole.y + whole.height;
    };
    std::optional<Control> found;
    for (const auto& control : all) {
        if (control.name != name || !control.isEnabled || control.place.width <= 0) continue;
        // A heading may have the name of the button above it.
        if (found && control.role == "label") continue;
        const bool fits = inside.empty() || std::ranges::any_of(all, [&](const Control& whole) {
                              return whole.name == inside && isInside(control.place, whole.place);
                          });
        if (fits) found = control;
    }
    return found;
}

bool Desktop::act(const std::string& action, const std::string& name,
                  const std::string& inside) const {
    return comesTrue([&] {
        const auto control = find(name, inside);
        return control && accessibility_->act(*control, action);
    });
}

std::string Desktop::focused() const {
    for (const auto& control : controls()) {
        if (control.hasKeyboard && !control.isWindow) return control.name;
    }
    return {};
}

bool Desktop::isAnnounced(const std::string& text) const {
    return comesTrue([&] {
        const auto& all = accessibility_->announced();
        return text.empty() || std::ranges::any_of(all, [&](const auto& said) {
                   return said.find(text) != std::string::npos;
               });
    });
}

std::optional<Point> Desktop::middleOf(const std::string& name, const std::string& inside) const {
    std::optional<Rect> before;
    const bool standsStill = comesTrue([&] {
        const auto control = find(name, inside);
        const auto now = control ? std::optional(control->place) : std::nullopt;
        return std::exchange(before, now) == now && now;
    });
    if (!standsStill) return std::nullopt;
    return Point{int(before->x + before->width / 2), int(before->y + before->height / 2)};
}

bool Desktop::assist(const std::string& name, const std::string& inside) const {
    return comesTrue([&] {
        const auto control = find(name, inside);
        constexpr std::array actions{"Press", "Toggle", "SetFocus"};
        return control && std::ranges::any_of(actions, [&](const auto* action) {
                   return accessibility_->act(*control, action);
               });
    });
}

bool Desktop::press(const std::string& name, const std::string& inside) const {
    if (!screen_->hasHands()) return assist(name, inside);
    const auto told = middleOf(name, inside);
    if (!told) return false;
    const auto place = asShown(*told, raise());
    run({"xdotool", "mousemove", std::to_string(place.x), std::to_string(place.y), "click", "1"});
    return true;
}

void Desktop::carry(const Point& from, const Point& to) const {
    // Both programs have to hear of each step before the button is released.
    constexpr int steps = 10;
    std::vector<std::string> command{"xdotool"};
    for (int step = 0; step <= steps; ++step) {
        const int x = from.x + (to.x - from.x) * step / steps;
        const int y = from.y + (to.y - from.y) * step / steps;
        command.insert(command.end(),
                       {"mousemove", std::to_string(x), std::to_string(y), "sleep", "0.1"});
        if (step == 0) command.insert(command.end(), {"mousedown", "1", "sleep", "0.1"});
    }
    run(command);
}

void Desktop::drag(const Point& from, const Point& to) const {
    carry(from, to);
    run({"xdotool", "sleep", "1", "mouseup", "1"});
}

bool Desktop::write(const std::string& text) const {
    return accessibility_->write(corvane_->pid(), text, true);
}

bool Desktop::type(const Window& window, const std::string& text) const {
    if (!screen_->hasHands()) return accessibility_->write(window.pid, text);
    screen_->act(window, Deed::comeForward);
    run({"xdotool", "type", text});
    return true;
}

void Desktop::savePicture(const std::string& file) const {
    fs::create_directories(fs::path(file).parent_path());
    screen_->savePicture(file);
}

std::string Desktop::log() const {
    std::ostringstream all;
    for (const auto* name : {"/session.log", "/corvane.log"}) {
        all << "--- " << name + 1 << "\n" << std::ifstream(around_.root + name).rdbuf();
        all.clear();
    }
    all << "--- windows\n";
    for (const auto& window : windows())
        all << window.id << " " << window.pid << " " << window.windowClass << " \"" << window.title
            << "\" " << screen_->look(window) << "\n";
    all << "--- controls\n";
    for (const auto& control : controls()) {
        const auto& place = control.place;
        all << control.role << " \"" << control.name << "\" "
            << (control.isEnabled ? "" : "disabled ") << (control.hasKeyboard ? "focused " : "")
            << place.x << "," << place.y << " " << place.width << "x" << place.height << "\n";
    }
    return all.str();
}

} // namespace corvane::desktop
