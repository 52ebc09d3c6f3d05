#include "Benchmarks.h"
#include "core/BookmarkManager.h"
#include "core/StoreState.h"
#include "simulated/SimulatedDesktop.h"

#include <ctime>

#include <benchmark/benchmark.h>

namespace corvane::bench {
namespace {

double cpuSeconds() {
    timespec time{};
    ::clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
    return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_nsec) * 1e-9;
}

/// A desktop on which every resource of a workspace is there and opens, and a store on it.
struct Scene {
    explicit Scene(const Workspace& workspace) {
        for (const auto* name : {"Visual Studio Code", "Firefox", "Text Editor", "LibreOffice",
                                 "Bildbetrachter", "GIMP", "Terminal"}) {
            desktop.install({.path = std::string("/Applications/") + name + ".app",
                             .bundleIdentifier = std::string("org.example.") + name});
        }
        desktop.defaultHandlers = {{"txt", "/Applications/Text Editor.app"},
                                   {"/", "/Applications/GIMP.app"},
                                   {"http:", "/Applications/Firefox.app"},
                                   {"https:", "/Applications/Firefox.app"}};
        for (const auto& resource : workspace.resources) {
            if (resource.type == ResourceType::file) desktop.files.contents[resource.path] = "x";
            if (resource.type == ResourceType::folder)
                desktop.files.directories.insert(resource.path);
        }
        desktop.runUntilIdle();
    }

    /// One start, without what it schedules for later.
    double secondsOfStart(const Workspace& workspace) {
        StoreState::set(store.runningResources, {});
        desktop.log.clear();
        const double before = cpuSeconds();
        store.startWorkspace(workspace);
        const double seconds = cpuSeconds() - before;
        desktop.runUntilIdle();
        return seconds;
    }

    SimulatedDesktop desktop;
    Platform platform = desktop.platform();
    BookmarkManager bookmarks{platform.fileSystem, platform.bookmarks, platform.clock,
                              platform.mainQueue, platform.diskQueue};
    WorkspaceStore store{platform, bookmarks};
};

/// Starts of resources that the bookmarks know.
void start(benchmark::State& state, std::size_t resourceCount) {
    const auto workspace = sampleWorkspaces(1, resourceCount).front();
    Scene scene(workspace);
    scene.secondsOfStart(workspace);
    for (auto _ : state)
        state.SetIterationTime(scene.secondsOfStart(workspace));
    if (!scene.desktop.shownAlerts.empty()) state.SkipWithError("a resource didn't open");
}

/// The first start, which makes a bookmark of each file and writes each down.
void firstStart(benchmark::State& state) {
    const auto workspace = sampleWorkspaces(1, 50).front();
    for (auto _ : state)
        state.SetIterationTime(Scene(workspace).secondsOfStart(workspace));
}

} // namespace

std::vector<Comparison> registerStarting() {
    benchmark::RegisterBenchmark("start/first", firstStart)->UseManualTime()->Iterations(100);
    for (const std::size_t count : {50, 500, 5000}) {
        benchmark::RegisterBenchmark(("start/" + std::to_string(count)).c_str(), start, count)
            ->UseManualTime();
    }
    // Thrice leaves room for caches; a square would be ten times.
    return {{.what = "start a workspace of 50 resources | a millisecond",
             .ours = "start/50",
             .reference = "",
             .factor = 1e-3,
             .allowedRatio = 1},
            {.what = "start it for the first time | a millisecond",
             .ours = "start/first",
             .reference = "",
             .factor = 1e-3,
             .allowedRatio = 1},
            {.what = "start one of 500 | 10 times one of 50",
             .ours = "start/500",
             .reference = "start/50",
             .factor = 10,
             .allowedRatio = 3},
            {.what = "start one of 5,000 | 10 times one of 500",
             .ours = "start/5000",
             .reference = "start/500",
             .factor = 10,
             .allowedRatio = 3}};
}

} // namespace corvane::bench
