#include "linux/LinuxBookmarks.h"

#include "linux/Catalogue.h"
#include "linux/FileDescriptor.h"

#include <cerrno>
#include <cstring>
#include <filesystem>
#include <vector>

#include <fcntl.h>
#include <sys/stat.h>
#include <sys/sysmacros.h>
#include <unistd.h>

namespace corvane {

namespace {

using Dictionary = PropertyList::Dictionary;

/// What tells one file from every other of its file system, also from a later one with the same
/// inode.
struct FileIdentity {
    std::int64_t inode = 0;
    /// Nanoseconds since 1970; 0 where the file system doesn't keep it.
    std::int64_t birth = 0;
    std::int64_t device = 0;

    /// The device's number may be another after a restart, so it counts only where there is no
    /// birth to compare.
    bool isSameFile(const FileIdentity& other) const {
        return inode == other.inode && birth == other.birth &&
               (birth != 0 || device == other.device);
    }
};

std::optional<FileIdentity> identityOf(int folder, const char* path, int flags) {
    struct statx status {};
    if (statx(folder, path, flags, STATX_INO | STATX_BTIME, &status) != 0) return std::nullopt;
    const bool hasBirth = (status.stx_mask & STATX_BTIME) != 0;
    return FileIdentity{
        static_cast<std::int64_t>(status.stx_ino),
        hasBirth ? status.stx_btime.tv_sec * 1'000'000'000 + status.stx_btime.tv_nsec : 0,
        static_cast<std::int64_t>(makedev(status.stx_dev_major, status.stx_dev_minor))};
}

std::optional<FileIdentity> identityOf(const std::string& path) {
    return identityOf(AT_FDCWD, path.c_str(), 0);
}

struct FileHandle {
    std::int64_t type = 0;
    Bytes bytes;
};

std::optional<FileHandle> handleOf(const std::string& path) {
    alignas(file_handle) unsigned char storage[sizeof(file_handle) + MAX_HANDLE_SZ];
    auto* handle = reinterpret_cast<file_handle*>(storage);
    handle->handle_bytes = MAX_HANDLE_SZ;
    int mount = 0;
    if (name_to_handle_at(AT_FDCWD, path.c_str(), handle, &mount, AT_SYMLINK_FOLLOW) != 0)
        return std::nullopt;
    return FileHandle{handle->handle_type,
                      Bytes(handle->f_handle, handle->f_handle + handle->handle_bytes)};
}

/// Under another name in the folder in which it was.
std::optional<std::string> findInFolder(const std::string& folder, const FileIdentity& wanted) {
    std::error_code error;
    for (std::filesystem::directory_iterator entry(folder, error), end; !error && entry != end;
         entry.increment(error)) {
        const auto path = entry->path().string();
        const auto found = identityOf(AT_FDCWD, path.c_str(), AT_SYMLINK_NOFOLLOW);
        if (found && found->isSameFile(wanted)) return path;
    }
    return std::nullopt;
}

/// Anywhere on the file system of its old folder, by its handle; needs a privilege that few
/// sessions have.
std::optional<std::string> findByHandle(std::string folder, const FileHandle& wanted,
                                        const FileIdentity& identity) {
    if (wanted.bytes.size() > MAX_HANDLE_SZ) return std::nullopt;
    while (folder.size() > 1 && !identityOf(folder))
        folder = path::parent(folder);
    const FileDescriptor mount(open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    alignas(file_handle) unsigned char storage[sizeof(file_handle) + MAX_HANDLE_SZ];
    auto* handle = reinterpret_cast<file_handle*>(storage);
    handle->handle_bytes = static_cast<unsigned>(wanted.bytes.size());
    handle->handle_type = static_cast<int>(wanted.type);
    std::memcpy(handle->f_handle, wanted.bytes.data(), wanted.bytes.size());
    const FileDescriptor file(open_by_handle_at(mount.get(), handle, O_PATH | O_CLOEXEC));
    if (file.get() < 0) return std::nullopt;
    std::vector<char> target(4096);
    const auto link = "/proc/self/fd/" + std::to_string(file.get());
    const auto length = readlink(link.c_str(), target.data(), target.size());
    if (length <= 0) return std::nullopt;
    const std::string found(target.data(), static_cast<std::size_t>(length));
    // A deleted file's link names a path at which nothing, or something else, stands.
    const auto there = identityOf(found);
    return there && there->isSameFile(identity) ? std::optional(found) : std::nullopt;
}

template <typename T>
std::optional<T> member(const Dictionary& dictionary, const char* key) {
    const auto found = dictionary.find(key);
    const auto* value = found == dictionary.end() ? nullptr : found->second.as<T>();
    return value ? std::optional(*value) : std::nullopt;
}

Bytes toBytes(std::string_view text) {
    return {text.begin(), text.end()};
}

} // namespace

Result<Bytes> LinuxBookmarks::create(const Url& url) {
    Dictionary bookmark;
    // As bytes, since a path needn't be text.
    bookmark["path"] = {toBytes(url.path())};
    if (const auto application = catalogue_.byBundlePath(url.path())) {
        bookmark["application"] = {application->bundleIdentifier};
    } else {
        const auto identity = identityOf(url.path());
        if (!identity) return Error{"“" + url.path() + "”: " + std::strerror(errno) + "."};
        bookmark["inode"] = {identity->inode};
        bookmark["birth"] = {identity->birth};
        bookmark["device"] = {identity->device};
        if (auto handle = handleOf(url.path())) {
            bookmark["handle type"] = {handle->type};
            bookmark["handle"] = {std::move(handle->bytes)};
        }
    }
    return toBytes(PropertyList{std::move(bookmark)}.toBinary());
}

Result<Url> LinuxBookmarks::resolve(const Bytes& bookmark) {
    const auto parsed =
        PropertyList::parse({reinterpret_cast<const char*>(bookmark.data()), bookmark.size()});
    const auto* dictionary = parsed ? parsed->as<Dictionary>() : nullptr;
    const auto pathBytes = dictionary ? member<Bytes>(*dictionary, "path") : std::nullopt;
    if (!pathBytes) return Error{"The bookmark isn't valid."};
    const std::string oldPath(pathBytes->begin(), pathBytes->end());

    if (const auto identifier = member<std::string>(*dictionary, "application")) {
        const auto there = catalogue_.byBundlePath(oldPath);
        if (there && there->bundleIdentifier == *identifier) return Url::fromPath(oldPath);
        const auto application = catalogue_.byBundleIdentifier(*identifier);
        if (application) return Url::fromPath(application->bundlePath);
        return Error{"The application “" + *identifier + "” isn't installed."};
    }

    const auto inode = member<std::int64_t>(*dictionary, "inode");
    const auto birth = member<std::int64_t>(*dictionary, "birth");
    const auto device = member<std::int64_t>(*dictionary, "device");
    if (!inode || !birth || !device || !oldPath.starts_with('/'))
        return Error{"The bookmark isn't valid."};
    const FileIdentity wanted{*inode, *birth, *device};

    if (const auto there = identityOf(oldPath)) {
        if (there->isSameFile(wanted)) return Url::fromPath(oldPath);
        // Looking further could find the backup copy that an editor made of the file when it saved.
        return Error{"“" + oldPath + "” is another file now."};
    }
    const auto folder = path::parent(oldPath);
    if (const auto found = findInFolder(folder, wanted)) return Url::fromPath(*found);
    const auto handle = member<Bytes>(*dictionary, "handle");
    if (handle) {
        const FileHandle wantedHandle{member<std::int64_t>(*dictionary, "handle type").value_or(0),
                                      *handle};
        if (const auto found = findByHandle(folder, wantedHandle, wanted))
            return Url::fromPath(*found);
    }
    return Error{"“" + oldPath + "” can't be found."};
}

} // namespace corvane
