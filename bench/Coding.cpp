#include "Benchmarks.h"
#include "core/RecordCoding.h"
#include "foundation/Text.h"
#include "simulated/SimulatedDesktop.h"

#include <stdexcept>

#include <benchmark/benchmark.h>
#include <rapidjson/document.h>
#include <rapidjson/stringbuffer.h>
#include <rapidjson/writer.h>

namespace corvane::bench {
namespace {

const std::string& file() {
    static const auto bytes = encodeWorkspaces(manyWorkspaces());
    return bytes;
}

/// What reading can't do without: every byte checked to be UTF-8, every number to the last bit.
rapidjson::Document parsed(const std::string& bytes) {
    if (!text::isValidUtf8(bytes)) throw std::runtime_error("not UTF-8");
    rapidjson::Document document;
    document.Parse<rapidjson::kParseFullPrecisionFlag>(bytes.data(), bytes.size());
    if (document.HasParseError()) throw std::runtime_error("not JSON");
    return document;
}

void decodeOurs(benchmark::State& state) {
    SimulatedDesktop desktop;
    const auto platform = desktop.platform();
    for (auto _ : state)
        benchmark::DoNotOptimize(decodeWorkspaces(file(), platform.bundles));
    if (decodeWorkspaces(file(), platform.bundles) != manyWorkspaces())
        state.SkipWithError("what was decoded isn't what was encoded");
}

void decodeReference(benchmark::State& state) {
    for (auto _ : state)
        benchmark::DoNotOptimize(parsed(file()));
}

void encodeOurs(benchmark::State& state) {
    for (auto _ : state)
        benchmark::DoNotOptimize(encodeWorkspaces(manyWorkspaces()));
}

void encodeReference(benchmark::State& state) {
    const auto document = parsed(file());
    for (auto _ : state) {
        rapidjson::StringBuffer buffer;
        rapidjson::Writer<rapidjson::StringBuffer> writer(buffer);
        document.Accept(writer);
        benchmark::DoNotOptimize(buffer.GetString());
    }
}

void decodeMany(benchmark::State& state, std::size_t count) {
    SimulatedDesktop desktop;
    const auto platform = desktop.platform();
    const auto bytes = encodeWorkspaces(sampleWorkspaces(count, 20));
    for (auto _ : state)
        benchmark::DoNotOptimize(decodeWorkspaces(bytes, platform.bundles));
}

void encodeMany(benchmark::State& state, std::size_t count) {
    const auto workspaces = sampleWorkspaces(count, 20);
    for (auto _ : state)
        benchmark::DoNotOptimize(encodeWorkspaces(workspaces));
}

/// How the time grows with the number of workspaces, where a square would be ten times. Short
/// lists gain by the caches; beyond them it should stay in proportion.
template <typename Benchmark>
std::vector<Comparison> registerGrowth(const std::string& verb, Benchmark run) {
    std::vector<Comparison> growth;
    for (const std::size_t count : {10, 100, 1000, 10000}) {
        const auto name = verb + "/" + std::to_string(count);
        benchmark::RegisterBenchmark(name.c_str(), run, count);
        if (count == 10) continue;
        const auto tenth = std::to_string(count / 10);
        growth.push_back({.what = verb + " " + std::to_string(count) + " | 10 times " + tenth,
                          .ours = name,
                          .reference = verb + "/" + tenth,
                          .factor = 10,
                          .allowedRatio = count == 10000 ? 1.3 : 2});
    }
    return growth;
}

} // namespace

std::vector<Comparison> registerCoding() {
    benchmark::RegisterBenchmark("decode/ours", decodeOurs);
    benchmark::RegisterBenchmark("decode/reference", decodeReference);
    benchmark::RegisterBenchmark("encode/ours", encodeOurs);
    benchmark::RegisterBenchmark("encode/reference", encodeReference);
    std::vector<Comparison> all{{.what = "decode 1,000 workspaces of 20 resources | bare parse",
                                 .ours = "decode/ours",
                                 .reference = "decode/reference",
                                 .allowedRatio = 1.5},
                                {.what = "encode them | bare write",
                                 .ours = "encode/ours",
                                 .reference = "encode/reference",
                                 .allowedRatio = 1}};
    for (auto& growth :
         {registerGrowth("decode", decodeMany), registerGrowth("encode", encodeMany)})
        all.insert(all.end(), growth.begin(), growth.end());
    return all;
}

} // namespace corvane::bench
