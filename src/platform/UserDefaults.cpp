#include "platform/UserDefaults.h"

#include "foundation/Text.h"

namespace corvane {

bool UserDefaults::boolForKey(std::string_view key) const {
    const auto object = objectForKey(key);
    if (!object) return false;
    if (const auto* flag = object->as<bool>()) return *flag;
    if (const auto* number = object->as<std::int64_t>()) return *number != 0;
    if (const auto* number = object->as<double>()) return *number != 0;
    const auto* text = object->as<std::string>();
    return text && (text::equalsIgnoringCase(*text, "YES") ||
                    text::equalsIgnoringCase(*text, "true") || *text == "1");
}

std::optional<std::string> UserDefaults::stringForKey(std::string_view key) const {
    const auto object = objectForKey(key);
    if (!object) return std::nullopt;
    if (const auto* text = object->as<std::string>()) return *text;
    if (const auto* flag = object->as<bool>()) return *flag ? "1" : "0";
    if (const auto* number = object->as<std::int64_t>()) return std::to_string(*number);
    if (const auto* number = object->as<double>()) return text::number(*number);
    return std::nullopt;
}

} // namespace corvane
