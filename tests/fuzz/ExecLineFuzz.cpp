#include "linux/installed/ExecLine.h"
#include "linux/installed/InstalledApplication.h"

#include <cstddef>
#include <cstdint>
#include <string_view>

using namespace corvane;

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
