#pragma once

#include <array>
#include <optional>
#include <string_view>

namespace corvane {

/// What a resource is, and so what its `path` holds and how it opens.
enum class ResourceType { file, folder, application, url, terminal, separator };

inline constexpr std::array allResourceTypes{ResourceType::file,        ResourceType::folder,
                                             ResourceType::application, ResourceType::url,
                                             ResourceType::terminal,    ResourceType::separator};

/// What is known of a type besides how it opens (ResourceLauncher) and which application stands for
/// it (`appNameForResource`).
struct ResourceTypeFacts {
    /// In files and in bookmark keys.
    std::string_view rawValue;
    std::string_view title;
    /// What an import calls one and many of it; empty for what opens nothing.
    std::string_view noun, nouns;
    /// The symbols of its rows, chips and tiles, and of the button that picks one.
    std::string_view symbolName, pickerSymbol;
    /// What a form calls its path, and an example of one that is typed.
    std::string_view pathHeading, pathPrompt;
    /// Its path is one of the file system's, so it is picked in a panel and has a bookmark.
    bool isInFileSystem = false;
};

const ResourceTypeFacts& factsOf(ResourceType type);
std::string_view rawValue(ResourceType type);
std::string_view symbolName(ResourceType type);
/// Exact; any other text gives nothing.
std::optional<ResourceType> resourceTypeFromRawValue(std::string_view rawValue);

} // namespace corvane
