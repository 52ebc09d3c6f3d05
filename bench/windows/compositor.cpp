#include "desktop/harness/Desktop.h"
#include "desktop/harness/Scene.h"
#include "linux/windows/WindowSystems.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <functional>

#include <gio/gio.h>

// Measures what the compositor that WINDOW_MANAGER names takes with 200 windows: to list them all,
// beside the bare question, and to put one back and see that it stands. Fails over the limits.

using namespace corvane;
using namespace corvane::desktop;

namespace {

using Clock = std::chrono::steady_clock;

constexpr int many = 200;
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

double median(std::vector<double> times) {
    std::ranges::sort(times);
    return times[times.size() / 2];
}

bool tell(const char* what, double own, double other, double most) {
    const bool isFine = own <= most && (other == 0 || own <= 1.5 * other);
    std::printf("%-34s %8.1f ms (%.0f allowed)", what, own, most);
    if (other > 0) std::printf(" %8.1f ms bare   ratio %.2f", other, own / other);
    std::printf("%s\n", isFine ? "" : "   TOO LONG");
    return isFine;
}

bool measure(double mostToList, double mostToPlace) {
    Desktop desktop;
    for (const auto& variable : desktop.environment())
        putenv(const_cast<char*>(variable.c_str()));
    const auto client = desktop.start({MANY_SURFACES, std::to_string(many)});
    const auto system = windowSystemHere();
    const auto soon = [] { return Clock::now() + std::chrono::seconds(5); };
    std::optional<WindowsNow> now;
    const bool isThere = comesTrue(
        [&] {
            now = system->windows(soon());
            return now && now->windows.size() >= many;
        },
        60);
    if (!isThere) throw std::runtime_error("not all windows come\n" + desktop.log());
    std::vector<double> own, bare, placing;
    std::optional<BareScript> script;
    if (system->abilities(soon()).desktop.starts_with("KDE")) script.emplace(desktop);
    for (int round = 0; round < rounds; ++round) {
        own.push_back(timeOf([&] { return system->windows(soon()).has_value(); }));
        if (script) bare.push_back(timeOf([&] { return script->ask(); }));
    }
    for (int round = 0; round < 3 * rounds; ++round) {
        const auto& window = now->windows[std::size_t(round)].window;
        const FrameWish wish{PixelPoint{20.0 + 9 * round, 30.0 + 7 * round},
                             PixelSize{240.0 + round, 170.0 + round}};
        placing.push_back(
            timeOf([&] { return system->place(window, wish, soon()) == WindowAnswer::done; }));
    }
    const bool lists = tell("list 200 windows", median(own), script ? median(bare) : 0, mostToList);
    return tell("put one of them back", median(placing), 0, mostToPlace) && lists;
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
