#pragma once

#include "foundation/Published.h"
#include "platform/UserDefaults.h"

#include <optional>
#include <string>
#include <string_view>
#include <utility>

namespace corvane {

/// One preference: an observable field and its key in the user defaults. Assigning fires the change
/// signal and writes the key at once.
template <typename T>
class Preference {
public:
    Preference(ChangeSignal& signal, UserDefaults& defaults, std::string_view key, T initial)
        : field_(signal, std::move(initial)), defaults_(defaults), key_(key) {}

    const T& get() const { return field_.get(); }
    operator const T&() const { return field_.get(); }

    Preference& operator=(T value) {
        field_ = std::move(value);
        defaults_.setObject(key_, PropertyList{field_.get()});
        return *this;
    }
    Preference(const Preference&) = delete;
    Preference& operator=(const Preference&) = delete;

    std::string_view key() const { return key_; }

private:
    Published<T> field_;
    UserDefaults& defaults_;
    std::string_view key_;
};

} // namespace corvane
