#pragma once

#include "foundation/Rect.h"
#include "foundation/Uuid.h"

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

/// A strict JSON reader and writer. The reader hands out values that know where they stand, so that
/// an error names its place; the writer goes straight from fields to text.
namespace corvane::json {

/// What is wrong with a text, and where: `workspaces[2].resources[0].type: "File" is not a resource
/// type`.
class DecodeError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// A field can't be written, since its text isn't UTF-8 or its number isn't finite.
class EncodeError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

struct Node;

class Document;
class Value;
using TakeValue = std::function<void(const Value&)>;

/// One value of a Document, valid while the Document lives. Each reading throws DecodeError where
/// the value has another form.
class Value {
public:
    /// The member of that name; missing or null is an error. The first of several counts.
    Value required(std::string_view key) const;
    /// The member of that name, or nothing where it is missing or null.
    std::optional<Value> optional(std::string_view key) const;

    /// The elements of an array, in order.
    std::vector<Value> elements() const;
    /// What `decode` makes of each of them; it gets them one by one.
    template <typename Decode>
    auto listOf(Decode decode) const {
        std::vector<decltype(decode(*this))> list;
        list.reserve(elementCount());
        auto element = firstElement();
        for (auto left = elementCount(); left > 0; --left, element = element.next())
            list.push_back(decode(element));
        return list;
    }

    std::string_view text() const;
    /// `true` or `false`; a number isn't a flag.
    bool flag() const;
    double number() const;
    /// A number without a fraction in the range of the type.
    std::int32_t int32() const;
    std::int64_t int64() const;
    Uuid uuid() const;
    /// The bytes of a base64 text.
    std::vector<std::uint8_t> base64() const;
    /// Nested arrays: [[x, y], [width, height]].
    Rect rect() const;

    /// Throws a DecodeError that names this value's place.
    [[noreturn]] void fail(std::string_view what) const;

private:
    friend class Document;
    friend void forEachElement(std::string_view text, std::string name, const TakeValue& take);
    Value(const Node* node, const Document& document) : node_(node), document_(&document) {}
    /// The member that isn't null, or nothing.
    const Node* find(std::string_view key) const;
    std::size_t elementCount() const;
    /// Also of an array that has none, but then there is no value.
    Value firstElement() const;
    /// The element behind this one.
    Value next() const;
    std::int64_t integer(std::int64_t lowest, std::int64_t highest) const;

    const Node* node_;
    const Document* document_;
};

/// A parsed text.
class Document {
public:
    /// Parses UTF-8 JSON, which it checks to be such, with or without a byte order mark; throws
    /// DecodeError with line and column. A text of more than 64 MiB or 64 levels isn't read, as it
    /// would take a multiple of its size. `name` is what places start with.
    Document(std::string_view text, std::string name) : Document(text, std::move(name), nullptr) {}
    ~Document();
    Document(const Document&) = delete;
    Document& operator=(const Document&) = delete;

    Value root() const;

private:
    friend class Value;
    friend void forEachElement(std::string_view text, std::string name, const TakeValue& take);
    Document(std::string_view text, std::string name, const TakeValue& take);
    /// The name, and the keys and indexes that lead to a node.
    std::string placeOf(const Node* node) const;

    struct Parsed;
    std::unique_ptr<Parsed> parsed_;
};

/// Parses a text that is one array, as a Document does, and hands out its elements in order, each
/// valid during that call only: it takes the memory of the largest instead of that of all. What
/// `take` throws ends the parsing, so that elements before an error may have been handed out.
void forEachElement(std::string_view text, std::string name, const TakeValue& take);

/// Writes compact JSON. The caller keeps the order of calls that makes a well-formed text.
class Writer {
public:
    /// `expectedSize` in bytes saves growing.
    explicit Writer(std::size_t expectedSize = 0);

    void startObject();
    void endObject();
    void startArray();
    void endArray();
    /// A key of the program's own; must not need escapes.
    void key(std::string_view key);
    void text(std::string_view value);
    void flag(bool value);
    void integer(std::int64_t value);
    void number(double value);
    void uuid(const Uuid& value);
    void rect(const Rect& value);

    /// The text so far; leaves the writer empty.
    std::string take();

private:
    /// Sees to room for that many bytes more.
    void makeRoom(std::size_t size) {
        if (buffer_.size() - size_ < size) grow(size);
    }
    void grow(std::size_t size);
    /// Writes a comma, if the value needs one before it, and answers where the value goes, with
    /// room for `size` bytes; it counts once it has ended.
    char* startValue(std::size_t size);
    void endAt(const char* end);
    void open(char bracket);
    void close(char bracket);

    /// The text, and behind its size what is free.
    std::string buffer_;
    std::size_t size_ = 0;
    bool needsComma_ = false;
};

/// The same JSON text with line breaks and indentation.
std::string prettyPrinted(const std::string& compact);

} // namespace corvane::json
