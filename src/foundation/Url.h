#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace corvane {

/// A URL in the strict grammar of RFC 3986. Immutable; compared by its text.
class Url {
public:
    /// Reads an absolute or relative URL. Empty text and illegal characters give nothing.
    static std::optional<Url> parse(std::string_view text);
    /// The file URL of an absolute path; the path's bytes are percent-encoded as needed. A trailing
    /// "/" marks a directory.
    static Url fromPath(std::string_view path);

    /// The text as it was given, or as it was built.
    const std::string& absoluteString() const { return text_; }
    /// Empty where there is none. Lower case as written is kept.
    const std::string& scheme() const { return scheme_; }
    bool hasScheme() const { return !scheme_.empty(); }
    bool isFile() const;
    /// Percent-decoded, without a trailing "/" (but "/" itself).
    const std::string& path() const { return path_; }
    /// Whether the URL's path ends in "/".
    bool hasDirectoryPath() const { return hasDirectoryPath_; }

    std::string lastPathComponent() const;
    std::string pathExtension() const;
    /// The URL of the folder that holds this one; files only.
    Url deletingLastPathComponent() const;
    Url appendingPathComponent(std::string_view component) const;

    bool operator==(const Url& other) const { return text_ == other.text_; }

private:
    Url() = default;

    std::string text_;
    std::string scheme_;
    std::string path_;
    bool hasDirectoryPath_ = false;
};

/// Operations on the text of a path, with no look at the disk.
namespace path {

/// What stands behind the last "/", a trailing "/" aside.
std::string lastComponent(std::string_view path);
/// What stands behind the last "." of the last component; empty where there is none, where the name
/// starts with its only ".", and where the extension has a blank.
std::string extension(std::string_view path);
/// The last component without its extension.
std::string stem(std::string_view path);
std::string parent(std::string_view path);
std::string join(std::string_view folder, std::string_view component);

} // namespace path

} // namespace corvane
