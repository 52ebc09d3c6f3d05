#pragma once

#include "foundation/Uuid.h"

#include <compare>
#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace corvane {

/// Which record of a list is meant. A file may hold several of one identifier: the first of them
/// is 0.
struct RecordKey {
    Uuid id = {};
    int repetition = 0;

    auto operator<=>(const RecordKey&) const = default;

    /// The identifier, with "/1" behind it for the second, and so on.
    std::string toString() const;
    /// Nothing for any other text.
    static std::optional<RecordKey> parse(std::string_view text);
};

/// Where the record stands now; nothing where it has gone.
template <typename Record>
std::optional<std::size_t> placeOf(const RecordKey& key, const std::vector<Record>& list) {
    int repetition = 0;
    for (std::size_t i = 0; i < list.size(); ++i) {
        if (list[i].id == key.id && repetition++ == key.repetition) return i;
    }
    return std::nullopt;
}

} // namespace corvane
