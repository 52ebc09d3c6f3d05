#include "foundation/PropertyListLimits.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <vector>

namespace corvane {

namespace {

constexpr int mostDepth = 100;
/// Objects, and bytes in them, that a list of any size may come to when read out.
constexpr std::uint64_t alwaysAllowed = 250'000;
/// Beyond those, that many times its own size.
constexpr std::uint64_t mostGrowth = 4;
constexpr std::size_t mostXmlContainers = 5'000;

/// Walks the objects of a binary list, each once.
class BinaryWalk {
public:
    explicit BinaryWalk(std::string_view bytes)
        : bytes_(bytes), mostCost_(alwaysAllowed + mostGrowth * bytes.size()) {}

    bool succeeds() {
        constexpr std::size_t headerSize = 8;
        constexpr std::size_t trailerSize = 32;
        if (bytes_.size() < headerSize + trailerSize) return false;
        const auto trailer = bytes_.size() - trailerSize;
        offsetSize_ = byteAt(trailer + 6);
        referenceSize_ = byteAt(trailer + 7);
        const auto count = number(trailer + 8, 8);
        const auto root = number(trailer + 16, 8);
        tableStart_ = number(trailer + 24, 8);
        if (offsetSize_ < 1 || offsetSize_ > 8 || referenceSize_ < 1 || referenceSize_ > 8 ||
            tableStart_ > trailer || count > (trailer - tableStart_) / offsetSize_) {
            return false;
        }
        known_.resize(static_cast<std::size_t>(count));
        return extentOf(root, 0).has_value();
    }

private:
    /// An object with all below it, read out.
    struct Extent {
        /// 0 as long as it isn't known.
        std::uint64_t cost = 0;
        int height = 0;
        bool isBeingVisited = false;
    };

    struct Object {
        std::uint64_t dataSize = 0;
        std::uint64_t firstReference = 0;
        std::uint64_t references = 0;
    };

    unsigned byteAt(std::uint64_t offset) const {
        return static_cast<unsigned char>(bytes_[static_cast<std::size_t>(offset)]);
    }

    /// Big-endian; the caller has looked that it is within the bytes.
    std::uint64_t number(std::uint64_t offset, unsigned size) const {
        std::uint64_t value = 0;
        for (unsigned i = 0; i < size; ++i)
            value = value << 8 | byteAt(offset + i);
        return value;
    }

    /// Nothing where it is too much.
    std::optional<Extent> extentOf(std::uint64_t index, int depth) {
        if (index >= known_.size()) return std::nullopt;
        const auto at = static_cast<std::size_t>(index);
        if (known_[at].isBeingVisited || depth + known_[at].height > mostDepth) return std::nullopt;
        if (known_[at].cost > 0) return known_[at];
        known_[at].isBeingVisited = true;
        const auto object = objectAt(number(tableStart_ + index * offsetSize_, offsetSize_));
        if (!object) return std::nullopt;
        Extent extent{.cost = 1 + object->dataSize};
        for (std::uint64_t i = 0; i < object->references; ++i) {
            const auto below = extentOf(
                number(object->firstReference + i * referenceSize_, referenceSize_), depth + 1);
            if (!below) return std::nullopt;
            extent.cost += below->cost;
            extent.height = std::max(extent.height, 1 + below->height);
            if (extent.cost > mostCost_) return std::nullopt;
        }
        return known_[at] = extent;
    }

    std::optional<Object> objectAt(std::uint64_t offset) const {
        if (offset >= tableStart_) return std::nullopt;
        const unsigned kind = byteAt(offset) >> 4;
        std::uint64_t length = byteAt(offset) & 15;
        ++offset;
        constexpr unsigned integer = 1, real = 2, date = 3, data = 4, ascii = 5, utf16 = 6;
        constexpr unsigned array = 10, orderedSet = 11, set = 12, dictionary = 13;
        if (length == 15 && kind >= data) {
            if (offset >= tableStart_ || byteAt(offset) >> 4 != integer) return std::nullopt;
            const unsigned size = 1u << (byteAt(offset) & 15);
            if (size > 8 || tableStart_ - offset - 1 < size) return std::nullopt;
            length = number(offset + 1, size);
            offset += 1 + size;
        }
        const auto left = tableStart_ - offset;
        switch (kind) {
        case integer:
        case real:
        case date:
            return Object{std::uint64_t{1} << length};
        case utf16:
            length = length > left ? length : 2 * length;
            [[fallthrough]];
        case data:
        case ascii:
            return length <= left ? std::optional(Object{length}) : std::nullopt;
        case dictionary:
            length = length > left ? length : 2 * length;
            [[fallthrough]];
        case array:
        case orderedSet:
        case set:
            if (length > left / referenceSize_) return std::nullopt;
            return Object{0, offset, length};
        default:
            return Object{};
        }
    }

    std::string_view bytes_;
    std::uint64_t mostCost_;
    unsigned offsetSize_ = 0;
    unsigned referenceSize_ = 0;
    std::uint64_t tableStart_ = 0;
    std::vector<Extent> known_;
};

/// Ends are left out of account, so that no trick with comments gets more past the count.
bool hasFewContainers(std::string_view xml) {
    std::size_t containers = 0;
    for (const std::string_view tag : {"<array", "<dict"}) {
        for (auto at = xml.find(tag); at != std::string_view::npos; at = xml.find(tag, at + 1))
            ++containers;
    }
    return containers <= mostXmlContainers;
}

} // namespace

bool isWithinPropertyListLimits(std::string_view bytes) {
    return bytes.starts_with("bplist") ? BinaryWalk(bytes).succeeds() : hasFewContainers(bytes);
}

} // namespace corvane
