#include "foundation/Json.h"
#include "foundation/Text.h"

#include <array>
#include <charconv>
#include <cmath>
#include <utility>

#include <rapidjson/prettywriter.h>
#include <rapidjson/reader.h>

namespace corvane::json {

namespace {

bool needsEscape(char c) {
    return static_cast<unsigned char>(c) < 0x20 || c == '"' || c == '\\';
}

void appendEscaped(std::string& out, char c) {
    constexpr char digits[] = "0123456789ABCDEF";
    constexpr std::string_view plain = "\"\\bfnrt";
    constexpr std::string_view meant = "\"\\\b\f\n\r\t";
    out += '\\';
    if (const auto found = meant.find(c); found != meant.npos) {
        out += plain[found];
        return;
    }
    out += "u00";
    out += digits[static_cast<unsigned char>(c) >> 4];
    out += digits[static_cast<unsigned char>(c) & 15];
}

/// Puts numbers as they are; the library's own writer puts them in quotes.
struct PrettyWriter : rapidjson::PrettyWriter<rapidjson::StringBuffer> {
    using rapidjson::PrettyWriter<rapidjson::StringBuffer>::PrettyWriter;
    bool RawNumber(const char* digits, rapidjson::SizeType length, bool) {
        return RawValue(digits, length, rapidjson::kNumberType);
    }
};

template <typename Number>
void append(std::string& out, Number value) {
    std::array<char, 32> digits;
    out.append(digits.data(), std::to_chars(digits.begin(), digits.end(), value).ptr);
}

} // namespace

Writer::Writer(std::size_t expectedSize) {
    buffer_.reserve(expectedSize);
}

void Writer::startValue() {
    if (needsComma_) buffer_ += ',';
    needsComma_ = true;
}

void Writer::open(char bracket) {
    startValue();
    buffer_ += bracket;
    needsComma_ = false;
}

void Writer::close(char bracket) {
    buffer_ += bracket;
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
    startValue();
    buffer_ += '"';
    buffer_ += key;
    buffer_ += "\":";
    needsComma_ = false;
}

void Writer::text(std::string_view value) {
    if (!text::isValidUtf8(value)) throw EncodeError("a text that isn't UTF-8 can't be saved");
    startValue();
    buffer_ += '"';
    // What stands between two escapes goes over in one piece.
    std::size_t written = 0;
    for (std::size_t i = 0; i < value.size(); ++i) {
        if (!needsEscape(value[i])) continue;
        buffer_.append(value, written, i - written);
        appendEscaped(buffer_, value[i]);
        written = i + 1;
    }
    buffer_.append(value, written);
    buffer_ += '"';
}

void Writer::flag(bool value) {
    startValue();
    buffer_ += value ? "true" : "false";
}

void Writer::integer(std::int64_t value) {
    startValue();
    append(buffer_, value);
}

void Writer::number(double value) {
    if (!std::isfinite(value)) throw EncodeError("a number that isn't finite can't be saved");
    startValue();
    // Most numbers of a layout are whole, and those are written faster so.
    constexpr double mostDigits = 1e15;
    if (std::trunc(value) != value || std::abs(value) >= mostDigits) return append(buffer_, value);
    if (std::signbit(value)) buffer_ += '-';
    append(buffer_, static_cast<std::int64_t>(std::abs(value)));
    buffer_ += ".0";
}

void Writer::uuid(const Uuid& value) {
    startValue();
    buffer_ += '"';
    std::array<char, 36> digits;
    value.write(digits.data());
    buffer_.append(digits.data(), digits.size());
    buffer_ += '"';
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
