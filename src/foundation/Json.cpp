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
///
/// Where the elements of the outermost array are taken one by one, only those are kept that haven't
/// been.
class Tree : public rapidjson::BaseReaderHandler<rapidjson::UTF8<>, Tree> {
public:
    using TakeElement = std::function<void(const Node*)>;

    rapidjson::ParseResult read(std::string_view text, TakeElement take) {
        texts_ = text;
        take_ = std::move(take);
        constexpr std::size_t bytesOfNode = 10;
        if (!take_) nodes_.reserve(text.size() / bytesOfNode);
        escapesUnits_ = text.find("\\u") != text.npos;
        auto result = readTexts();
        if (result.Code() == rapidjson::kParseErrorNumberTooBig) {
            // The library takes none, though it may stand where nobody looks.
            texts_ = text;
            shortenHugeNumbers(texts_);
            nodes_.clear();
            open_.clear();
            firstKept_ = 0;
            result = readTexts();
        }
        return result;
    }
    const Node* root() const { return nodes_.data(); }
    /// The index of the first element of the outermost array that is kept.
    std::size_t firstKept() const { return firstKept_; }

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
        constexpr unsigned flags =
            rapidjson::kParseInsituFlag | rapidjson::kParseNumbersAsStringsFlag;
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
        // The library calls itself for each level, and no depth may exhaust the stack.
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
        if (take_ && open_.size() <= 1 && nodes_.front().kind == Kind::array) takeElements();
        return true;
    }
    /// All that are kept, each of them complete. A text that is read again has been taken in part.
    void takeElements() {
        auto at = firstKept_;
        const auto* const end = root() + nodes_.size();
        for (const auto* element = root() + 1; element < end; element = element->next(), ++at) {
            if (at < taken_) continue;
            take_(element);
            taken_ = at + 1;
        }
        firstKept_ = at;
        nodes_.resize(1);
    }

    /// What nodes point into.
    std::string texts_;
    bool escapesUnits_ = false;
    std::vector<Node> nodes_;
    /// The arrays and objects that haven't ended.
    std::vector<std::size_t> open_;
    TakeElement take_;
    std::size_t firstKept_ = 0;
    /// How many elements, in all readings of the text.
    std::size_t taken_ = 0;
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

Document::Document(std::string_view text, std::string name, const TakeValue& take)
    : parsed_(std::make_unique<Parsed>()) {
    parsed_->name = std::move(name);
    if (text.size() > mostBytes) throw DecodeError(parsed_->name + ": larger than 64 MiB");
    // Some editors mark UTF-8 with it.
    constexpr std::string_view byteOrderMark = "\xEF\xBB\xBF";
    if (text.starts_with(byteOrderMark)) text.remove_prefix(byteOrderMark.size());
    if (const auto offset = text::firstInvalidUtf8(text); offset != text.size()) {
        failParsing(parsed_->name, text, offset, "not UTF-8");
    }
    Tree::TakeElement takeElement;
    if (take) takeElement = [&](const Node* element) { take(Value(element, *this)); };
    if (const auto result = parsed_->tree.read(text, takeElement); result.IsError()) {
        // Of a bracket too many the library tells the place behind it.
        const bool isTooDeep = result.Code() == rapidjson::kParseErrorTermination;
        const auto* reason =
            isTooDeep ? "More than 64 levels." : rapidjson::GetParseError_En(result.Code());
        failParsing(parsed_->name, text, result.Offset() - (isTooDeep ? 1 : 0),
                    std::string("not valid JSON (") + reason + ")");
    }
}

Document::~Document() = default;

void forEachElement(std::string_view text, std::string name, const TakeValue& take) {
    const Document document(text, std::move(name), take);
    // Of another value nothing was handed out.
    static_cast<void>(document.root().elementCount());
}

Value Document::root() const {
    return {parsed_->tree.root(), *this};
}

std::string Document::placeOf(const Node* node) const {
    std::string place = parsed_->name;
    const auto* at = parsed_->tree.root();
    auto first = parsed_->tree.firstKept();
    while (at != node) {
        const bool isObject = at->kind == Kind::object;
        const auto* child = at + 1;
        // The value that holds the node is the first that ends behind it.
        for (auto i = std::exchange(first, 0);; ++i) {
            const auto* value = isObject ? child + 1 : child;
            if (node < value->next()) {
                if (isObject) {
                    place.append(".").append(child->text, child->size);
                } else {
                    place.append("[").append(std::to_string(i)).append("]");
                }
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
    return listOf([](const Value& element) { return element; });
}

std::size_t Value::elementCount() const {
    if (node_->kind != Kind::array) fail("an array was expected");
    return node_->size;
}

Value Value::firstElement() const {
    return {node_ + 1, *document_};
}

Value Value::next() const {
    return {node_->next(), *document_};
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
    const auto pair = [](const Value& array, const char* expected) {
        if (array.elementCount() != 2) array.fail(expected);
        const auto first = array.firstElement();
        return std::pair(first, first.next());
    };
    const auto [origin, extent] = pair(*this, "[[x, y], [width, height]] was expected");
    const auto [x, y] = pair(origin, "two numbers were expected");
    const auto [width, height] = pair(extent, "two numbers were expected");
    return {x.number(), y.number(), width.number(), height.number()};
}

void Value::fail(std::string_view what) const {
    throw DecodeError(document_->placeOf(node_) + ": " + std::string(what));
}

} // namespace corvane::json
