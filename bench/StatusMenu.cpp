#include "core/RecordCoding.h"
#include "shell/CorvaneApp.h"
#include "simulated/SimulatedDesktop.h"

#include <benchmark/benchmark.h>

using namespace corvane;

namespace {

std::vector<Workspace> workspaces(const Platform& platform, int count, int resources) {
    std::vector<Workspace> list;
    for (int i = 0; i < count; ++i) {
        list.push_back(makeWorkspace("Workspace " + std::to_string(i), "", "star", {}));
        for (int k = 0; k < resources; ++k) {
            const auto name = "document " + std::to_string(k) + ".txt";
            list.back().resources.push_back(makeResource(name, "/home/user/Documents/" + name,
                                                         ResourceType::file, platform.bundles));
        }
    }
    return list;
}

/// From the store's notification to the new menu in the status item.
void rebuildMenu(benchmark::State& state) {
    SimulatedDesktop desktop;
    auto platform = desktop.platform();
    desktop.files.contents[desktop.files.applicationSupportDirectory() +
                           "/Corvane/corvane_workspaces.json"] =
        encodeWorkspaces(workspaces(platform, int(state.range(0)), 20));
    CorvaneApp app(platform);
    app.setupApp();
    app.appDelegate().applicationDidFinishLaunching();
    desktop.runUntilIdle();
    for (auto _ : state) {
        platform.notificationCenter.post("WorkspaceStoreDidChange");
        desktop.runUntilIdle();
    }
    if (desktop.statusBar.menu.size() < std::size_t(state.range(0))) state.SkipWithError("no menu");
}
BENCHMARK(rebuildMenu)->Arg(10)->Arg(100)->Unit(benchmark::kMicrosecond);

} // namespace
