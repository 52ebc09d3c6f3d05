#include "foundation/Json.h"
#include "foundation/Text.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstring>
#include <utility>

namespace corvane::json {

namespace {

constexpr std::size_t leastSize = 256;
/// An escape such as "\u001f" in place of one byte.
constexpr std::size_t longestEscape = 6;

bool needsEscape(char c) {
    return static_cast<unsigned char>(c) < 0x20 || c == '"' || c == '\\';
}

/// Whether a byte of the eight is to be escaped or isn't ASCII.
bool isSpecial(std::uint64_t eight) {
    constexpr std::uint64_t ones = 0x0101010101010101u;
    constexpr std::uint64_t highBits = 0x8080808080808080u;
    const auto lessThan = [](std::uint64_t bytes, std::uint64_t bound) {
        return bytes - ones * bound;
    };
    const auto quotes = lessThan(eight ^ ones * '"', 1);
    const auto backslashes = lessThan(eight ^ ones * '\\', 1);
    return ((lessThan(eight, 0x20) | quotes | backslashes | eight) & highBits) != 0;
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

Writer::Writer(std::size_t expectedSize) : buffer_(std::max(expectedSize, leastSize), '\0') {}

char* Writer::reserve(std::size_t size) {
    if (buffer_.size() - size_ < size + 1) buffer_.resize(2 * (buffer_.size() + size));
    return buffer_.data() + size_;
}

void Writer::finish(const char* end) {
    size_ = static_cast<std::size_t>(end - buffer_.data());
}

char* Writer::startValue(std::size_t size) {
    auto* out = reserve(size);
    if (needsComma_) *out++ = ',';
    needsComma_ = true;
    return out;
}

void Writer::put(std::string_view value) {
    finish(std::copy(value.begin(), value.end(), startValue(value.size())));
}

void Writer::startObject() {
    put("{");
    needsComma_ = false;
}
void Writer::endObject() {
    needsComma_ = false;
    put("}");
}
void Writer::startArray() {
    put("[");
    needsComma_ = false;
}
void Writer::endArray() {
    needsComma_ = false;
    put("]");
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
    bool isAscii = true;
    for (std::size_t i = 0; i < value.size();) {
        std::uint64_t eight;
        if (value.size() - i >= sizeof eight) {
            std::memcpy(&eight, value.data() + i, sizeof eight);
            if (!isSpecial(eight)) {
                std::memcpy(out, &eight, sizeof eight);
                out += sizeof eight;
                i += sizeof eight;
                continue;
            }
        }
        const char c = value[i++];
        isAscii = isAscii && static_cast<unsigned char>(c) < 0x80;
        if (needsEscape(c)) {
            out = escaped(out, c);
        } else {
            *out++ = c;
        }
    }
    *out++ = '"';
    if (!isAscii && !text::isValidUtf8(value))
        throw EncodeError("a text that isn't UTF-8 can't be saved");
    finish(out);
}

void Writer::flag(bool value) {
    put(value ? "true" : "false");
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
    auto* end = std::to_chars(out, out + longest, value).ptr;
    // So that it is told from an integer, and a zero keeps its sign.
    if (std::string_view(out, static_cast<std::size_t>(end - out)).find_first_of(".e") ==
        std::string_view::npos) {
        *end++ = '.';
        *end++ = '0';
    }
    finish(end);
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
    return std::exchange(buffer_, std::string(leastSize, '\0'));
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
