#include "core/RecordCoding.h"
#include "foundation/Json.h"
#include "fuzz/Fuzz.h"
#include "simulated/SimulatedDesktop.h"

#include <optional>
#include <vector>

using namespace corvane;

namespace {

std::optional<std::vector<Workspace>> decoded(std::string_view json, const Bundles& bundles) {
    try {
        return decodeWorkspaces(json, bundles);
    } catch (const json::DecodeError& error) {
        expect(!std::string_view(error.what()).empty());
        return std::nullopt;
    }
}

} // namespace

/// What reads must write, and read again as the same, but for the bookmarks of old files.
void feed(std::string_view text) {
    static SimulatedDesktop desktop;
    static const Platform platform = desktop.platform();
    auto workspaces = decoded(text, platform.bundles);
    if (!workspaces) return;
    const auto written = encodeWorkspaces(*workspaces);
    for (auto& workspace : *workspaces) {
        for (auto& resource : workspace.resources)
            resource.bookmarkData.reset();
    }
    for (const auto& form : {written, json::prettyPrinted(written)})
        expect(decoded(form, platform.bundles) == workspaces);
}
