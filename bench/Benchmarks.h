#pragma once

#include "core/Records.h"

#include <string>
#include <vector>

namespace corvane::bench {

/// Workspaces like those of a busy user: resources of every type, names beyond ASCII, applications,
/// web addresses and commands that need escapes, and a stored layout in every fourth. The same at
/// every call.
std::vector<Workspace> sampleWorkspaces(std::size_t count, std::size_t resourcesEach);

/// 1,000 of them with 20 resources each.
const std::vector<Workspace>& manyWorkspaces();

/// What a benchmark is held against, in one run.
struct Comparison {
    std::string what;
    std::string ours;
    /// A benchmark, or empty for a time of its own.
    std::string reference;
    /// How often the reference counts; in seconds where it is no benchmark.
    double factor = 1;
    double allowedRatio = 1;
};

// Each registers its benchmarks, and says what they are held against.

std::vector<Comparison> registerCoding();
std::vector<Comparison> registerSaving();
std::vector<Comparison> registerStarting();
std::vector<Comparison> registerStatusMenu();

} // namespace corvane::bench
