#include "desktop/harness/Scene.h"

#include "core/RecordCoding.h"

#include <filesystem>
#include <fstream>
#include <sstream>

namespace corvane::desktop {

void writeFile(const std::string& file, const std::string& content) {
    std::filesystem::create_directories(std::filesystem::path(file).parent_path());
    std::ofstream(file, std::ios::binary) << content;
}

std::string readFile(const std::string& file) {
    std::ostringstream content;
    content << std::ifstream(file, std::ios::binary).rdbuf();
    return content.str();
}

std::string workspacesJson(const std::vector<SceneWorkspace>& scene) {
    std::vector<Workspace> workspaces;
    for (const auto& [name, description, icon, resources] : scene) {
        auto& workspace =
            workspaces.emplace_back(makeWorkspace(name, description, icon, {757382400}));
        for (const auto& each : resources) {
            auto& resource = workspace.resources.emplace_back();
            resource.id = Uuid::random();
            resource.name = each.name;
            resource.path = each.path;
            resource.type = resourceTypeFromRawValue(each.type).value();
        }
    }
    return encodeWorkspaces(workspaces);
}

} // namespace corvane::desktop
