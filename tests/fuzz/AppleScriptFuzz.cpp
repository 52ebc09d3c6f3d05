#include "linux/scripts/AppleScript.h"

#include <cstddef>
#include <cstdint>
#include <string_view>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const auto script = corvane::applescript::parse({reinterpret_cast<const char*>(data), size});
    if (!script && script.error().localizedDescription.empty()) __builtin_trap();
    return 0;
}
