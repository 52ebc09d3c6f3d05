#include "foundation/Json.h"

#include "foundation/JsonTree.h"
#include "foundation/Text.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <utility>

#include <rapidjson/error/en.h>

namespace corvane::json {

namespace {

using Kind = Node::Kind;

constexpr std::size_t mostBytes = 64 << 20;

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
