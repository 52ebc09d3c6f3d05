#include "linux/windows/sway/WorkspaceNames.h"

#include "foundation/Text.h"

#include <algorithm>
#include <cctype>

namespace corvane::sway {
namespace {

bool isLetterOrDigit(char sign) {
    const auto byte = static_cast<unsigned char>(sign);
    // Symbols are common in names.
    return byte >= 0x80 || std::isalnum(byte);
}

bool isPlain(char sign) {
    constexpr std::string_view others = "_-:. ";
    return isLetterOrDigit(sign) || others.find(sign) != others.npos;
}

} // namespace

std::optional<std::string> movingToWorkspace(std::string_view criteria, const std::string& name) {
    constexpr std::size_t most = 100;
    constexpr std::string_view taken[]{"back_and_forth", "current",        "next", "next_on_output",
                                       "number",         "prev_on_output", "prev"};
    if (name.empty() || name.size() > most || !isLetterOrDigit(name.front()) ||
        !std::ranges::all_of(name, isPlain) ||
        std::ranges::count(taken, text::lowercased(name)) > 0) {
        return std::nullopt;
    }
    // In quotes, as i3 takes what begins as one of its words for that.
    return std::string(criteria) + "move --no-auto-back-and-forth container to workspace \"" +
           name + '"';
}

} // namespace corvane::sway
