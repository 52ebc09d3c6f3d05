#include "foundation/Uuid.h"

#include <cstring>
#include <random>

namespace corvane {

namespace {

constexpr bool isDashAt(std::size_t position) {
    return position == 8 || position == 13 || position == 18 || position == 23;
}

int hexValue(char c) {
    if (c >= '0' && c <= '9') return c - '0';
    if (c >= 'a' && c <= 'f') return c - 'a' + 10;
    if (c >= 'A' && c <= 'F') return c - 'A' + 10;
    return -1;
}

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
    if (text.size() != 36) return std::nullopt;
    Uuid id;
    std::size_t digit = 0;
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (isDashAt(i)) {
            if (text[i] != '-') return std::nullopt;
            continue;
        }
        const int value = hexValue(text[i]);
        if (value < 0) return std::nullopt;
        auto& byte = id.bytes[digit / 2];
        byte = static_cast<std::uint8_t>(byte << 4 | value);
        ++digit;
    }
    return id;
}

void Uuid::write(char* out) const {
    constexpr char digits[] = "0123456789ABCDEF";
    std::size_t position = 0;
    for (const auto byte : bytes) {
        if (isDashAt(position)) out[position++] = '-';
        out[position++] = digits[byte >> 4];
        out[position++] = digits[byte & 0x0F];
    }
}

std::string Uuid::toString() const {
    std::string text(36, '\0');
    write(text.data());
    return text;
}

} // namespace corvane

std::size_t std::hash<corvane::Uuid>::operator()(const corvane::Uuid& id) const noexcept {
    std::size_t value;
    std::memcpy(&value, id.bytes.data(), sizeof value);
    return value;
}
