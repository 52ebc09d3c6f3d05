#include "core/RecordCoding.h"
#include "foundation/Json.h"
#include "simulated/SimulatedDesktop.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string_view>
#include <vector>

using namespace corvane;

namespace {

std::optional<std::vector<Workspace>> decoded(std::string_view json, const Bundles& bundles) {
    try {
        return decodeWorkspaces(json, bundles);
    } catch (const json::DecodeError& error) {
        if (std::string_view(error.what()).empty()) __builtin_trap();
        return std::nullopt;
    }
}

} // namespace

/// What reads must write, and read again as the same, but for the bookmarks of old files.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static SimulatedDesktop desktop;
    static const Platform platform = desktop.platform();
    auto workspaces = decoded({reinterpret_cast<const char*>(data), size}, platform.bundles);
    if (!workspaces) return 0;
    const auto written = encodeWorkspaces(*workspaces);
    for (auto& workspace : *workspaces) {
        for (auto& resource : workspace.resources)
            resource.bookmarkData.reset();
    }
    for (const auto& text : {written, json::prettyPrinted(written)}) {
        if (decoded(text, platform.bundles) != workspaces) __builtin_trap();
    }
    return 0;
}
