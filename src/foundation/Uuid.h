#pragma once

#include <array>
#include <compare>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>

namespace corvane {

/// A 128-bit identifier. Its text is the canonical 8-4-4-4-12 form, upper case when written, any
/// case when read.
struct Uuid {
    std::array<std::uint8_t, 16> bytes{};

    /// A new random (version 4) identifier.
    static Uuid random();
    /// Reads the canonical form; anything else gives nothing.
    static std::optional<Uuid> parse(std::string_view text);
    std::string toString() const;
    /// Writes the 36 characters of the canonical form, with no terminator.
    void write(char* out) const;

    auto operator<=>(const Uuid&) const = default;
};

} // namespace corvane

template <>
struct std::hash<corvane::Uuid> {
    std::size_t operator()(const corvane::Uuid& id) const noexcept;
};
