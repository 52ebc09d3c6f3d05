#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace corvane {

/// The name in the one query that the mdfind tool answers:
/// `kMDItemKind == 'Application' && kMDItemDisplayName == '{name}'`. In a quoted text a backslash
/// takes the next character as it is. Nothing for any other text, such as one whose name brings a
/// single quote along.
std::optional<std::string> parseApplicationNameQuery(std::string_view query);

} // namespace corvane
