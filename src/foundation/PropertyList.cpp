#include "foundation/PropertyList.h"

#include "foundation/Text.h"

#include <bit>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <utility>
#include <vector>

namespace corvane {

namespace {

constexpr std::string_view header = "bplist00";
constexpr std::size_t trailerSize = 32;

/// The upper half of an object's first byte. The lower half is a size; 15 says that an integer
/// object with the size follows.
enum Marker : unsigned {
    simple = 0x0,
    integer = 0x1,
    real = 0x2,
    data = 0x4,
    ascii = 0x5,
    utf16 = 0x6,
    array = 0xa,
    dictionary = 0xd,
};
constexpr unsigned sizeFollows = 15;
constexpr unsigned falseValue = 8;
constexpr unsigned trueValue = 9;

// ---- reading

/// A list that can't be read; doesn't leave this file.
struct Unreadable {};

class Reader {
public:
    explicit Reader(std::string_view bytes)
        : bytes_(bytes), budget_(alwaysAllowed + mostGrowth * bytes.size()) {}

    PropertyList list() {
        if (!bytes_.starts_with(header) || bytes_.size() < header.size() + trailerSize)
            throw Unreadable();
        const auto trailer = bytes_.size() - trailerSize;
        offsetSize_ = static_cast<unsigned>(number(trailer + 6, 1));
        referenceSize_ = static_cast<unsigned>(number(trailer + 7, 1));
        count_ = number(trailer + 8, 8);
        const auto root = number(trailer + 16, 8);
        table_ = number(trailer + 24, 8);
        if (offsetSize_ < 1 || offsetSize_ > 8 || referenceSize_ < 1 || referenceSize_ > 8 ||
            table_ > trailer || count_ > (trailer - table_) / offsetSize_) {
            throw Unreadable();
        }
        return object(root, 0);
    }

private:
    static constexpr int mostDepth = 100;
    /// Objects, and bytes in them, that a list of any size may come to.
    static constexpr std::size_t alwaysAllowed = 250'000;
    /// Beyond those, that many times its own size.
    static constexpr std::size_t mostGrowth = 4;

    /// Big-endian; the caller has seen to it that it is within the bytes.
    std::uint64_t number(std::uint64_t offset, std::uint64_t size) const {
        std::uint64_t value = 0;
        for (const char byte : bytes_.substr(offset, size))
            value = value << 8 | static_cast<unsigned char>(byte);
        return value;
    }

    void spend(std::uint64_t cost) {
        if (cost > budget_) throw Unreadable();
        budget_ -= cost;
    }

    /// The bytes of an object from `offset` on; moves `offset` behind them.
    std::string_view take(std::uint64_t& offset, std::uint64_t size) {
        if (offset > table_ || size > table_ - offset) throw Unreadable();
        return bytes_.substr(std::exchange(offset, offset + size), size);
    }
    std::uint64_t takeNumber(std::uint64_t& offset, std::uint64_t size) {
        const auto at = offset;
        take(offset, size);
        return number(at, size);
    }

    std::uint64_t takeSize(std::uint64_t& offset, unsigned low) {
        if (low != sizeFollows) return low;
        const auto marker = takeNumber(offset, 1);
        if (marker >> 4 != integer || (marker & 15) > 3) throw Unreadable();
        return takeNumber(offset, std::uint64_t{1} << (marker & 15));
    }

    PropertyList object(std::uint64_t index, int depth) {
        if (index >= count_ || depth > mostDepth) throw Unreadable();
        spend(1);
        auto offset = number(table_ + index * offsetSize_, offsetSize_);
        const auto marker = takeNumber(offset, 1);
        const auto low = static_cast<unsigned>(marker & 15);
        switch (marker >> 4) {
        case simple:
            if (low == falseValue || low == trueValue) return {low == trueValue};
            return {};
        case integer:
            return {takeInteger(offset, low)};
        case real:
            return {takeReal(offset, low)};
        case data:
            return {takeData(offset, low)};
        case ascii:
        case utf16:
            return {takeText(offset, marker >> 4 == ascii, low)};
        case array:
            return takeArray(offset, low, depth);
        case dictionary:
            return takeDictionary(offset, low, depth);
        default:
            return {};
        }
    }

    std::int64_t takeInteger(std::uint64_t offset, unsigned sizeExponent) {
        // Of 16 bytes the lower half is what our numbers hold.
        if (sizeExponent == 4) take(offset, 8);
        if (sizeExponent > 4) throw Unreadable();
        return static_cast<std::int64_t>(
            takeNumber(offset, std::uint64_t{1} << (sizeExponent < 4 ? sizeExponent : 3)));
    }

    double takeReal(std::uint64_t offset, unsigned sizeExponent) {
        if (sizeExponent == 2)
            return std::bit_cast<float>(static_cast<std::uint32_t>(takeNumber(offset, 4)));
        if (sizeExponent != 3) throw Unreadable();
        return std::bit_cast<double>(takeNumber(offset, 8));
    }

    Bytes takeData(std::uint64_t offset, unsigned low) {
        const auto size = takeSize(offset, low);
        const auto bytes = take(offset, size);
        spend(size);
        return Bytes(bytes.begin(), bytes.end());
    }

    std::string takeText(std::uint64_t offset, bool isAscii, unsigned low) {
        const auto length = takeSize(offset, low);
        if (length > bytes_.size()) throw Unreadable();
        const auto bytes = take(offset, isAscii ? length : 2 * length);
        spend(bytes.size());
        if (isAscii) return text::replacingInvalidUtf8(bytes);
        std::u16string units;
        for (std::size_t i = 0; i < bytes.size(); i += 2) {
            units += static_cast<char16_t>(static_cast<unsigned char>(bytes[i]) << 8 |
                                           static_cast<unsigned char>(bytes[i + 1]));
        }
        return text::fromUtf16(units);
    }

    PropertyList takeArray(std::uint64_t offset, unsigned low, int depth) {
        const auto size = takeSize(offset, low);
        PropertyList::Array items;
        for (std::uint64_t i = 0; i < size; ++i)
            items.push_back(object(takeNumber(offset, referenceSize_), depth + 1));
        return {std::move(items)};
    }

    PropertyList takeDictionary(std::uint64_t offset, unsigned low, int depth) {
        const auto size = takeSize(offset, low);
        PropertyList::Dictionary items;
        if (size > bytes_.size()) throw Unreadable();
        auto values = offset + size * referenceSize_;
        for (std::uint64_t i = 0; i < size; ++i) {
            const auto key = object(takeNumber(offset, referenceSize_), depth + 1);
            const auto* name = key.as<std::string>();
            if (!name) throw Unreadable();
            items.try_emplace(*name, object(takeNumber(values, referenceSize_), depth + 1));
        }
        return {std::move(items)};
    }

    std::string_view bytes_;
    std::uint64_t budget_;
    unsigned offsetSize_ = 0;
    unsigned referenceSize_ = 0;
    std::uint64_t count_ = 0;
    std::uint64_t table_ = 0;
};

// ---- writing

void append(std::string& out, std::uint64_t number, unsigned size) {
    while (size-- > 0)
        out += static_cast<char>(number >> 8 * size);
}

unsigned bytesFor(std::uint64_t number) {
    return number <= 0xff ? 1 : number <= 0xffff ? 2 : number <= 0xffffffff ? 4 : 8;
}

void appendMarker(std::string& out, Marker marker, std::uint64_t size) {
    out += static_cast<char>(marker << 4 | (size < sizeFollows ? size : sizeFollows));
    if (size < sizeFollows) return;
    const auto bytes = bytesFor(size);
    out += static_cast<char>(integer << 4 | static_cast<unsigned>(std::countr_zero(bytes)));
    append(out, size, bytes);
}

/// Whether the format has a place for it.
bool isWritten(const std::string& key, const PropertyList& value) {
    return !value.as<PropertyList::Other>() && text::isValidUtf8(key);
}

class Writer {
public:
    std::string list(const PropertyList& root) {
        referenceSize_ = bytesFor(objectsIn(root));
        out_ = header;
        object(root);
        const auto table = out_.size();
        const auto offsetSize = bytesFor(table);
        for (const auto offset : offsets_)
            append(out_, offset, offsetSize);
        append(out_, offsetSize << 8 | referenceSize_, 8);
        append(out_, offsets_.size(), 8);
        append(out_, 0, 8);
        append(out_, table, 8);
        return std::move(out_);
    }

private:
    static std::uint64_t objectsIn(const PropertyList& list) {
        std::uint64_t count = 1;
        if (const auto* items = list.as<PropertyList::Array>()) {
            for (const auto& item : *items)
                count += objectsIn(item);
        } else if (const auto* entries = list.as<PropertyList::Dictionary>()) {
            for (const auto& [key, value] : *entries)
                count += isWritten(key, value) ? 1 + objectsIn(value) : 0;
        }
        return count;
    }

    std::uint64_t begin() {
        offsets_.push_back(out_.size());
        return offsets_.size() - 1;
    }

    /// The number of the object.
    std::uint64_t object(const PropertyList& list) {
        const auto index = begin();
        std::visit([&](const auto& value) { write(value); }, list.value);
        return index;
    }

    void write(const PropertyList::Other&) { appendMarker(out_, simple, 0); }
    void write(bool flag) { appendMarker(out_, simple, flag ? trueValue : falseValue); }
    void write(std::int64_t number) {
        // A shorter number is never negative.
        const auto bits = static_cast<std::uint64_t>(number);
        const auto bytes = bytesFor(bits);
        appendMarker(out_, integer, static_cast<unsigned>(std::countr_zero(bytes)));
        append(out_, bits, bytes);
    }
    void write(double number) {
        appendMarker(out_, real, 3);
        append(out_, std::bit_cast<std::uint64_t>(number), 8);
    }
    void write(const Bytes& bytes) {
        appendMarker(out_, data, bytes.size());
        out_.append(bytes.begin(), bytes.end());
    }
    void write(const std::string& text) {
        if (text::isAscii(text)) {
            appendMarker(out_, ascii, text.size());
            out_ += text;
            return;
        }
        const auto units = text::toUtf16(text);
        appendMarker(out_, utf16, units.size());
        for (const char16_t unit : units)
            append(out_, unit, 2);
    }
    void write(const PropertyList::Array& items) {
        appendMarker(out_, array, items.size());
        auto references = reserve(items.size());
        for (const auto& item : items)
            fill(references, object(item));
    }
    void write(const PropertyList::Dictionary& entries) {
        std::size_t size = 0;
        for (const auto& [key, value] : entries)
            size += isWritten(key, value) ? 1 : 0;
        appendMarker(out_, dictionary, size);
        auto keys = reserve(size);
        auto values = reserve(size);
        for (const auto& [key, value] : entries) {
            if (!isWritten(key, value)) continue;
            fill(keys, begin());
            write(key);
            fill(values, object(value));
        }
    }

    /// Room for references to objects that come behind; the place of the first.
    std::size_t reserve(std::size_t count) {
        const auto place = out_.size();
        out_.append(count * referenceSize_, '\0');
        return place;
    }
    void fill(std::size_t& place, std::uint64_t reference) {
        for (auto left = referenceSize_; left-- > 0;)
            out_[place++] = static_cast<char>(reference >> 8 * left);
    }

    std::string out_;
    std::vector<std::uint64_t> offsets_;
    unsigned referenceSize_ = 0;
};

} // namespace

Result<PropertyList> PropertyList::parse(std::string_view bytes) {
    try {
        return Reader(bytes).list();
    } catch (const Unreadable&) {
        return Error{"The data isn't a binary property list."};
    }
}

std::string PropertyList::toBinary() const {
    return Writer().list(*this);
}

} // namespace corvane
