#include "foundation/Json.h"

#include "foundation/Text.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstring>
#include <limits>
#include <utility>

#include <rapidjson/error/en.h>
#include <rapidjson/reader.h>

namespace corvane::json {

/// One value, or one key, of a text. The elements of an array and the keys and values of an object
/// stand right behind it, each with what belongs to it.
struct Node {
    enum class Kind : std::uint8_t { null, flag, integer, number, text, array, object };

    Kind kind = Kind::null;
    /// Of a text: the library lets the second half of a surrogate pair through where the first is
    /// missing.
    bool isUtf8 = true;
    /// Of a text, in bytes; of an array or object, in elements or members.
    std::uint32_t size = 0;
    union {
        bool flag;
        std::int64_t integer = 0;
        double number;
        const char* text;
        /// Of an array or object: nodes, itself included.
        std::size_t span;
    };

    bool isContainer() const { return kind == Kind::array || kind == Kind::object; }
    const Node* next() const { return this + (isContainer() ? span : 1); }
    bool isText(std::string_view other) const {
        // Few keys of one object have both in common, so that calls are few too.
        return size == other.size() && (size == 0 || *text == other.front()) &&
               std::memcmp(text, other.data(), size) == 0;
    }
};

namespace {

using Kind = Node::Kind;

constexpr std::size_t mostBytes = 64 << 20;
constexpr std::size_t mostLevels = 64;

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

/// Whether a text is a number as JSON has it, and beyond what a double holds.
bool isHugeNumber(std::string_view token) {
    std::size_t at = token.starts_with('-') ? 1 : 0;
    const auto skipDigits = [&] {
        const auto end = std::min(token.find_first_not_of("0123456789", at), token.size());
        return end - std::exchange(at, end);
    };
    const bool startsWithZero = at < token.size() && token[at] == '0';
    const auto digits = skipDigits();
    if (digits == 0 || (startsWithZero && digits > 1)) return false;
    if (at < token.size() && token[at] == '.' && (++at, skipDigits() == 0)) return false;
    if (at < token.size() && (token[at] | 0x20) == 'e') {
        if (++at < token.size() && token[at] == '-') return false;
        at += at < token.size() && token[at] == '+' ? 1 : 0;
        if (skipDigits() == 0) return false;
    }
    long double wide = std::numeric_limits<long double>::infinity();
    std::from_chars(token.data(), token.data() + token.size(), wide);
    return at == token.size() && std::abs(wide) > std::numeric_limits<double>::max();
}

/// Writes a huge number that the library takes over each that it doesn't, at the same length.
void shortenHugeNumbers(std::string& text) {
    constexpr std::string_view shorter = "9e308";
    bool isInText = false;
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] == '"') isInText = !isInText;
        if (isInText) {
            i += text[i] == '\\' ? 1 : 0;
        } else if (text[i] == '-' || (text[i] >= '0' && text[i] <= '9')) {
            const auto end = std::min(text.find_first_not_of("0123456789+-.eE", i), text.size());
            if (isHugeNumber(std::string_view(text).substr(i, end - i)))
                text.replace(i, end - i,
                             std::string(shorter).append(end - i - shorter.size(), ' '));
            i = end - 1;
        }
    }
}

/// Takes what the library finds in a text and keeps it as one list of nodes. Numbers are read here,
/// as the library gives garbage for a zero with an exponent ("0e-300") and no number at all for a
/// very small one ("1e-324").
class Tree : public rapidjson::BaseReaderHandler<rapidjson::UTF8<>, Tree> {
public:
    rapidjson::ParseResult read(std::string_view text) {
        texts_ = text;
        constexpr std::size_t bytesOfNode = 10;
        nodes_.reserve(text.size() / bytesOfNode);
        escapesUnits_ = text.find("\\u") != text.npos;
        auto result = readTexts();
        if (result.Code() == rapidjson::kParseErrorNumberTooBig) {
            // The library takes none, though it may stand where nobody looks.
            texts_ = text;
            shortenHugeNumbers(texts_);
            nodes_.clear();
            open_.clear();
            result = readTexts();
        }
        return result;
    }
    const Node* root() const { return nodes_.data(); }

    // Called by the library's reader; false ends the reading.

    bool Null() {
        add(Kind::null);
        return true;
    }
    bool Bool(bool value) {
        add(Kind::flag).flag = value;
        return true;
    }
    bool RawNumber(const char* text, rapidjson::SizeType length, bool) {
        const char* const end = text + length;
        std::int64_t integer = 0;
        if (const auto read = std::from_chars(text, end, integer); isWhole(read, end)) {
            add(Kind::integer).integer = integer;
            return true;
        }
        double number = 0;
        if (const auto read = std::from_chars(text, end, number); !isWhole(read, end)) {
            // Out of range: of the very large and the very small the wider type knows which.
            long double wide = std::numeric_limits<long double>::infinity();
            std::from_chars(text, end, wide);
            number = static_cast<double>(wide);
        }
        add(Kind::number).number = number;
        return true;
    }
    bool String(const char* text, rapidjson::SizeType length, bool) {
        auto& node = add(Kind::text);
        node.size = length;
        node.text = text;
        node.isUtf8 = !escapesUnits_ || text::isValidUtf8({text, length});
        return true;
    }
    bool Key(const char* text, rapidjson::SizeType length, bool copy) {
        return String(text, length, copy);
    }
    bool StartObject() { return open(Kind::object); }
    bool StartArray() { return open(Kind::array); }
    bool EndObject(rapidjson::SizeType members) { return close(members); }
    bool EndArray(rapidjson::SizeType elements) { return close(elements); }

private:
    rapidjson::ParseResult readTexts() {
        // No text grows when its escapes are taken out, so each has room where it stood.
        rapidjson::InsituStringStream bytes(texts_.data());
        rapidjson::Reader reader;
        // Iterative, so that no depth of nesting exhausts the stack.
        constexpr unsigned flags = rapidjson::kParseInsituFlag | rapidjson::kParseIterativeFlag |
                                   rapidjson::kParseNumbersAsStringsFlag;
        auto result = reader.Parse<flags>(bytes, *this);
        // A null character counts as the end for the library.
        if (!result.IsError() && bytes.Tell() < texts_.size())
            result.Set(rapidjson::kParseErrorDocumentRootNotSingular, bytes.Tell());
        return result;
    }
    static bool isWhole(std::from_chars_result read, const char* end) {
        return read.ec == std::errc() && read.ptr == end;
    }

    Node& add(Kind kind) {
        auto& node = nodes_.emplace_back();
        node.kind = kind;
        return node;
    }
    bool open(Kind kind) {
        if (open_.size() == mostLevels) return false;
        open_.push_back(nodes_.size());
        add(kind);
        return true;
    }
    bool close(rapidjson::SizeType size) {
        auto& node = nodes_[open_.back()];
        node.size = size;
        node.span = nodes_.size() - open_.back();
        open_.pop_back();
        return true;
    }

    /// What nodes point into.
    std::string texts_;
    bool escapesUnits_ = false;
    std::vector<Node> nodes_;
    /// The arrays and objects that haven't ended.
    std::vector<std::size_t> open_;
};

[[noreturn]] void failParsing(std::string_view name, std::string_view text, std::size_t offset,
                              std::string_view what) {
    throw DecodeError(std::string(name) + ": " + std::string(what) + " at " +
                      lineAndColumn(text, offset));
}

} // namespace

struct Document::Parsed {
    std::string name;
    Tree tree;
};

Document::Document(std::string_view text, std::string name) : parsed_(std::make_unique<Parsed>()) {
    parsed_->name = std::move(name);
    if (text.size() > mostBytes) throw DecodeError(parsed_->name + ": larger than 64 MiB");
    // Some editors mark UTF-8 with it.
    constexpr std::string_view byteOrderMark = "\xEF\xBB\xBF";
    if (text.starts_with(byteOrderMark)) text.remove_prefix(byteOrderMark.size());
    if (const auto offset = text::firstInvalidUtf8(text); offset != text.size()) {
        failParsing(parsed_->name, text, offset, "not UTF-8");
    }
    if (const auto result = parsed_->tree.read(text); result.IsError()) {
        const auto* reason = result.Code() == rapidjson::kParseErrorTermination
                                 ? "More than 64 levels."
                                 : rapidjson::GetParseError_En(result.Code());
        failParsing(parsed_->name, text, result.Offset(),
                    std::string("not valid JSON (") + reason + ")");
    }
}

Document::~Document() = default;

Value Document::root() const {
    return {parsed_->tree.root(), *this};
}

std::string Document::placeOf(const Node* node) const {
    std::string place = parsed_->name;
    const auto* at = parsed_->tree.root();
    while (at != node) {
        const bool isObject = at->kind == Kind::object;
        const auto* child = at + 1;
        // The value that holds the node is the first that ends behind it.
        for (std::size_t i = 0;; ++i) {
            const auto* value = isObject ? child + 1 : child;
            if (node < value->next()) {
                place += isObject ? "." + std::string(child->text, child->size)
                                  : "[" + std::to_string(i) + "]";
                at = value;
                break;
            }
            child = value->next();
        }
    }
    return place;
}

const Node* Value::find(std::string_view key) const {
    if (node_->kind != Kind::object) fail("an object was expected");
    const auto* member = node_ + 1;
    for (auto left = node_->size; left > 0; --left) {
        const auto* value = member + 1;
        if (member->isText(key)) return value;
        member = value->next();
    }
    return nullptr;
}

std::optional<Value> Value::optional(std::string_view key) const {
    const auto* node = find(key);
    if (!node || node->kind == Kind::null) return std::nullopt;
    return Value(node, *document_);
}

Value Value::required(std::string_view key) const {
    const auto* node = find(key);
    if (!node) fail("\"" + std::string(key) + "\" is missing");
    if (node->kind == Kind::null) fail("\"" + std::string(key) + "\" is null");
    return {node, *document_};
}

std::vector<Value> Value::elements() const {
    if (node_->kind != Kind::array) fail("an array was expected");
    std::vector<Value> values;
    values.reserve(node_->size);
    const auto* element = node_ + 1;
    for (std::size_t i = 0; i < node_->size; ++i, element = element->next())
        values.push_back(Value(element, *document_));
    return values;
}

std::string_view Value::text() const {
    if (node_->kind != Kind::text) fail("a text was expected");
    // Such a text could never be written again.
    if (!node_->isUtf8) fail("the text has half a surrogate pair");
    return {node_->text, node_->size};
}

bool Value::flag() const {
    if (node_->kind != Kind::flag) fail("true or false was expected");
    return node_->flag;
}

double Value::number() const {
    if (node_->kind == Kind::integer) return static_cast<double>(node_->integer);
    if (node_->kind != Kind::number) fail("a number was expected");
    if (!std::isfinite(node_->number)) fail("the number is too large");
    return node_->number;
}

std::int64_t Value::integer(std::int64_t lowest, std::int64_t highest) const {
    std::int64_t value = 0;
    if (node_->kind == Kind::integer) {
        value = node_->integer;
    } else if (node_->kind != Kind::number) {
        fail("an integer was expected");
    } else if (std::trunc(node_->number) == node_->number && std::abs(node_->number) < 0x1p63) {
        value = static_cast<std::int64_t>(node_->number);
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
        const auto numbers = value.elements();
        if (numbers.size() != 2) value.fail("two numbers were expected");
        return std::pair(numbers[0].number(), numbers[1].number());
    };
    const auto pairs = elements();
    if (pairs.size() != 2) fail("[[x, y], [width, height]] was expected");
    const auto [x, y] = pair(pairs[0]);
    const auto [width, height] = pair(pairs[1]);
    return {x, y, width, height};
}

void Value::fail(std::string_view what) const {
    throw DecodeError(document_->placeOf(node_) + ": " + std::string(what));
}

} // namespace corvane::json
