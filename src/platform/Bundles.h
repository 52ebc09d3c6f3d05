#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace corvane {

/// What the system knows this program by: its desktop entry, its preferences, its bundle.
inline constexpr const char* programIdentifier = "app.corvane.Corvane";
/// What people know it by, and the folder of its data is called.
inline constexpr const char* programName = "Corvane";

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
    /// The path of the installed bundle for which a file only stands: on a freedesktop machine the
    /// one that a desktop entry describes. Nothing for any other file.
    virtual std::optional<std::string> bundlePathOfLauncher(const std::string& file) const = 0;
    /// bundleIdentifier of mainBundle.
    virtual std::string mainBundleIdentifier() const = 0;
    /// infoDictionary of mainBundle: "CFBundleShortVersionString", "CFBundleVersion".
    virtual std::optional<std::string> mainBundleInfo(std::string_view key) const = 0;
    /// NSProcessInfo operatingSystemVersionString: what the system calls itself, for people.
    virtual std::string operatingSystemVersion() const = 0;
};

} // namespace corvane
