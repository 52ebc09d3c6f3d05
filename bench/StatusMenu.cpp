#include "Benchmarks.h"
#include "core/RecordCoding.h"
#include "shell/CorvaneApp.h"
#include "simulated/SimulatedDesktop.h"

#include <benchmark/benchmark.h>

namespace corvane::bench {
namespace {

/// From the store's notification to the new menu in the status item.
void rebuildMenu(benchmark::State& state, std::size_t count) {
    SimulatedDesktop desktop;
    auto platform = desktop.platform();
    desktop.defaults["HasCompletedOnboarding"] = {true};
    desktop.files.contents[desktop.files.applicationSupportDirectory() +
                           "/Corvane/corvane_workspaces.json"] =
        encodeWorkspaces(sampleWorkspaces(count, 20));
    CorvaneApp app(platform);
    app.setupApp();
    app.appDelegate().applicationDidFinishLaunching();
    desktop.runUntilIdle();
    for (auto _ : state) {
        platform.notificationCenter.post("WorkspaceStoreDidChange");
        desktop.runUntilIdle();
    }
    if (desktop.statusBar.menu.size() < count) state.SkipWithError("no menu");
}

} // namespace

std::vector<Comparison> registerStatusMenu() {
    for (const std::size_t count : {10, 100})
        benchmark::RegisterBenchmark(("menu/" + std::to_string(count)).c_str(), rebuildMenu, count);
    return {{.what = "rebuild a menu of 100 workspaces | 2 milliseconds",
             .ours = "menu/100",
             .reference = "",
             .factor = 2e-3,
             .allowedRatio = 1},
            {.what = "rebuild it | 10 times one of 10 workspaces",
             .ours = "menu/100",
             .reference = "menu/10",
             .factor = 10,
             .allowedRatio = 3}};
}

} // namespace corvane::bench
