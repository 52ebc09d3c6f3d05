#pragma once

#include <array>
#include <cstdint>

namespace corvane {

constexpr std::uint8_t noHexDigit = 0xFF;

/// The value of each character as a hexadecimal digit, in either case.
constexpr auto hexValues = [] {
    std::array<std::uint8_t, 256> values{};
    values.fill(noHexDigit);
    for (std::uint8_t value = 0; value < 16; ++value) {
        values[static_cast<unsigned char>("0123456789abcdef"[value])] = value;
        values[static_cast<unsigned char>("0123456789ABCDEF"[value])] = value;
    }
    return values;
}();

constexpr std::uint8_t hexValue(char c) {
    return hexValues[static_cast<unsigned char>(c)];
}

} // namespace corvane
