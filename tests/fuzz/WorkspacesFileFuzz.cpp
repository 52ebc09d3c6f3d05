#include "core/RecordCoding.h"
#include "foundation/Json.h"
#include "fuzz/Fuzz.h"
#include "simulated/SimulatedDesktop.h"

using namespace corvane;

/// What reads must write, and read again as the same, but for the bookmarks of old files.
void feed(std::string_view text) {
    static SimulatedDesktop desktop;
    static const Platform platform = desktop.platform();
    std::vector<Workspace> workspaces;
    try {
        workspaces = decodeWorkspaces(text, platform.bundles);
    } catch (const json::DecodeError& error) {
        return expect(!std::string_view(error.what()).empty());
    }
    const auto written = encodeWorkspaces(workspaces);
    for (auto& workspace : workspaces) {
        for (auto& resource : workspace.resources)
            resource.bookmarkData.reset();
    }
    for (const auto& form : {written, json::prettyPrinted(written)})
        expect(decodeWorkspaces(form, platform.bundles) == workspaces);
}
