#include "desktop/harness/Scene.h"

#include "foundation/Json.h"
#include "foundation/Uuid.h"

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

namespace {

void writeText(json::Writer& writer, std::string_view key, const std::string& value) {
    writer.key(key);
    writer.text(value);
}

void writeResource(json::Writer& writer, const SceneResource& resource) {
    writer.startObject();
    writer.key("id");
    writer.uuid(Uuid::random());
    writeText(writer, "name", resource.name);
    writeText(writer, "path", resource.path);
    writeText(writer, "type", resource.type);
    writer.key("associatedApps");
    writer.startArray();
    writer.endArray();
    writer.endObject();
}

void writeWorkspace(json::Writer& writer, const SceneWorkspace& workspace) {
    writer.startObject();
    writer.key("id");
    writer.uuid(Uuid::random());
    writeText(writer, "name", workspace.name);
    writeText(writer, "description", workspace.description);
    writeText(writer, "icon", workspace.icon);
    writer.key("resources");
    writer.startArray();
    for (const auto& resource : workspace.resources)
        writeResource(writer, resource);
    writer.endArray();
    writer.key("dateCreated");
    writer.number(757382400);
    writer.key("dateModified");
    writer.number(757382400);
    writer.endObject();
}

} // namespace

std::string workspacesJson(const std::vector<SceneWorkspace>& workspaces) {
    json::Writer writer;
    writer.startArray();
    for (const auto& workspace : workspaces)
        writeWorkspace(writer, workspace);
    writer.endArray();
    return writer.take();
}

} // namespace corvane::desktop
