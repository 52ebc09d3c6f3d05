#include "Benchmarks.h"

#include <algorithm>
#include <cstdio>
#include <map>

#include <benchmark/benchmark.h>
#include <malloc.h>

namespace corvane::bench {
namespace {

/// Newer versions of the library call it another name.
template <typename Run>
bool hasFailed(const Run& run) {
    if constexpr (requires { run.error_occurred; }) {
        return run.error_occurred;
    } else {
        return run.skipped != decltype(run.skipped){};
    }
}

/// Keeps the times of each benchmark, and shows nothing.
class Times : public benchmark::BenchmarkReporter {
public:
    bool ReportContext(const Context&) override { return true; }
    void ReportRuns(const std::vector<Run>& runs) override {
        for (const auto& run : runs) {
            failed |= hasFailed(run);
            if (run.run_type == Run::RT_Iteration && !hasFailed(run))
                all_[run.run_name.function_name].push_back(run.real_accumulated_time /
                                                           static_cast<double>(run.iterations));
        }
    }
    /// In seconds, what a quarter of the turns stayed below: in the others, somebody else may have
    /// had the processor.
    std::map<std::string, double> lowerQuartiles() {
        std::map<std::string, double> quartiles;
        for (auto& [name, times] : all_) {
            std::ranges::sort(times);
            quartiles[name] = times[(times.size() - 1) / 4];
        }
        return quartiles;
    }

    bool failed = false;

private:
    std::map<std::string, std::vector<double>> all_;
};

void printRow(const std::string& what, const std::string& ours, const std::string& reference,
              const std::string& ratio, const std::string& allowed) {
    std::printf("%-52s %12s %12s %7s %8s\n", what.c_str(), ours.c_str(), reference.c_str(),
                ratio.c_str(), allowed.c_str());
}

std::string formatted(const char* format, double value) {
    char text[32];
    std::snprintf(text, sizeof text, format, value);
    return text;
}

/// Prints a row for each comparison whose benchmarks ran, and one for each other benchmark; false
/// where a comparison is over what is allowed.
bool printTable(const std::vector<Comparison>& comparisons,
                const std::map<std::string, double>& seconds) {
    auto others = seconds;
    printRow("what", "ours", "reference", "ratio", "allowed");
    bool met = true;
    for (const auto& comparison : comparisons) {
        others.erase(comparison.ours);
        others.erase(comparison.reference);
        const auto ours = seconds.find(comparison.ours);
        const auto other = seconds.find(comparison.reference);
        if (ours == seconds.end() || (!comparison.reference.empty() && other == seconds.end()))
            continue;
        const double reference =
            comparison.factor * (comparison.reference.empty() ? 1 : other->second);
        const double ratio = ours->second / reference;
        printRow(comparison.what, formatted("%.3f ms", ours->second * 1e3),
                 formatted("%.3f ms", reference * 1e3), formatted("%.2f", ratio),
                 formatted("%.2f", comparison.allowedRatio));
        met = met && ratio <= comparison.allowedRatio;
    }
    for (const auto& [name, time] : others)
        printRow(name, formatted("%.3f ms", time * 1e3), "", "", "");
    return met;
}

} // namespace
} // namespace corvane::bench

int main(int count, char** arguments) {
    using namespace corvane::bench;
    // Memory that was freed stays at hand for texts of every size: the allocator gives back large
    // ones, and the kernel's clearing of fresh pages would count as growth.
    constexpr int most = 1 << 30;
    mallopt(M_MMAP_THRESHOLD, most);
    mallopt(M_TRIM_THRESHOLD, most);
    // In turn, so that a busy moment of the machine doesn't fall on one side only.
    char interleaved[] = "--benchmark_enable_random_interleaving=true";
    char repetitions[] = "--benchmark_repetitions=15";
    char shortly[] = "--benchmark_min_time=0.1";
    std::vector<char*> words{arguments[0], interleaved, repetitions, shortly};
    words.insert(words.end(), arguments + 1, arguments + count);
    int wordCount = static_cast<int>(words.size());
    benchmark::Initialize(&wordCount, words.data());
    if (benchmark::ReportUnrecognizedArguments(wordCount, words.data())) return 2;

    std::vector<Comparison> comparisons;
    for (auto& part :
         {registerCoding(), registerSaving(), registerStarting(), registerStatusMenu()})
        comparisons.insert(comparisons.end(), part.begin(), part.end());
    Times times;
    benchmark::RunSpecifiedBenchmarks(&times);
    if (times.failed) std::fprintf(stderr, "A benchmark failed.\n");
    return printTable(comparisons, times.lowerQuartiles()) && !times.failed ? 0 : 1;
}
