#include "desktop/harness/Desktop.h"
#include "desktop/harness/Scene.h"
#include "linux/windows/WaylandSession.h"
#include "linux/windows/WindowSystems.h"
#include "linux/windows/sway/SwaySocket.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <functional>

#include <gio/gio.h>

// Measures what the compositor that WINDOW_MANAGER names takes: to put back one of the windows that
// a workspace has and see that it stands, and to list 200, beside the bare question. Fails over the
// limits.

using namespace corvane;
using namespace corvane::desktop;

namespace {

using Clock = std::chrono::steady_clock;

constexpr int few = 10, many = 200;
constexpr int rounds = 15;

/// One question for all windows, and nothing done with the answer.
constexpr auto bareQuestion = R"(
callDBus("BUS", "/bare", "app.corvane.Bare", "Tell", JSON.stringify(
    (workspace.windowList ? workspace.windowList() : workspace.clientList()).map(w => ({
        id: String(w.internalId), owner: w.transientFor ? 1 : null, pid: w.pid, kind: String(w),
        number: w.windowId, resourceName: String(w.resourceName),
        resourceClass: String(w.resourceClass), desktopFile: String(w.desktopFileName),
        title: w.caption, normal: w.normalWindow, dock: w.dock, background: w.desktopWindow,
        above: w.keepAbove, below: w.keepBelow, stacking: w.stackingOrder,
        frame: [[w.frameGeometry.x, w.frameGeometry.y],
                [w.frameGeometry.width, w.frameGeometry.height]],
        desktop: w.desktop, onAll: w.onAllDesktops, minimized: w.minimized, hidden: w.hidden,
        fullScreen: w.fullScreen, maximized: w.maximizeMode, skips: w.skipTaskbar,
        closeable: w.closeable})))))";

/// A script that is loaded, run and unloaded for one answer.
class BareScript {
public:
    explicit BareScript(const Desktop& desktop)
        : file_(desktop.home("bare.js")),
          bus_(g_bus_get_sync(G_BUS_TYPE_SESSION, nullptr, nullptr)) {
        std::string text = bareQuestion;
        text.replace(text.find("BUS"), 3, g_dbus_connection_get_unique_name(bus_));
        writeFile(file_, text);
        static GDBusNodeInfo* const node = g_dbus_node_info_new_for_xml(
            "<node><interface name='app.corvane.Bare'><method name='Tell'>"
            "<arg type='s' direction='in'/></method></interface></node>",
            nullptr);
        static constexpr GDBusInterfaceVTable methods{
            [](GDBusConnection*, const char*, const char*, const char*, const char*, GVariant*,
               GDBusMethodInvocation* invocation, gpointer isTold) {
                g_dbus_method_invocation_return_value(invocation, nullptr);
                *static_cast<bool*>(isTold) = true;
            },
            nullptr,
            nullptr,
            {}};
        g_dbus_connection_register_object(bus_, "/bare", node->interfaces[0], &methods, &isTold_,
                                          nullptr, nullptr);
    }
    bool ask() {
        isTold_ = false;
        call("loadScript", g_variant_new("(ss)", file_.c_str(), "bare"));
        call("start", nullptr);
        while (!isTold_)
            g_main_context_iteration(nullptr, TRUE);
        call("unloadScript", g_variant_new("(s)", "bare"));
        return true;
    }

private:
    void call(const char* method, GVariant* parameters) {
        if (auto* answer = g_dbus_connection_call_sync(
                bus_, "org.kde.KWin", "/Scripting", "org.kde.kwin.Scripting", method, parameters,
                nullptr, G_DBUS_CALL_FLAGS_NONE, 5000, nullptr, nullptr))
            g_variant_unref(answer);
    }

    std::string file_;
    GDBusConnection* bus_;
    bool isTold_ = false;
};

/// In milliseconds.
double timeOf(const std::function<bool()>& act) {
    const auto start = Clock::now();
    if (!act()) throw std::runtime_error("no answer");
    return std::chrono::duration<double, std::milli>(Clock::now() - start).count();
}

/// Of the faster half: in the rest others had the processor.
double usual(std::vector<double> times) {
    std::ranges::sort(times);
    return times[times.size() / 4];
}

bool tell(const char* what, double own, double other, double most) {
    const bool isFine = own <= most && (other == 0 || own <= 1.5 * other);
    std::printf("%-34s %8.1f ms (%.0f allowed)", what, own, most);
    if (other > 0) std::printf(" %8.1f ms bare   ratio %.2f", other, own / other);
    std::printf("%s\n", isFine ? "" : "   TOO LONG");
    return isFine;
}

Deadline soon() {
    return Clock::now() + std::chrono::seconds(5);
}

/// What the compositor is asked to list its windows, and nothing done with the answer.
std::function<bool()> bareQuestionTo(const std::string& compositor, const Desktop& desktop) {
    if (compositor.starts_with("sway"))
        return [] {
            return sway::ask(sway::Question::tree, "", *waylandCompositor(), soon()).has_value();
        };
    if (compositor.starts_with("KDE"))
        return [script = std::make_shared<BareScript>(desktop)] { return script->ask(); };
    auto* const bus = g_bus_get_sync(G_BUS_TYPE_SESSION, nullptr, nullptr);
    return [bus] {
        auto* const answer = g_dbus_connection_call_sync(
            bus, "org.gnome.Shell", "/app/corvane/Windows", "app.corvane.Windows1", "List", nullptr,
            nullptr, G_DBUS_CALL_FLAGS_NONE, 5000, nullptr, nullptr);
        if (answer) g_variant_unref(answer);
        return answer != nullptr;
    };
}

WindowsNow windowsOnceThere(WindowSystem& system, std::size_t count, const Desktop& desktop) {
    std::optional<WindowsNow> now;
    const auto areThere = [&] {
        now = system.windows(soon());
        return now && now->windows.size() >= count;
    };
    if (!comesTrue(areThere, 60))
        throw std::runtime_error("not all windows come\n" + desktop.log());
    return *now;
}

bool measure(double mostToList, double mostToPlace) {
    Desktop desktop;
    for (const auto& variable : desktop.environment())
        putenv(const_cast<char*>(variable.c_str()));
    // GNOME's extension answers to the installed program.
    const auto installed = desktop.home(".local/bin/corvane");
    std::filesystem::remove(installed);
    std::filesystem::create_symlink(std::filesystem::read_symlink("/proc/self/exe"), installed);
    const auto system = windowSystemHere();
    const auto client = desktop.start({MANY_SURFACES, std::to_string(few)});
    const auto now = windowsOnceThere(*system, few, desktop);
    std::vector<double> own, bare, placing;
    for (int round = 0; round < 3 * rounds; ++round) {
        const auto& window = now.windows[std::size_t(round % few)].window;
        const FrameWish wish{PixelPoint{20.0 + 9 * round, 60.0 + 7 * round},
                             PixelSize{240.0 + round, 170.0 + round}};
        placing.push_back(
            timeOf([&] { return system->place(window, wish, soon()) == WindowAnswer::done; }));
    }
    const auto others = desktop.start({MANY_SURFACES, std::to_string(many - few)});
    windowsOnceThere(*system, many, desktop);
    const auto ask = bareQuestionTo(system->abilities(soon()).desktop, desktop);
    for (int round = 0; round < rounds; ++round) {
        own.push_back(timeOf([&] { return system->windows(soon()).has_value(); }));
        bare.push_back(timeOf(ask));
    }
    const bool lists = tell("list 200 windows", usual(own), usual(bare), mostToList);
    return tell("put one of 10 back", usual(placing), 0, mostToPlace) && lists;
}

} // namespace

int main(int count, char** words) {
    if (count < 3) return 2;
    try {
        return measure(std::atof(words[1]), std::atof(words[2])) ? 0 : 1;
    } catch (const std::exception& error) {
        std::fprintf(stderr, "%s\n", error.what());
        return 1;
    }
}
