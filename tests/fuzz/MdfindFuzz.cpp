#include "linux/scripts/MdfindQuery.h"

#include <cstddef>
#include <cstdint>

/// A name that is read is one that can be asked for again.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view text(reinterpret_cast<const char*>(data), size);
    const auto name = corvane::parseApplicationNameQuery(text);
    if (!name) return 0;
    std::string quoted;
    for (const char c : *name) {
        if (c == '\\' || c == '\'') quoted += '\\';
        quoted += c;
    }
    const auto query = "kMDItemKind == 'Application' && kMDItemDisplayName == '" + quoted + "'";
    if (corvane::parseApplicationNameQuery(query) != name) __builtin_trap();
    return 0;
}
