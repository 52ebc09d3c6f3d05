#include "foundation/Uuid.h"

#include "foundation/HexDigits.h"

#include <cstring>
#include <random>

namespace corvane {

namespace {

constexpr std::size_t textSize = 36;
constexpr std::array<std::size_t, 4> dashes{8, 13, 18, 23};
/// Where the two digits of each byte stand.
constexpr std::array<std::size_t, 16> digits{0,  2,  4,  6,  9,  11, 14, 16,
                                             19, 21, 24, 26, 28, 30, 32, 34};

/// The two digits of each byte.
constexpr auto hexDigits = [] {
    std::array<std::array<char, 2>, 256> pairs{};
    for (std::size_t byte = 0; byte < pairs.size(); ++byte)
        pairs[byte] = {"0123456789ABCDEF"[byte >> 4], "0123456789ABCDEF"[byte & 0x0F]};
    return pairs;
}();

} // namespace

Uuid Uuid::random() {
    static std::random_device source;
    Uuid id;
    for (std::size_t i = 0; i < id.bytes.size(); i += sizeof(std::uint32_t)) {
        const std::uint32_t word = source();
        std::memcpy(&id.bytes[i], &word, sizeof word);
    }
    id.bytes[6] = static_cast<std::uint8_t>((id.bytes[6] & 0x0F) | 0x40);
    id.bytes[8] = static_cast<std::uint8_t>((id.bytes[8] & 0x3F) | 0x80);
    return id;
}

std::optional<Uuid> Uuid::parse(std::string_view text) {
    if (text.size() != textSize) return std::nullopt;
    for (const auto dash : dashes) {
        if (text[dash] != '-') return std::nullopt;
    }
    Uuid id;
    for (std::size_t i = 0; i < id.bytes.size(); ++i) {
        const auto high = hexValue(text[digits[i]]);
        const auto low = hexValue(text[digits[i] + 1]);
        if (high == noHexDigit || low == noHexDigit) return std::nullopt;
        id.bytes[i] = static_cast<std::uint8_t>(high << 4 | low);
    }
    return id;
}

void Uuid::write(char* out) const {
    for (const auto dash : dashes)
        out[dash] = '-';
    for (std::size_t i = 0; i < bytes.size(); ++i)
        std::memcpy(out + digits[i], hexDigits[bytes[i]].data(), 2);
}

std::string Uuid::toString() const {
    std::string text(textSize, '\0');
    write(text.data());
    return text;
}

} // namespace corvane

std::size_t std::hash<corvane::Uuid>::operator()(const corvane::Uuid& id) const noexcept {
    std::size_t value;
    std::memcpy(&value, id.bytes.data(), sizeof value);
    return value;
}
