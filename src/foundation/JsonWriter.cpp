#include "foundation/Json.h"
#include "foundation/Text.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstring>
#include <utility>

namespace corvane::json {

namespace {

/// An escape such as "\u001f" in place of one byte.
constexpr std::size_t longestEscape = 6;

bool needsEscape(char c) {
    return static_cast<unsigned char>(c) < 0x20 || c == '"' || c == '\\';
}

constexpr std::uint64_t ones = 0x0101010101010101u;
constexpr std::uint64_t highBits = 0x8080808080808080u;

/// The high bit of each byte below `bound`, and of none where no byte is; `bound` is at most 0x80.
std::uint64_t markBelow(std::uint64_t eight, std::uint64_t bound) {
    return (eight - ones * bound) & ~eight & highBits;
}

/// Whether one of the eight bytes is to be escaped.
bool needEscape(std::uint64_t eight) {
    return (markBelow(eight, 0x20) | markBelow(eight ^ ones * '"', 1) |
            markBelow(eight ^ ones * '\\', 1)) != 0;
}

std::uint64_t eightAt(const char* bytes) {
    std::uint64_t eight;
    std::memcpy(&eight, bytes, sizeof eight);
    return eight;
}

char* escaped(char* out, char c) {
    constexpr char digits[] = "0123456789ABCDEF";
    constexpr std::string_view plain = "\"\\bfnrt";
    constexpr std::string_view meant = "\"\\\b\f\n\r\t";
    *out++ = '\\';
    if (const auto found = meant.find(c); found != meant.npos) {
        *out++ = plain[found];
        return out;
    }
    const auto byte = static_cast<unsigned char>(c);
    for (const char part : {'u', '0', '0', digits[byte >> 4], digits[byte & 15]})
        *out++ = part;
    return out;
}

} // namespace

Writer::Writer(std::size_t expectedSize) {
    buffer_.reserve(expectedSize);
}

void Writer::grow(std::size_t size) {
    // In small steps, as resizing clears memory that should still be in the cache when it is used.
    constexpr std::size_t step = 1 << 16;
    buffer_.resize(buffer_.size() + size + step);
}

inline char* Writer::startValue(std::size_t size) {
    if (buffer_.size() - size_ < size + 1) grow(size);
    auto* out = buffer_.data() + size_;
    if (needsComma_) *out++ = ',';
    needsComma_ = true;
    return out;
}

inline void Writer::finish(const char* end) {
    size_ = static_cast<std::size_t>(end - buffer_.data());
}

void Writer::open(char bracket) {
    auto* out = startValue(1);
    *out++ = bracket;
    finish(out);
    needsComma_ = false;
}

void Writer::close(char bracket) {
    needsComma_ = false;
    auto* out = startValue(1);
    *out++ = bracket;
    finish(out);
}

void Writer::startObject() {
    open('{');
}
void Writer::endObject() {
    close('}');
}
void Writer::startArray() {
    open('[');
}
void Writer::endArray() {
    close(']');
}

void Writer::key(std::string_view key) {
    auto* out = startValue(key.size() + 3);
    *out++ = '"';
    out = std::copy(key.begin(), key.end(), out);
    *out++ = '"';
    *out++ = ':';
    finish(out);
    needsComma_ = false;
}

void Writer::text(std::string_view value) {
    auto* out = startValue(longestEscape * value.size() + 2);
    *out++ = '"';
    const char* in = value.data();
    const char* const end = in + value.size();
    std::uint64_t seen = 0;
    const auto copyOne = [&] {
        const char c = *in++;
        seen |= static_cast<unsigned char>(c);
        if (needsEscape(c)) {
            out = escaped(out, c);
        } else {
            *out++ = c;
        }
    };
    constexpr std::ptrdiff_t step = sizeof(std::uint64_t);
    while (end - in >= step) {
        const auto eight = eightAt(in);
        if (needEscape(eight)) {
            copyOne();
            continue;
        }
        seen |= eight;
        std::memcpy(out, &eight, step);
        out += step;
        in += step;
    }
    // The rest with the bytes before it, which stand as they are if they are plain too.
    if (end - value.data() >= step && !needEscape(eightAt(end - step))) {
        seen |= eightAt(end - step);
        out += end - in;
        in = end;
        std::memcpy(out - step, end - step, step);
    }
    while (in < end)
        copyOne();
    *out++ = '"';
    const bool isAscii = (seen & highBits) == 0;
    if (!isAscii && !text::isValidUtf8(value))
        throw EncodeError("a text that isn't UTF-8 can't be saved");
    finish(out);
}

void Writer::flag(bool value) {
    const std::string_view text = value ? std::string_view("true") : std::string_view("false");
    finish(std::copy(text.begin(), text.end(), startValue(text.size())));
}

void Writer::integer(std::int64_t value) {
    constexpr std::size_t longest = 20;
    auto* out = startValue(longest);
    finish(std::to_chars(out, out + longest, value).ptr);
}

void Writer::number(double value) {
    if (!std::isfinite(value)) throw EncodeError("a number that isn't finite can't be saved");
    constexpr std::size_t longest = 32;
    auto* out = startValue(longest);
    // Most numbers of a layout are whole, and those are written faster so.
    constexpr double mostDigits = 1e15;
    if (std::trunc(value) == value && std::abs(value) < mostDigits) {
        if (std::signbit(value)) *out++ = '-';
        const auto digits = static_cast<std::int64_t>(std::abs(value));
        out = std::to_chars(out, out + longest, digits).ptr;
        *out++ = '.';
        *out++ = '0';
        return finish(out);
    }
    finish(std::to_chars(out, out + longest, value).ptr);
}

void Writer::uuid(const Uuid& value) {
    constexpr std::size_t length = 36;
    auto* out = startValue(length + 2);
    *out++ = '"';
    value.write(out);
    out += length;
    *out++ = '"';
    finish(out);
}

void Writer::rect(const Rect& value) {
    startArray();
    startArray();
    number(value.x);
    number(value.y);
    endArray();
    startArray();
    number(value.width);
    number(value.height);
    endArray();
    endArray();
}

std::string Writer::take() {
    buffer_.resize(std::exchange(size_, 0));
    needsComma_ = false;
    return std::exchange(buffer_, {});
}

std::string prettyPrinted(const std::string& compact) {
    std::string result;
    std::string lineBreak = "\n";
    bool isInText = false;
    for (std::size_t i = 0; i < compact.size(); ++i) {
        const char c = compact[i];
        const bool isEmptyNext =
            i + 1 < compact.size() && (compact[i + 1] == ']' || compact[i + 1] == '}');
        if (isInText) {
            result += c;
            if (c == '\\') result += compact[++i];
            isInText = c != '"';
        } else if ((c == '[' || c == '{') && isEmptyNext) {
            result.append(compact, i++, 2);
        } else if (c == '[' || c == '{') {
            lineBreak += "  ";
            result += c + lineBreak;
        } else if (c == ']' || c == '}') {
            lineBreak.resize(lineBreak.size() - 2);
            result += lineBreak + c;
        } else {
            result += c;
            if (c == ',') result += lineBreak;
            if (c == ':') result += ' ';
            isInText = c == '"';
        }
    }
    return result;
}

} // namespace corvane::json
