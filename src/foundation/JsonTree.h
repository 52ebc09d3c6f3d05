#pragma once

#include "foundation/Text.h"

#include <charconv>
#include <cstdint>
#include <cstring>
#include <functional>
#include <limits>
#include <string>
#include <string_view>
#include <vector>

#include <rapidjson/reader.h>

/// What Json.cpp keeps of a text; of no use to others.
namespace corvane::json {

constexpr std::size_t mostLevels = 64;

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

/// Takes what the library finds in a text and keeps it as one list of nodes. Numbers are read here,
/// as the library gives garbage for a zero with an exponent ("0e-300") and no number at all for a
/// very small one ("1e-324").
///
/// Where the elements of the outermost array are taken one by one, only those are kept that haven't
/// been.
class Tree : public rapidjson::BaseReaderHandler<rapidjson::UTF8<>, Tree> {
public:
    using TakeElement = std::function<void(const Node*)>;

    rapidjson::ParseResult read(std::string_view text, TakeElement take);
    const Node* root() const { return nodes_.data(); }
    /// The index of the first element of the outermost array that is kept.
    std::size_t firstKept() const { return firstKept_; }

    // Called by the library's reader; false ends the reading.

    bool Null() {
        add(Node::Kind::null);
        return true;
    }
    bool Bool(bool value) {
        add(Node::Kind::flag).flag = value;
        return true;
    }
    bool RawNumber(const char* text, rapidjson::SizeType length, bool) {
        const char* const end = text + length;
        std::int64_t integer = 0;
        if (const auto read = std::from_chars(text, end, integer); isWhole(read, end)) {
            add(Node::Kind::integer).integer = integer;
            return true;
        }
        double number = 0;
        if (const auto read = std::from_chars(text, end, number); !isWhole(read, end)) {
            // Out of range: of the very large and the very small the wider type knows which.
            long double wide = std::numeric_limits<long double>::infinity();
            std::from_chars(text, end, wide);
            number = static_cast<double>(wide);
        }
        add(Node::Kind::number).number = number;
        return true;
    }
    bool String(const char* text, rapidjson::SizeType length, bool) {
        auto& node = add(Node::Kind::text);
        node.size = length;
        node.text = text;
        node.isUtf8 = !escapesUnits_ || text::isValidUtf8({text, length});
        return true;
    }
    bool Key(const char* text, rapidjson::SizeType length, bool copy) {
        return String(text, length, copy);
    }
    bool StartObject() { return open(Node::Kind::object); }
    bool StartArray() { return open(Node::Kind::array); }
    bool EndObject(rapidjson::SizeType members) { return close(members); }
    bool EndArray(rapidjson::SizeType elements) { return close(elements); }

private:
    rapidjson::ParseResult readTexts();
    static bool isWhole(std::from_chars_result read, const char* end) {
        return read.ec == std::errc() && read.ptr == end;
    }

    Node& add(Node::Kind kind) {
        auto& node = nodes_.emplace_back();
        node.kind = kind;
        return node;
    }
    bool open(Node::Kind kind) {
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
        if (take_ && open_.size() <= 1 && nodes_.front().kind == Node::Kind::array) takeElements();
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

} // namespace corvane::json
