#include "core/WorkspaceStore.h"

namespace corvane {

std::optional<std::string> WorkspaceStore::appNameForResource(const Resource& resource) const {
    switch (resource.type) {
    case ResourceType::file: {
        const auto application =
            platform_.applications.urlForApplicationToOpen(Url::fromPath(resource.path));
        return application ? std::optional(path::stem(application->path())) : std::nullopt;
    }
    case ResourceType::folder:
        return "Finder";
    case ResourceType::application:
        return resource.path.ends_with(".app") ? path::stem(resource.path) : resource.name;
    case ResourceType::url:
        return "Safari";
    case ResourceType::terminal:
        return "Terminal";
    case ResourceType::separator:
        return std::nullopt;
    }
    return std::nullopt;
}

} // namespace corvane
