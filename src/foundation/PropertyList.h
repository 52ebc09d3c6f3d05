#pragma once

#include "foundation/Result.h"

#include <cstdint>
#include <map>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

namespace corvane {

using Bytes = std::vector<std::uint8_t>;

/// A value of a property list. Dates, identifiers and null of a foreign list are read as `Other`,
/// which a dictionary leaves out when written, as it does a key that isn't UTF-8.
struct PropertyList {
    struct Other {
        bool operator==(const Other&) const = default;
    };
    using Array = std::vector<PropertyList>;
    using Dictionary = std::map<std::string, PropertyList>;

    std::variant<Other, bool, std::int64_t, double, std::string, Bytes, Array, Dictionary> value;

    template <typename T>
    const T* as() const {
        return std::get_if<T>(&value);
    }
    bool operator==(const PropertyList&) const = default;

    /// Reads the binary format, version "00": objects of one marker byte each, then a table of
    /// their offsets, then a trailer that says where the table is. A few bytes can name the same
    /// object again and again or nest without an end: a list that would come to a multiple of its
    /// size when read out, or that is deeper than a hundred levels, is an error.
    static Result<PropertyList> parse(std::string_view bytes);
    /// The same format. Text that isn't UTF-8 is written with U+FFFD in place of what is wrong.
    std::string toBinary() const;
};

} // namespace corvane
