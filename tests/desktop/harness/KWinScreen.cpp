#include "bus/BusService.h"
#include "desktop/harness/CompositorScreen.h"
#include "desktop/harness/Scene.h"

#include <chrono>
#include <condition_variable>
#include <filesystem>
#include <optional>
#include <regex>
#include <stdexcept>
#include <utility>

#include <fcntl.h>
#include <gio/gunixfdlist.h>
#include <unistd.h>

namespace corvane::desktop {
namespace {

namespace fs = std::filesystem;

/// Stays at KWin, and asks for what it is to do next.
constexpr auto eye = R"(
const isSix = workspace.windowList !== undefined;
function all() { return isSix ? workspace.windowList() : workspace.clientList(); }
function line(w) {
    const box = w.frameGeometry;
    const front = isSix ? workspace.activeWindow : workspace.activeClient;
    const isHere = w.onAllDesktops || (isSix ? w.desktops.indexOf(workspace.currentDesktop) >= 0
                                             : w.desktop === workspace.currentDesktop);
    return [w.internalId, w.pid, "." + (w.desktopFileName || w.resourceClass),
            `${box.x},${box.y} ${box.width}x${box.height}` + (w.fullScreen ? " fullscreen" : ""),
            isHere && !w.minimized ? "seen" : "", w === front ? "front" : "", w.caption].join("\t");
}
function list() {
    const here = isSix ? workspace.desktops.indexOf(workspace.currentDesktop)
                       : workspace.currentDesktop - 1;
    return [here].concat(all().map(line)).join("\n");
}
function act(id, deed) { all().filter(w => String(w.internalId) === id).forEach(deed); }
function next(answer) {
    callDBus("app.corvane.Eye", "/eye", "app.corvane.Eye", "Next", answer, question => {
        let answer = "";
        try { answer = String(eval(question)); } catch (error) { answer = String(error); }
        next(answer);
    });
}
for (let more = 1; more < 4; ++more) workspace.createDesktop(more, "more");
next("");
)";

class KWinScreen final : public CompositorScreen {
public:
    explicit KWinScreen(Surroundings& around)
        : CompositorScreen(
              around, {{{Deed::comeForward,
                         "isSix ? workspace.activeWindow = w : workspace.activeClient = w"},
                        {Deed::fillScreen, "w.fullScreen = true"},
                        {Deed::leaveFullScreen, "w.fullScreen = false"},
                        {Deed::maximize, "w.setMaximize(true, true)"},
                        {Deed::minimize, "w.minimized = true"},
                        {Deed::close, "w.closeWindow()"},
                        {Deed::move,
                         "w.frameGeometry = {x: 333, y: 222, width: w.width, height: w.height}"},
                        {Deed::toOtherWorkspace,
                         "isSix ? w.desktops = [workspace.desktops[1]] : w.desktop = 2"}},
                       "w.frameGeometry = {x: $1, y: $2, width: $3, height: $4}"}) {
        // The installed one has rights that keep its environment from it.
        const auto program = around.root + "/kwin_wayland";
        fs::copy_file("/usr/bin/kwin_wayland", program, fs::copy_options::skip_existing);
        // On the processor its other way of drawing takes most of the time. The display isn't the
        // one that is taken where none is named.
        start({"env", "KWIN_COMPOSE=" + variable("KWIN_COMPOSE", "Q"),
               "KWIN_SCREENSHOT_NO_PERMISSION_CHECKS=1", program, "--virtual", "--scale",
               variable("SCALE", "1"), "--width", "1440", "--height", "900", "--output-count",
               std::to_string(around.monitors), "--socket", "wayland-9", "--no-lockscreen",
               "--no-global-shortcuts", "--xwayland", report("")});
        const auto script = around.root + "/eye.js";
        writeFile(script, eye);
        service_.emplace(
            around.bus, "app.corvane.Eye",
            std::vector<BusService::Object>{
                {"/eye", "<interface name='app.corvane.Eye'><method name='Next'>"
                         "<arg type='s' direction='in'/><arg type='s' direction='out'/>"
                         "</method></interface>"}},
            [this](const BusService::Call& call) {
                const char* text = nullptr;
                g_variant_get(call.parameters, "(&s)", &text);
                return g_variant_new("(s)", next(text).c_str());
            });
        constexpr auto scripting = "org.kde.kwin.Scripting";
        if (!call("/Scripting", scripting, "loadScript",
                  g_variant_new("(ss)", script.c_str(), "eye")) ||
            !call("/Scripting", scripting, "start"))
            throw std::runtime_error("KWin takes no script");
        // Else programs take this one for the desktop's scripts, which aren't there.
        around.set("XDG_CURRENT_DESKTOP", "KDE");
    }
    ~KWinScreen() override {
        const std::lock_guard lock(mutex_);
        isOver_ = true;
        changed_.notify_all();
    }
    std::string look(const Window& window) const override {
        auto look = CompositorScreen::look(window);
        if (look.empty() || look.ends_with("fullscreen")) return look;
        // 5.27 doesn't tell scripts.
        const auto info =
            call("/KWin", "org.kde.KWin", "getWindowInfo", g_variant_new("(s)", window.id.c_str()));
        const std::shared_ptr<char> text(info ? g_variant_print(info.get(), FALSE) : nullptr,
                                         g_free);
        const std::regex isMaximized("'maximizeVertical': <[1-9]");
        if (text && std::regex_search(text.get(), isMaximized)) look += " maximized";
        return look;
    }
    void goTo(int workspace) const override {
        const auto number = std::to_string(workspace);
        ask("workspace.currentDesktop = isSix ? workspace.desktops[" + number + "] : " + number +
            " + 1");
    }
    void savePicture(const std::string& file) const override;

private:
    std::string told() const override { return ask("list()"); }
    void tell(const Window& window, const std::string& words) const override {
        ask("act('" + window.id + "', w => { " + words + "; })");
    }
    std::shared_ptr<GVariant> call(const char* path, const char* interface, const char* method,
                                   GVariant* parameters = nullptr) const {
        return service_->call("org.kde.KWin", path, interface, method, parameters);
    }
    /// Empty where KWin doesn't answer.
    std::string ask(const std::string& question) const {
        std::unique_lock lock(mutex_);
        question_ = question;
        answer_.reset();
        changed_.notify_all();
        changed_.wait_for(lock, std::chrono::seconds(5), [this] { return answer_.has_value(); });
        return answer_.value_or("");
    }
    /// Takes the answer to the last question, and gives the next one.
    std::string next(const std::string& answer) const {
        // So that KWin's patience with a call doesn't end.
        constexpr std::chrono::seconds longest(5);
        std::unique_lock lock(mutex_);
        if (isAsked_) answer_ = answer;
        changed_.notify_all();
        changed_.wait_for(lock, longest, [this] { return question_ || isOver_; });
        isAsked_ = question_.has_value();
        return std::exchange(question_, std::nullopt).value_or("");
    }

    mutable std::mutex mutex_;
    mutable std::condition_variable changed_;
    mutable std::optional<std::string> question_, answer_;
    mutable bool isAsked_ = false;
    bool isOver_ = false;
    std::optional<BusService> service_;
};

/// KWin writes the pixels to a file that it is handed, and goes on after its answer.
void KWinScreen::savePicture(const std::string& file) const {
    constexpr auto flags = GDBusConnectionFlags(G_DBUS_CONNECTION_FLAGS_AUTHENTICATION_CLIENT |
                                                G_DBUS_CONNECTION_FLAGS_MESSAGE_BUS_CONNECTION);
    const auto pixels = around_.root + "/pixels.bgra";
    const std::shared_ptr<GDBusConnection> bus(
        g_dbus_connection_new_for_address_sync(around_.bus.c_str(), flags, nullptr, nullptr,
                                               nullptr),
        g_object_unref);
    const int handle = open(pixels.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0600);
    const std::shared_ptr<GUnixFDList> handles(g_unix_fd_list_new_from_array(&handle, 1),
                                               g_object_unref);
    const std::shared_ptr<GVariant> told(
        g_dbus_connection_call_with_unix_fd_list_sync(
            bus.get(), "org.kde.KWin", "/org/kde/KWin/ScreenShot2", "org.kde.KWin.ScreenShot2",
            "CaptureWorkspace", g_variant_new_parsed("({'native-resolution': <true>}, handle 0)"),
            nullptr, G_DBUS_CALL_FLAGS_NONE, 10000, handles.get(), nullptr, nullptr, nullptr),
        [](GVariant* value) {
            if (value) g_variant_unref(value);
        });
    if (!told) return;
    const std::shared_ptr<GVariant> facts(g_variant_get_child_value(told.get(), 0),
                                          g_variant_unref);
    guint32 width = 0, height = 0;
    g_variant_lookup(facts.get(), "width", "u", &width);
    g_variant_lookup(facts.get(), "height", "u", &height);
    comesTrue([&] { return fs::file_size(pixels) >= std::size_t(4) * width * height; });
    around_.run({"convert", "-depth", "8", "-size",
                 std::to_string(width) + "x" + std::to_string(height), pixels, "-alpha", "off",
                 file});
}

} // namespace

std::unique_ptr<Screen> startKWinScreen(Surroundings& around) {
    return std::make_unique<KWinScreen>(around);
}

} // namespace corvane::desktop
