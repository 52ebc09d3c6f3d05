#pragma once

#include <optional>
#include <string>

namespace corvane {

/// What an application bundle says of itself; each is absent where the bundle doesn't say.
struct Bundle {
    std::optional<std::string> bundleIdentifier;
    /// "CFBundleDisplayName" and "CFBundleName" of localizedInfoDictionary.
    std::optional<std::string> displayName;
    std::optional<std::string> name;
};

/// NSBundle. Any thread.
class Bundles {
public:
    virtual ~Bundles() = default;
    /// initWithPath:; nothing where no bundle can be opened.
    virtual std::optional<Bundle> open(const std::string& path) const = 0;
    /// bundleIdentifier of mainBundle.
    virtual std::string mainBundleIdentifier() const = 0;
};

} // namespace corvane
