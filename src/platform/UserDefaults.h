#pragma once

#include "foundation/PropertyList.h"

#include <functional>
#include <optional>
#include <string>
#include <string_view>

namespace corvane {

/// NSUserDefaults standardUserDefaults: the keys of the application's own domain. Main thread. A
/// write is on disk soon, at the latest at the end; one that can't be stored is kept in memory for
/// the rest of the process.
class UserDefaults {
public:
    virtual ~UserDefaults() = default;

    /// Nothing where the key is absent.
    virtual std::optional<PropertyList> objectForKey(std::string_view key) const = 0;
    virtual void setObject(std::string_view key, PropertyList value) = 0;
    virtual void removeObject(std::string_view key) = 0;
    /// removePersistentDomainForName: of the main bundle's identifier.
    virtual void removePersistentDomain() = 0;
    /// Values had been stored before this start, and can't be read.
    virtual bool isUnreadable() const = 0;

    /// Called where a file of values was kept aside: one that can't be read, because of that, or
    /// with an empty text one that another program had changed.
    std::function<void(const std::string& kept, const std::string& unreadableBecause)> onKeptAside;

    /// boolForKey: a boolean, a number other than 0, or one of the texts that mean yes; false
    /// otherwise.
    bool boolForKey(std::string_view key) const;
    /// stringForKey: a text, a number as text, or a boolean as "1" or "0".
    std::optional<std::string> stringForKey(std::string_view key) const;
};

} // namespace corvane
