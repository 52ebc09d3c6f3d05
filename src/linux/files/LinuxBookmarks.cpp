#include "linux/files/LinuxBookmarks.h"

#include "linux/installed/InstalledApplications.h"
#include "linux/system/FileDescriptor.h"

#include <algorithm>
#include <cerrno>
#include <climits>
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

/// Of the kernel; names a file for as long as it exists, also where inodes are used again.
struct FileHandle {
    std::int64_t type = 0;
    Bytes bytes;

    bool operator==(const FileHandle&) const = default;
};

/// What tells one file from every other of its file system.
struct FileIdentity {
    std::int64_t inode = 0;
    /// Nanoseconds since 1970; 0 where the file system doesn't keep it.
    std::int64_t birth = 0;
    std::int64_t device = 0;
    std::optional<FileHandle> handle = {};

    /// The device's number may be another after a restart, so it counts only where there is no
    /// birth to compare.
    bool isSameInode(const FileIdentity& other) const {
        return inode == other.inode && birth == other.birth &&
               (birth != 0 || device == other.device);
    }
    /// A bare inode may belong to a later file by now.
    bool isCertain() const { return birth != 0 || handle; }
};

enum class Links { follow, stay };

std::optional<FileHandle> handleOf(const std::string& path, Links links) {
    alignas(file_handle) unsigned char storage[sizeof(file_handle) + MAX_HANDLE_SZ];
    auto* handle = reinterpret_cast<file_handle*>(storage);
    handle->handle_bytes = MAX_HANDLE_SZ;
    int mount = 0;
    const int flags = links == Links::follow ? AT_SYMLINK_FOLLOW : 0;
    if (name_to_handle_at(AT_FDCWD, path.c_str(), handle, &mount, flags) != 0) return std::nullopt;
    return FileHandle{handle->handle_type,
                      Bytes(handle->f_handle, handle->f_handle + handle->handle_bytes)};
}

/// All but the handle.
std::optional<FileIdentity> inodeOf(const std::string& path, Links links) {
    struct statx status{};
    const int flags = AT_NO_AUTOMOUNT | (links == Links::follow ? 0 : AT_SYMLINK_NOFOLLOW);
    if (statx(AT_FDCWD, path.c_str(), flags, STATX_INO | STATX_BTIME, &status) != 0)
        return std::nullopt;
    const bool hasBirth = (status.stx_mask & STATX_BTIME) != 0;
    return FileIdentity{
        static_cast<std::int64_t>(status.stx_ino),
        hasBirth ? status.stx_btime.tv_sec * 1'000'000'000 + status.stx_btime.tv_nsec : 0,
        static_cast<std::int64_t>(makedev(status.stx_dev_major, status.stx_dev_minor))};
}

bool standsAt(const std::string& path, const FileIdentity& wanted, Links links) {
    const auto found = inodeOf(path, links);
    if (!found || !found->isSameInode(wanted)) return false;
    const auto handle = wanted.handle ? handleOf(path, links) : std::nullopt;
    return !handle || handle == wanted.handle;
}

/// Looks through folders, at no more entries than it may.
class FolderSearch {
public:
    FolderSearch(const FileIdentity& wanted, int mostEntries)
        : wanted_(wanted), entriesLeft_(mostEntries) {}

    std::optional<std::string> in(const std::string& folder) {
        std::optional<std::string> found;
        eachEntry(folder, [&](const std::filesystem::directory_entry& entry) {
            if (standsAt(entry.path().string(), wanted_, Links::stay))
                found = entry.path().string();
            return !found;
        });
        return found;
    }

    /// In the folders directly below, but for those of another file system and for one of them.
    std::optional<std::string> belowOf(const std::string& folder, const std::string& seen = {}) {
        const auto here = inodeOf(folder, Links::stay);
        std::optional<std::string> found;
        eachEntry(folder, [&](const std::filesystem::directory_entry& entry) {
            std::error_code error;
            const auto type = entry.symlink_status(error).type();
            if (type != std::filesystem::file_type::directory || entry.path() == seen) return true;
            const auto below = inodeOf(entry.path().string(), Links::stay);
            if (here && below && here->device == below->device) found = in(entry.path().string());
            return !found;
        });
        return found;
    }

private:
    template <typename Visit>
    void eachEntry(const std::string& folder, Visit visit) {
        std::error_code error;
        for (std::filesystem::directory_iterator entry(folder, error), end; !error && entry != end;
             entry.increment(error)) {
            if (entriesLeft_-- <= 0 || !visit(*entry)) return;
        }
    }

    const FileIdentity& wanted_;
    int entriesLeft_;
};

/// In the folders next to the one in which it was: below, above and beside.
std::optional<std::string> findNearby(const std::string& folder, FolderSearch& search) {
    const auto parent = path::parent(folder);
    if (auto found = search.belowOf(folder)) return found;
    if (parent.size() <= 1) return std::nullopt;
    if (auto found = search.in(parent)) return found;
    return search.belowOf(parent, folder);
}

/// Anywhere on the file system of its old folder, by its handle; needs a privilege that few
/// sessions have.
std::optional<std::string> findByHandle(std::string folder, const FileIdentity& wanted) {
    if (!wanted.handle || wanted.handle->bytes.size() > MAX_HANDLE_SZ) return std::nullopt;
    while (folder.size() > 1 && !inodeOf(folder, Links::follow))
        folder = path::parent(folder);
    const FileDescriptor mount(open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    alignas(file_handle) unsigned char storage[sizeof(file_handle) + MAX_HANDLE_SZ];
    auto* handle = reinterpret_cast<file_handle*>(storage);
    handle->handle_bytes = static_cast<unsigned>(wanted.handle->bytes.size());
    handle->handle_type = static_cast<int>(wanted.handle->type);
    std::copy(wanted.handle->bytes.begin(), wanted.handle->bytes.end(), handle->f_handle);
    const FileDescriptor file(open_by_handle_at(mount.get(), handle, O_PATH | O_CLOEXEC));
    if (!file) return std::nullopt;
    std::vector<char> target(PATH_MAX);
    const auto link = "/proc/self/fd/" + std::to_string(file.get());
    const auto length = readlink(link.c_str(), target.data(), target.size());
    if (length <= 0) return std::nullopt;
    std::string found(target.data(), static_cast<std::size_t>(length));
    // A deleted file's link names a path at which nothing, or something else, stands.
    return standsAt(found, wanted, Links::stay) ? std::optional(std::move(found)) : std::nullopt;
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

std::optional<FileIdentity> identityIn(const Dictionary& bookmark) {
    const auto inode = member<std::int64_t>(bookmark, "inode");
    const auto birth = member<std::int64_t>(bookmark, "birth");
    const auto device = member<std::int64_t>(bookmark, "device");
    if (!inode || !birth || !device) return std::nullopt;
    FileIdentity identity{*inode, *birth, *device};
    const auto type = member<std::int64_t>(bookmark, "handle type");
    const auto handle = member<Bytes>(bookmark, "handle");
    if (type && handle) identity.handle = FileHandle{*type, *handle};
    return identity;
}

/// Whether an editor keeps the old file under this name when it saves a new one in its place:
/// "plan.md~", ".plan.md.swp", "#plan.md#", "plan.bak".
bool isBackupName(std::string_view name, const std::string& oldPath) {
    const auto marks = name.find_first_not_of(".#~");
    name.remove_prefix(marks == name.npos ? 0 : marks);
    const auto stem = path::stem(oldPath);
    return name.starts_with(path::lastComponent(oldPath)) || name == stem + "~" ||
           name == stem + ".bak" || name == stem + ".old" || name == stem + ".orig";
}

Result<Url> resolveFile(const std::string& oldPath, const FileIdentity& wanted) {
    // Some milliseconds' worth, with a file on the network aside.
    constexpr int mostEntries = 5'000;
    if (standsAt(oldPath, wanted, Links::follow)) return Url::fromPath(oldPath);
    const bool isReplaced = inodeOf(oldPath, Links::follow).has_value();
    if (wanted.isCertain()) {
        const auto folder = path::parent(oldPath);
        FolderSearch search(wanted, mostEntries);
        auto found = search.in(folder);
        if (!found) found = findByHandle(folder, wanted);
        if (!found && !isReplaced) found = findNearby(folder, search);
        // What an editor put aside isn't what the user works on.
        const bool isBackup =
            found && isReplaced && isBackupName(path::lastComponent(*found), oldPath);
        if (found && !isBackup) return Url::fromPath(*found);
    }
    return Error{"“" + oldPath + "” " + (isReplaced ? "is another file now." : "can't be found.")};
}

} // namespace

Result<Bytes> LinuxBookmarks::create(const Url& url) {
    if (!url.isFile()) return Error{"“" + url.absoluteString() + "” isn't a file."};
    Dictionary bookmark;
    // As bytes, since a path needn't be text.
    bookmark["path"] = {toBytes(url.path())};
    if (const auto application = installed_.byBundlePath(url.path())) {
        bookmark["application"] = {application->bundleIdentifier};
    } else {
        const auto identity = inodeOf(url.path(), Links::follow);
        if (!identity) return Error{"“" + url.path() + "”: " + std::strerror(errno) + "."};
        bookmark["inode"] = {identity->inode};
        bookmark["birth"] = {identity->birth};
        bookmark["device"] = {identity->device};
        if (auto handle = handleOf(url.path(), Links::follow)) {
            bookmark["handle type"] = {handle->type};
            bookmark["handle"] = {std::move(handle->bytes)};
        }
    }
    return toBytes(PropertyList{std::move(bookmark)}.toBinary());
}

Result<Url> LinuxBookmarks::resolve(const Bytes& bookmark) {
    const std::string_view bytes(reinterpret_cast<const char*>(bookmark.data()), bookmark.size());
    const Error invalid{"The bookmark isn't valid."};
    if (!bytes.starts_with("bplist")) return invalid;
    const auto list = PropertyList::parse(bytes);
    const auto* dictionary = list ? list->as<Dictionary>() : nullptr;
    const auto path = dictionary ? member<Bytes>(*dictionary, "path") : std::nullopt;
    if (!path) return invalid;
    const std::string oldPath(path->begin(), path->end());
    if (!oldPath.starts_with('/') || oldPath.find('\0') != std::string::npos) return invalid;
    if (const auto identifier = member<std::string>(*dictionary, "application"))
        return resolveApplication(oldPath, *identifier);
    const auto wanted = identityIn(*dictionary);
    return wanted ? resolveFile(oldPath, *wanted) : invalid;
}

Result<Url> LinuxBookmarks::resolveApplication(const std::string& oldPath,
                                               const std::string& identifier) const {
    const auto there = installed_.byBundlePath(oldPath);
    if (there && there->bundleIdentifier == identifier) return Url::fromPath(oldPath);
    // The list also finds an identifier that differs in case: that is another application.
    const auto application = installed_.byBundleIdentifier(identifier);
    if (application && application->bundleIdentifier == identifier)
        return Url::fromPath(application->bundlePath);
    return Error{"The application “" + identifier + "” isn't installed."};
}

} // namespace corvane
