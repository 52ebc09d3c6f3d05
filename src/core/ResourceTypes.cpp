#include "core/ResourceTypes.h"

#include <algorithm>

namespace corvane {

namespace {

/// In the order of the enumeration.
constexpr std::array<ResourceTypeFacts, allResourceTypes.size()> facts{{
    {"file", "File", "file", "files", "doc.fill", "doc", "File Path", "", true},
    {"folder", "Folder", "folder", "folders", "folder.fill", "folder", "Folder Path", "", true},
    {"application", "Application", "application", "applications", "app.badge", "app.badge",
     "Application Path", "", true},
    {"url", "Url", "web address", "web addresses", "globe", "", "URL",
     "https://example.com or localhost:3000"},
    {"terminal", "Terminal", "terminal command", "terminal commands", "terminal.fill", "",
     "Terminal Command", "npm start"},
    {"separator", "", "", "", "minus", "", "", ""},
}};
static_assert(std::ranges::none_of(facts, &std::string_view::empty, &ResourceTypeFacts::rawValue),
              "a type without its facts");

} // namespace

const ResourceTypeFacts& factsOf(ResourceType type) {
    return facts[static_cast<std::size_t>(type)];
}

std::string_view rawValue(ResourceType type) {
    return factsOf(type).rawValue;
}

std::string_view symbolName(ResourceType type) {
    return factsOf(type).symbolName;
}

std::optional<ResourceType> resourceTypeFromRawValue(std::string_view rawValue) {
    for (const auto type : allResourceTypes) {
        if (factsOf(type).rawValue == rawValue) return type;
    }
    return std::nullopt;
}

} // namespace corvane
