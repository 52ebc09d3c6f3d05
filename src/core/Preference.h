#pragma once

#include "foundation/Published.h"
#include "platform/UserDefaults.h"

#include <optional>
#include <string>
#include <string_view>
#include <utility>

namespace corvane {

/// What is stored for a preference. A switch that is off at first reads what the defaults take for
/// a boolean; one that is on at first is switched off by a stored boolean alone.
inline bool storedPreference(const UserDefaults& defaults, std::string_view key, bool initial) {
    if (!initial) return defaults.boolForKey(key);
    const auto object = defaults.objectForKey(key);
    const auto* flag = object ? object->as<bool>() : nullptr;
    return flag ? *flag : true;
}
inline std::string storedPreference(const UserDefaults& defaults, std::string_view key,
                                    const std::string& initial) {
    return defaults.stringForKey(key).value_or(initial);
}

/// One preference: an observable field and its key in the user defaults. It reads what is stored
/// and writes it back, so after a first start every key is there. Assigning fires the change signal
/// and writes the key at once.
template <typename T>
class Preference {
public:
    Preference(ChangeSignal& signal, UserDefaults& defaults, std::string_view key, const T& initial)
        : field_(signal, storedPreference(defaults, key, initial)), defaults_(defaults), key_(key) {
        defaults_.setObject(key_, PropertyList{field_.get()});
    }

    const T& get() const { return field_.get(); }
    operator const T&() const { return field_.get(); }

    Preference& operator=(T value) {
        field_ = std::move(value);
        defaults_.setObject(key_, PropertyList{field_.get()});
        return *this;
    }
    Preference(const Preference&) = delete;
    Preference& operator=(const Preference&) = delete;

private:
    Published<T> field_;
    UserDefaults& defaults_;
    std::string_view key_;
};

} // namespace corvane
