#include "foundation/Url.h"

#include "foundation/HexDigits.h"

#include <algorithm>

#include <uriparser/Uri.h>

namespace corvane {

namespace {

std::string_view rangeOf(const UriTextRangeA& range) {
    if (!range.first) return {};
    return {range.first, static_cast<std::size_t>(range.afterLast - range.first)};
}

std::string percentDecoded(std::string_view text) {
    std::string result;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const bool encoded = text[i] == '%' && i + 2 < text.size() &&
                             hexValue(text[i + 1]) != noHexDigit &&
                             hexValue(text[i + 2]) != noHexDigit;
        if (encoded) {
            result += static_cast<char>(hexValue(text[i + 1]) << 4 | hexValue(text[i + 2]));
            i += 2;
        } else {
            result += text[i];
        }
    }
    return result;
}

constexpr std::string_view unreserved =
    "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789-._~";

std::string percentEncoded(std::string_view text, std::string_view alsoPlain) {
    constexpr char digits[] = "0123456789ABCDEF";
    std::string result;
    for (const char c : text) {
        if (unreserved.find(c) != std::string_view::npos ||
            alsoPlain.find(c) != std::string_view::npos) {
            result += c;
        } else {
            const auto byte = static_cast<unsigned char>(c);
            result += {'%', digits[byte >> 4], digits[byte & 0x0F]};
        }
    }
    return result;
}

std::string percentEncodedPath(std::string_view path) {
    return percentEncoded(path, "!$&'()*+,=:@/");
}

std::string withoutTrailingSlash(std::string path) {
    while (path.size() > 1 && path.back() == '/')
        path.pop_back();
    return path;
}

/// The path's text as it stands in the URL, from the first segment on.
std::string encodedPath(const UriUriA& uri, bool hasAuthority) {
    std::string path = uri.absolutePath || (hasAuthority && uri.pathHead) ? "/" : "";
    for (const auto* segment = uri.pathHead; segment; segment = segment->next) {
        path += rangeOf(segment->text);
        if (segment->next) path += '/';
    }
    return path;
}

} // namespace

std::optional<Url> Url::parse(std::string_view text) {
    if (text.empty()) return std::nullopt;
    Parts parts{.text = std::string(text)};
    // The parser stops at a NUL byte, which no URL may hold.
    if (text.find('\0') != std::string_view::npos) return std::nullopt;
    UriUriA uri;
    if (uriParseSingleUriA(&uri, parts.text.c_str(), nullptr) != URI_SUCCESS) return std::nullopt;
    parts.scheme = rangeOf(uri.scheme);
    if (uri.hostText.first) parts.host = rangeOf(uri.hostText);
    const std::string raw = encodedPath(uri, uri.hostText.first != nullptr);
    uriFreeUriMembersA(&uri);
    parts.hasDirectoryPath = raw.ends_with('/');
    parts.path = withoutTrailingSlash(percentDecoded(raw));
    return Url(std::move(parts));
}

Url Url::fromPath(std::string_view path) {
    // With slashes before it, the first part of a relative path would be a host.
    return Url({.text = (path.starts_with('/') ? "file://" : "file:") + percentEncodedPath(path),
                .scheme = "file",
                .host = "",
                .path = withoutTrailingSlash(std::string(path)),
                .hasDirectoryPath = path.ends_with('/')});
}

bool Url::isFile() const {
    constexpr std::string_view file = "file";
    return std::equal(scheme().begin(), scheme().end(), file.begin(), file.end(),
                      [](char a, char b) { return (a | 0x20) == b; });
}

std::string Url::lastPathComponent() const {
    return path::lastComponent(path());
}

std::string Url::pathExtension() const {
    return path::extension(path());
}

Url Url::deletingLastPathComponent() const {
    const auto parent = path::parent(path());
    return fromPath(parent.ends_with('/') ? parent : parent + "/");
}

std::string percentEncodedQuery(std::string_view text) {
    return percentEncoded(text, "!$&'()*+,;=:@/?");
}

namespace path {

namespace {

std::string_view withoutSlashes(std::string_view path) {
    while (path.size() > 1 && path.ends_with('/'))
        path.remove_suffix(1);
    return path;
}

std::string_view lastPart(std::string_view path) {
    path = withoutSlashes(path);
    if (path == "/") return path;
    const auto slash = path.rfind('/');
    return slash == std::string_view::npos ? path : path.substr(slash + 1);
}

std::string_view extensionOf(std::string_view name) {
    const auto dot = name.rfind('.');
    if (dot == std::string_view::npos || name.find_first_not_of('.') > dot) return {};
    const auto result = name.substr(dot + 1);
    return result.find(' ') == std::string_view::npos ? result : std::string_view();
}

} // namespace

std::string lastComponent(std::string_view path) {
    return std::string(lastPart(path));
}

std::string extension(std::string_view path) {
    return std::string(extensionOf(lastPart(path)));
}

std::string stem(std::string_view path) {
    auto name = lastPart(path);
    const auto length = extensionOf(name).size();
    if (length > 0) name.remove_suffix(length + 1);
    return std::string(name);
}

std::string parent(std::string_view path) {
    path = withoutSlashes(path);
    const auto slash = path.rfind('/');
    if (slash == std::string_view::npos) return {};
    return std::string(slash == 0 ? "/" : withoutSlashes(path.substr(0, slash)));
}

std::string join(std::string_view folder, std::string_view component) {
    std::string result(folder);
    if (!result.ends_with('/')) result += '/';
    while (component.starts_with('/'))
        component.remove_prefix(1);
    return result.append(component);
}

} // namespace path

} // namespace corvane
