#include "foundation/Json.h"
#include "foundation/Text.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstring>
#include <utility>

#include <rapidjson/prettywriter.h>
#include <rapidjson/reader.h>

namespace corvane::json {

namespace {

constexpr std::size_t longestNumber = 32;

bool isEscaped(char c) {
    return static_cast<unsigned char>(c) < 0x20 || c == '"' || c == '\\';
}

/// How many bytes of the start stand in a JSON text as they are, and of ASCII if that is asked for.
template <bool isAscii>
std::size_t plainLength(std::string_view text) {
    std::size_t length = 0;
    // Eight at a time: the highest bit of a byte is left where one of them is another.
    constexpr std::uint64_t each = 0x0101010101010101;
    for (std::uint64_t eight; length + sizeof eight <= text.size(); length += sizeof eight) {
        std::memcpy(&eight, text.data() + length, sizeof eight);
        const auto quotes = eight ^ each * '"', backslashes = eight ^ each * '\\';
        const auto others = ((eight - each * 0x20) & ~eight) | ((quotes - each) & ~quotes) |
                            ((backslashes - each) & ~backslashes) | (isAscii ? eight : 0);
        if (others & each * 0x80) break;
    }
    const auto isPlain = [](char c) {
        return !isEscaped(c) && !(isAscii && static_cast<unsigned char>(c) >= 0x80);
    };
    while (length < text.size() && isPlain(text[length]))
        ++length;
    return length;
}

char* copy(std::string_view text, char* out) {
    std::memcpy(out, text.data(), text.size());
    return out + text.size();
}

/// At most six characters.
char* writeEscaped(char* out, char c) {
    constexpr char digits[] = "0123456789ABCDEF";
    constexpr std::string_view plain = "\"\\bfnrt";
    constexpr std::string_view meant = "\"\\\b\f\n\r\t";
    *out++ = '\\';
    if (const auto found = meant.find(c); found != meant.npos) {
        *out++ = plain[found];
        return out;
    }
    const auto byte = static_cast<unsigned char>(c);
    for (const char next : {'u', '0', '0', digits[byte >> 4], digits[byte & 15]})
        *out++ = next;
    return out;
}

/// Puts numbers as they are; the library's own writer puts them in quotes.
struct PrettyWriter : rapidjson::PrettyWriter<rapidjson::StringBuffer> {
    using rapidjson::PrettyWriter<rapidjson::StringBuffer>::PrettyWriter;
    bool RawNumber(const char* digits, rapidjson::SizeType length, bool) {
        return RawValue(digits, length, rapidjson::kNumberType);
    }
};

} // namespace

Writer::Writer(std::size_t expectedSize) {
    makeRoom(expectedSize);
}

void Writer::grow(std::size_t size) {
    buffer_.resize(std::max(size_ + size, 2 * buffer_.size()));
}

char* Writer::startValue(std::size_t size) {
    makeRoom(size + 1);
    char* const out = buffer_.data() + size_;
    *out = ',';
    return out + std::exchange(needsComma_, true);
}

void Writer::endAt(const char* end) {
    size_ = static_cast<std::size_t>(end - buffer_.data());
}

void Writer::open(char bracket) {
    char* const out = startValue(1);
    *out = bracket;
    endAt(out + 1);
    needsComma_ = false;
}

void Writer::close(char bracket) {
    makeRoom(1);
    buffer_[size_++] = bracket;
    needsComma_ = true;
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
    char* out = startValue(key.size() + 3);
    *out++ = '"';
    out = copy(key, out);
    *out++ = '"';
    *out++ = ':';
    endAt(out);
    needsComma_ = false;
}

void Writer::text(std::string_view value) {
    constexpr std::size_t longestEscape = 6;
    auto plain = plainLength<true>(value);
    if (plain < value.size()) {
        if (!text::isValidUtf8(value)) throw EncodeError("a text that isn't UTF-8 can't be saved");
        plain = plainLength<false>(value);
    }
    char* out = startValue(plain + (value.size() - plain) * longestEscape + 2);
    *out++ = '"';
    out = copy(value.substr(0, plain), out);
    while (plain < value.size()) {
        out = writeEscaped(out, value[plain]);
        value.remove_prefix(plain + 1);
        plain = plainLength<false>(value);
        out = copy(value.substr(0, plain), out);
    }
    *out++ = '"';
    endAt(out);
}

void Writer::flag(bool value) {
    const std::string_view word = value ? "true" : "false";
    endAt(copy(word, startValue(word.size())));
}

void Writer::integer(std::int64_t value) {
    char* const out = startValue(longestNumber);
    endAt(std::to_chars(out, out + longestNumber, value).ptr);
}

void Writer::number(double value) {
    if (!std::isfinite(value)) throw EncodeError("a number that isn't finite can't be saved");
    char* out = startValue(longestNumber);
    char* const end = out + longestNumber;
    // Most numbers of a layout are whole, and those are written faster so.
    constexpr double mostDigits = 1e15;
    if (std::trunc(value) != value || std::abs(value) >= mostDigits)
        return endAt(std::to_chars(out, end, value).ptr);
    if (std::signbit(value)) *out++ = '-';
    out = std::to_chars(out, end, static_cast<std::int64_t>(std::abs(value))).ptr;
    endAt(copy(".0", out));
}

void Writer::uuid(const Uuid& value) {
    constexpr std::size_t digits = 36;
    char* const out = startValue(digits + 2);
    out[0] = '"';
    value.write(out + 1);
    out[1 + digits] = '"';
    endAt(out + digits + 2);
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
    rapidjson::StringBuffer buffer;
    PrettyWriter writer(buffer);
    writer.SetIndent(' ', 2);
    rapidjson::StringStream stream(compact.c_str());
    rapidjson::Reader().Parse<rapidjson::kParseNumbersAsStringsFlag>(stream, writer);
    return {buffer.GetString(), buffer.GetSize()};
}

} // namespace corvane::json
