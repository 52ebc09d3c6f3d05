#include "ui/RecordKey.h"

#include <charconv>

namespace corvane {

std::string RecordKey::toString() const {
    return repetition == 0 ? id.toString() : id.toString() + "/" + std::to_string(repetition);
}

std::optional<RecordKey> RecordKey::parse(std::string_view text) {
    const auto slash = text.find('/');
    const auto id = Uuid::parse(text.substr(0, slash));
    if (!id) return std::nullopt;
    RecordKey key{*id};
    if (slash == std::string_view::npos) return key;
    const auto* end = text.data() + text.size();
    const auto [stop, error] = std::from_chars(text.data() + slash + 1, end, key.repetition);
    return error == std::errc() && stop == end ? std::optional(key) : std::nullopt;
}

} // namespace corvane
