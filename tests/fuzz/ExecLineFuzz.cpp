#include "linux/installed/ExecLine.h"
#include "linux/installed/InstalledApplication.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>

using namespace corvane;

namespace {

struct Line {
    std::string_view exec;
    /// The words before the item, and what stands before it in its own word.
    std::size_t words;
    std::string_view before;
};

constexpr std::array<Line, 5> known{{{"viewer %f", 1, ""},
                                     {"viewer %u", 1, ""},
                                     {"viewer --new", 2, ""},
                                     {"viewer --open=%u", 1, "--open="},
                                     {"sh -c \"exec viewer %u\" name", 4, ""}}};

/// A program gets it as the one word that its entry has a place for, a path or with a scheme in
/// front, or not at all.
void checkKnownLines(const std::string& address) {
    InstalledApplication application;
    for (const auto& line : known) {
        application.exec = line.exec;
        const auto commands = execCommands(application, {address}, {});
        if (!commands) continue;
        if (commands->size() != 1 || commands->front().size() != line.words + 1) __builtin_trap();
        std::string_view item = commands->front().back();
        if (!item.starts_with(line.before)) __builtin_trap();
        item.remove_prefix(line.before.size());
        const auto colon = item.find(':');
        const bool hasScheme = colon != item.npos && colon > 0 && item.find_first_of("/-+") != 0;
        if (!item.starts_with('/') && !hasScheme) __builtin_trap();
        if (!item.starts_with('/') && item != address) __builtin_trap();
    }
}

} // namespace

/// The first line is an Exec key, the second an address. Whatever they are, the address reaches the
/// program as a path or with its scheme in front, or it is refused in words; with no item of its
/// own, a command holds nothing of it.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view text(reinterpret_cast<const char*>(data), size);
    const auto end = text.find('\n');
    InstalledApplication application;
    application.displayName = "A";
    application.exec = text.substr(0, end);
    const std::string uri(end == text.npos ? "" : text.substr(end + 1));
    checkKnownLines(uri);
    const auto item = areOpenable({uri});
    const auto commands = execCommands(application, {uri}, {});
    if (!item && commands) __builtin_trap();
    if (!commands) {
        if (commands.error().localizedDescription.empty()) __builtin_trap();
        return 0;
    }
    for (const auto& command : *commands) {
        if (takesItems(application)) continue;
        // With no code for it, the item is the last word.
        if (command.back().starts_with('-')) __builtin_trap();
    }
    return 0;
}
