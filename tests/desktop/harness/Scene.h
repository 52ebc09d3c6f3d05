#pragma once

#include <string>
#include <vector>

/// What a user's home holds before Corvane starts.
namespace corvane::desktop {

/// Writes a file, with the folders above it.
void writeFile(const std::string& file, const std::string& content);
std::string readFile(const std::string& file);

struct SceneResource {
    std::string name;
    /// As in the workspaces file: "file", "folder", ...
    std::string type;
    std::string path;
};

struct SceneWorkspace {
    std::string name;
    std::string description;
    std::string icon;
    std::vector<SceneResource> resources;
};

/// The content of a workspaces file.
std::string workspacesJson(const std::vector<SceneWorkspace>& workspaces);

} // namespace corvane::desktop
