#include "Benchmarks.h"
#include "core/RecordCoding.h"
#include "core/WorkspacePersistence.h"
#include "linux/files/LinuxFileSystem.h"
#include "linux/installed/InstalledApplications.h"
#include "linux/system/LinuxDiskQueue.h"
#include "simulated/SimulatedDesktop.h"

#include <cstdio>

#include <benchmark/benchmark.h>
#include <fcntl.h>
#include <unistd.h>

namespace corvane::bench {
namespace {

void saveOurs(benchmark::State& state) {
    SimulatedDesktop desktop;
    const auto platform = desktop.platform();
    const InstalledApplications installed;
    LinuxFileSystem files(installed);
    LinuxDiskQueue diskQueue;
    WorkspacePersistence persistence(files, platform.bundles, platform.mainQueue, diskQueue,
                                     platform.alerts, platform.panels, platform.clock);
    // What wasn't read is kept aside at the first save.
    static_cast<void>(persistence.loadWorkspaces());
    const auto isOnDisk = [&] { return diskQueue.run([] {}); };
    for (auto _ : state) {
        persistence.saveWorkspaces(manyWorkspaces());
        while (!isOnDisk()) {
        }
    }
    if (*files.readFile(persistence.workspacesFilePath()) != encodeWorkspaces(manyWorkspaces()))
        state.SkipWithError("the file isn't what was saved");
}

void saveReference(benchmark::State& state) {
    const InstalledApplications installed;
    LinuxFileSystem files(installed);
    const auto target = files.applicationSupportDirectory() + "/reference.json";
    const auto temporary = target + ".new";
    static_cast<void>(files.createDirectory(files.applicationSupportDirectory()));
    const auto bytes = encodeWorkspaces(manyWorkspaces());
    for (auto _ : state) {
        const int file = ::open(temporary.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0666);
        const bool written =
            ::write(file, bytes.data(), bytes.size()) == static_cast<ssize_t>(bytes.size());
        if (!written || ::fsync(file) != 0 || ::close(file) != 0 ||
            std::rename(temporary.c_str(), target.c_str()) != 0) {
            state.SkipWithError("the reference file can't be written");
        }
    }
}

} // namespace

std::vector<Comparison> registerSaving() {
    // Many short turns, as a disk has its busy moments.
    constexpr int turns = 101;
    benchmark::RegisterBenchmark("save/ours", saveOurs)
        ->UseRealTime()
        ->Iterations(2)
        ->Repetitions(turns);
    benchmark::RegisterBenchmark("save/reference", saveReference)
        ->UseRealTime()
        ->Iterations(2)
        ->Repetitions(turns);
    return {{.what = "save them to disk | write, fsync, rename",
             .ours = "save/ours",
             .reference = "save/reference",
             .allowedRatio = 1.6}};
}

} // namespace corvane::bench
