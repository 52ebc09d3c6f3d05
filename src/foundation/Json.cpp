#include "foundation/Json.h"

#include "foundation/Text.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <limits>

#include <rapidjson/document.h>
#include <rapidjson/error/en.h>
#include <rapidjson/prettywriter.h>
#include <rapidjson/writer.h>

namespace corvane::json {

namespace {

using Node = rapidjson::Value;

const Node& asNode(const void* node) {
    return *static_cast<const Node*>(node);
}

std::string_view textOf(const Node& node) {
    return {node.GetString(), node.GetStringLength()};
}

std::string lineAndColumn(std::string_view text, std::size_t offset) {
    std::size_t line = 1;
    std::size_t lineStart = 0;
    offset = std::min(offset, text.size());
    for (std::size_t i = 0; i < offset; ++i) {
        if (text[i] != '\n') continue;
        ++line;
        lineStart = i + 1;
    }
    return "line " + std::to_string(line) + ", column " + std::to_string(offset - lineStart + 1);
}

/// The library's tree with numbers that we read: its own reading gives garbage for a zero with an
/// exponent ("0e-300") and no number at all for a very small one ("1e-324").
class Tree : public rapidjson::Document {
public:
    /// Builds the tree from the text.
    rapidjson::ParseResult read(std::string_view text) {
        rapidjson::MemoryStream bytes(text.data(), text.size());
        rapidjson::ParseResult result;
        auto build = [&](rapidjson::Document&) {
            // Iterative, so that no depth of nesting exhausts the stack.
            constexpr unsigned flags =
                rapidjson::kParseIterativeFlag | rapidjson::kParseNumbersAsStringsFlag;
            rapidjson::Reader reader;
            result = reader.Parse<flags>(bytes, *this);
            return !result.IsError();
        };
        Populate(build);
        // A null character counts as the end for the library.
        if (!result.IsError() && bytes.Tell() < text.size())
            result.Set(rapidjson::kParseErrorDocumentRootNotSingular, bytes.Tell());
        return result;
    }

    /// Called by the library's reader with the text of a number in JSON's grammar.
    bool RawNumber(const char* text, rapidjson::SizeType length, bool) {
        const char* const end = text + length;
        std::int64_t integer = 0;
        if (const auto read = std::from_chars(text, end, integer); isWhole(read, end))
            return Int64(integer);
        double number = 0;
        if (const auto read = std::from_chars(text, end, number); isWhole(read, end))
            return Double(number);
        // Out of range: of the very large and the very small the wider type knows which.
        long double wide = 0;
        const auto read = std::from_chars(text, end, wide);
        number = static_cast<double>(wide);
        return isWhole(read, end) && std::isfinite(number) && Double(number);
    }

private:
    static bool isWhole(std::from_chars_result read, const char* end) {
        return read.ec == std::errc() && read.ptr == end;
    }
};

[[noreturn]] void failParsing(std::string_view name, std::string_view text, std::size_t offset,
                              std::string_view what) {
    throw DecodeError(std::string(name) + ": " + std::string(what) + " at " +
                      lineAndColumn(text, offset));
}

} // namespace

// ---- reading

struct Document::Parsed {
    std::string name;
    Tree tree;
    std::optional<Value> root;
};

Document::Document(std::string_view text, std::string name) : parsed_(std::make_unique<Parsed>()) {
    parsed_->name = std::move(name);
    // Some editors mark UTF-8 with it.
    constexpr std::string_view byteOrderMark = "\xEF\xBB\xBF";
    if (text.starts_with(byteOrderMark)) text.remove_prefix(byteOrderMark.size());
    if (const auto offset = text::firstInvalidUtf8(text); offset != text.size()) {
        failParsing(parsed_->name, text, offset, "not UTF-8");
    }
    if (const auto result = parsed_->tree.read(text); result.IsError()) {
        const auto* reason = result.Code() == rapidjson::kParseErrorTermination
                                 ? "Number too big."
                                 : rapidjson::GetParseError_En(result.Code());
        failParsing(parsed_->name, text, result.Offset(),
                    std::string("not valid JSON (") + reason + ")");
    }
    parsed_->root = Value(static_cast<const Node*>(&parsed_->tree), nullptr, parsed_->name, 0);
}

Document::~Document() = default;

const Value& Document::root() const {
    return *parsed_->root;
}

std::optional<Value> Value::optional(std::string_view key) const {
    const Node& node = asNode(node_);
    if (!node.IsObject()) fail("an object was expected");
    for (auto member = node.MemberBegin(); member != node.MemberEnd(); ++member) {
        if (textOf(member->name) != key) continue;
        if (member->value.IsNull()) return std::nullopt;
        return Value(&member->value, this, key, 0);
    }
    return std::nullopt;
}

Value Value::required(std::string_view key) const {
    if (auto value = optional(key)) return *value;
    fail("\"" + std::string(key) + "\" is missing");
}

std::size_t Value::count() const {
    const Node& node = asNode(node_);
    if (!node.IsArray()) fail("an array was expected");
    return node.Size();
}

Value Value::at(std::size_t index) const {
    const Node& node = asNode(node_);
    return Value(&node[static_cast<rapidjson::SizeType>(index)], this, {}, index);
}

std::string_view Value::text() const {
    const Node& node = asNode(node_);
    if (!node.IsString()) fail("a text was expected");
    const auto text = textOf(node);
    // The library lets the second half of a surrogate pair through where the first is missing. Such
    // a text could never be written again.
    if (!text::isValidUtf8(text)) fail("the text has half a surrogate pair");
    return text;
}

bool Value::flag() const {
    const Node& node = asNode(node_);
    if (!node.IsBool()) fail("true or false was expected");
    return node.GetBool();
}

double Value::number() const {
    const Node& node = asNode(node_);
    if (!node.IsNumber()) fail("a number was expected");
    return node.GetDouble();
}

std::int64_t Value::integer(std::int64_t lowest, std::int64_t highest) const {
    const Node& node = asNode(node_);
    if (!node.IsNumber()) fail("an integer was expected");
    std::int64_t value = 0;
    if (node.IsInt64()) {
        value = node.GetInt64();
    } else if (node.IsDouble() && std::trunc(node.GetDouble()) == node.GetDouble() &&
               std::abs(node.GetDouble()) < 0x1p63) {
        value = static_cast<std::int64_t>(node.GetDouble());
    } else {
        fail("an integer that fits was expected");
    }
    if (value < lowest || value > highest) fail("an integer that fits was expected");
    return value;
}

std::int32_t Value::int32() const {
    using Limits = std::numeric_limits<std::int32_t>;
    return static_cast<std::int32_t>(integer(Limits::min(), Limits::max()));
}

std::int64_t Value::int64() const {
    using Limits = std::numeric_limits<std::int64_t>;
    return integer(Limits::min(), Limits::max());
}

Uuid Value::uuid() const {
    if (const auto id = Uuid::parse(text())) return *id;
    fail("\"" + std::string(text()) + "\" is not an identifier");
}

std::vector<std::uint8_t> Value::base64() const {
    const auto digit = [](char c) {
        if (c >= 'A' && c <= 'Z') return c - 'A';
        if (c >= 'a' && c <= 'z') return c - 'a' + 26;
        if (c >= '0' && c <= '9') return c - '0' + 52;
        return c == '+' ? 62 : c == '/' ? 63 : -1;
    };
    auto encoded = text();
    if (encoded.size() % 4 != 0) fail("a base64 text was expected");
    for (int padding = 0; padding < 2 && encoded.ends_with('='); ++padding)
        encoded.remove_suffix(1);
    std::vector<std::uint8_t> bytes;
    std::uint32_t bits = 0;
    int count = 0;
    for (const char c : encoded) {
        if (digit(c) < 0) fail("a base64 text was expected");
        bits = bits << 6 | static_cast<std::uint32_t>(digit(c));
        count += 6;
        if (count < 8) continue;
        count -= 8;
        bytes.push_back(static_cast<std::uint8_t>(bits >> count));
    }
    return bytes;
}

Rect Value::rect() const {
    const auto pair = [](const Value& value) {
        if (value.count() != 2) value.fail("two numbers were expected");
        return std::pair(value.at(0).number(), value.at(1).number());
    };
    if (count() != 2) fail("[[x, y], [width, height]] was expected");
    const Value originValue = at(0);
    const Value sizeValue = at(1);
    const auto [x, y] = pair(originValue);
    const auto [width, height] = pair(sizeValue);
    return {x, y, width, height};
}

std::string Value::place() const {
    if (!parent_) return std::string(key_);
    if (key_.data()) return parent_->place() + "." + std::string(key_);
    return parent_->place() + "[" + std::to_string(index_) + "]";
}

void Value::fail(std::string_view what) const {
    throw DecodeError(place() + ": " + std::string(what));
}

// ---- writing

struct Writer::Output {
    explicit Output(std::size_t expectedSize)
        : buffer(nullptr, std::max<std::size_t>(expectedSize, 256)) {}

    rapidjson::StringBuffer buffer;
    rapidjson::Writer<rapidjson::StringBuffer> writer{buffer};
};

Writer::Writer(std::size_t expectedSize) : output_(std::make_unique<Output>(expectedSize)) {}
Writer::~Writer() = default;

void Writer::startObject() {
    output_->writer.StartObject();
}
void Writer::endObject() {
    output_->writer.EndObject();
}
void Writer::startArray() {
    output_->writer.StartArray();
}
void Writer::endArray() {
    output_->writer.EndArray();
}

void Writer::key(std::string_view key) {
    output_->writer.Key(key.data(), static_cast<rapidjson::SizeType>(key.size()));
}

void Writer::text(std::string_view value) {
    if (!text::isValidUtf8(value)) throw EncodeError("a text that isn't UTF-8 can't be saved");
    output_->writer.String(value.data(), static_cast<rapidjson::SizeType>(value.size()));
}

void Writer::flag(bool value) {
    output_->writer.Bool(value);
}
void Writer::integer(std::int64_t value) {
    output_->writer.Int64(value);
}

void Writer::number(double value) {
    if (!output_->writer.Double(value))
        throw EncodeError("a number that isn't finite can't be saved");
}

void Writer::uuid(const Uuid& value) {
    char text[36];
    value.write(text);
    output_->writer.String(text, sizeof text);
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
    std::string text(output_->buffer.GetString(), output_->buffer.GetSize());
    output_->buffer.Clear();
    output_->writer.Reset(output_->buffer);
    return text;
}

std::string prettyPrinted(const std::string& compact) {
    Tree tree;
    tree.read(compact);
    rapidjson::StringBuffer buffer;
    rapidjson::PrettyWriter<rapidjson::StringBuffer> writer(buffer);
    writer.SetIndent(' ', 2);
    tree.Accept(writer);
    return {buffer.GetString(), buffer.GetSize()};
}

} // namespace corvane::json
