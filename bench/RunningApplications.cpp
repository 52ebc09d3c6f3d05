#include "quit/RunningApplicationMatching.h"
#include "simulated/SimulatedDesktop.h"

#include <benchmark/benchmark.h>

using namespace corvane;

namespace {

/// The worst that a name can do is to fit nothing: both passes and all four stages for each of its
/// spellings.
void findRunningApplicationAmong500(benchmark::State& state, const char* name) {
    SimulatedDesktop desktop;
    for (std::int32_t id = 1; id <= 500; ++id) {
        const auto number = std::to_string(id);
        desktop.running.push_back(
            {.processIdentifier = id,
             .localizedName = "Program " + number,
             .bundleIdentifier = "org.example.Program" + number,
             .bundleURL = Url::fromPath("/Applications/Program " + number + ".app"),
             .executableURL = Url::fromPath("/usr/lib/office/bin/program" + number),
             .isHidden = id % 5 == 0});
    }
    const auto platform = desktop.platform();
    for (auto _ : state)
        benchmark::DoNotOptimize(findRunningApplication(platform.applications, name));
}

BENCHMARK_CAPTURE(findRunningApplicationAmong500, exactly, "Program 499");
BENCHMARK_CAPTURE(findRunningApplicationAmong500, hidden, "Program 500");
BENCHMARK_CAPTURE(findRunningApplicationAmong500, partly, "program 499");
BENCHMARK_CAPTURE(findRunningApplicationAmong500, byExecutable, "PROGRAM499");
BENCHMARK_CAPTURE(findRunningApplicationAmong500, nothing, "Nowhere");
BENCHMARK_CAPTURE(findRunningApplicationAmong500, nothingInFourSpellings, "Quite Another Name");

} // namespace
