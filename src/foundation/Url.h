#pragma once

#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

namespace corvane {

/// A URL in the strict grammar of RFC 3986. Immutable, so copies share their text; compared by it.
class Url {
public:
    Url(const Url&) = default;
    Url& operator=(const Url&) = default;

    /// Reads an absolute or relative URL. Empty text and illegal characters give nothing.
    static std::optional<Url> parse(std::string_view text);
    /// The file URL of an absolute path; the path's bytes are percent-encoded as needed. A trailing
    /// "/" marks a directory.
    static Url fromPath(std::string_view path);

    /// The text as it was given, or as it was built.
    const std::string& absoluteString() const { return parts_->text; }
    /// Empty where there is none. Lower case as written is kept.
    const std::string& scheme() const { return parts_->scheme; }
    bool hasScheme() const { return !scheme().empty(); }
    /// Nothing where the URL names no place for one; empty where that place is, as in "https://".
    const std::optional<std::string>& host() const { return parts_->host; }
    bool isFile() const;
    /// Percent-decoded, without a trailing "/" (but "/" itself).
    const std::string& path() const { return parts_->path; }
    /// Whether the URL's path ends in "/".
    bool hasDirectoryPath() const { return parts_->hasDirectoryPath; }

    std::string lastPathComponent() const;
    std::string pathExtension() const;
    /// The URL of the folder that holds this one; files only.
    Url deletingLastPathComponent() const;

    bool operator==(const Url& other) const {
        return parts_ == other.parts_ || parts_->text == other.parts_->text;
    }

private:
    struct Parts {
        std::string text;
        std::string scheme = {};
        std::optional<std::string> host = {};
        std::string path = {};
        bool hasDirectoryPath = false;
    };
    explicit Url(Parts parts) : parts_(std::make_shared<const Parts>(std::move(parts))) {}

    /// Never null, which a moved one would be.
    std::shared_ptr<const Parts> parts_;
};

/// Text for a place in a URL's query: every character that may not stand there, percent-encoded.
std::string percentEncodedQuery(std::string_view text);

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
