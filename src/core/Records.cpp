#include "core/Records.h"

#include "foundation/Text.h"
#include "platform/Bundles.h"

#include <utility>

namespace corvane {

std::optional<std::string> deriveBundleIdentifier(std::string_view path, const Bundles& bundles) {
    if (!path.ends_with(".app")) return std::nullopt;
    const auto bundle = bundles.open(std::string(path));
    return bundle ? bundle->bundleIdentifier : std::nullopt;
}

Resource makeResource(std::string name, std::string path, ResourceType type,
                      const Bundles& bundles) {
    Resource resource;
    resource.id = Uuid::random();
    resource.name = std::move(name);
    resource.path = std::move(path);
    resource.type = type;
    if (type == ResourceType::application)
        resource.bundleIdentifier = deriveBundleIdentifier(resource.path, bundles);
    return resource;
}

Workspace makeWorkspace(std::string name, std::string description, std::string icon,
                        Timestamp now) {
    Workspace workspace;
    workspace.id = Uuid::random();
    workspace.name = std::move(name);
    workspace.description = std::move(description);
    workspace.icon = std::move(icon);
    workspace.dateCreated = now;
    workspace.dateModified = now;
    return workspace;
}

std::string whatOpens(const Resource& resource) {
    constexpr std::size_t mostCharacters = 1000;
    return text::onOneLine(resource.path, mostCharacters);
}

} // namespace corvane
