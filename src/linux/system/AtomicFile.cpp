#include "linux/system/AtomicFile.h"

#include "foundation/Url.h"
#include "foundation/Uuid.h"
#include "linux/system/FileDescriptor.h"

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <system_error>
#include <utility>
#include <vector>

#include <fcntl.h>
#include <sys/stat.h>
#include <sys/xattr.h>

namespace corvane {
namespace {

constexpr std::string_view temporaryPrefix = ".corvane-";
/// Of what two programs may have changed the name of, which nobody removes as a leftover.
constexpr std::string_view exchangedPrefix = ".corvane.kept-";

/// A name in the folder of `path` that nothing has.
std::string nameBeside(const std::string& path, std::string_view prefix) {
    return path::join(path::parent(path), std::string(prefix) + Uuid::random().toString());
}

/// In a folder that everybody may write to, a link may be another user's trap. The kernel follows
/// it by the same rule where it follows links itself.
bool mayFollow(const std::filesystem::path& link) {
    constexpr mode_t shared = S_ISVTX | S_IWOTH;
    struct stat folder{};
    struct stat itself{};
    const auto parent = link.parent_path();
    if (::stat(parent.c_str(), &folder) != 0 || ::lstat(link.c_str(), &itself) != 0) return false;
    return (folder.st_mode & shared) != shared || itself.st_uid == ::geteuid() ||
           itself.st_uid == folder.st_uid;
}

/// The path behind symbolic links, or nothing, with errno, where none may be followed to its end.
std::optional<std::string> linkTarget(std::filesystem::path path) {
    constexpr int mostLinks = 40;
    for (int i = 0; i < mostLinks; ++i) {
        std::error_code error;
        const auto target = std::filesystem::read_symlink(path, error);
        if (error) return path.string();
        if (!mayFollow(path)) {
            errno = EACCES;
            return std::nullopt;
        }
        path = path.parent_path() / target;
    }
    errno = ELOOP;
    return std::nullopt;
}

bool writeAll(int descriptor, std::string_view bytes) {
    constexpr std::size_t piece = 1 << 20;
    while (!bytes.empty()) {
        const ssize_t written = ::write(descriptor, bytes.data(), std::min(piece, bytes.size()));
        if (written < 0 && errno == EINTR) continue;
        if (written < 0) return false;
        // The disk begins with it while the rest is copied.
        ::sync_file_range(descriptor, 0, 0, SYNC_FILE_RANGE_WRITE);
        bytes.remove_prefix(static_cast<std::size_t>(written));
    }
    return true;
}

/// What is replaced.
struct Old {
    std::string path;
    struct stat status;
};

/// The names and values of the attributes that the user gave a file: rights of single users, tags.
std::vector<std::pair<std::string, std::string>> attributesOf(const std::string& path) {
    std::vector<std::pair<std::string, std::string>> attributes;
    std::vector<char> names(1 << 16), value(1 << 16);
    const ssize_t size = ::listxattr(path.c_str(), names.data(), names.size());
    for (const char* name = names.data(); name < names.data() + size;
         name += std::strlen(name) + 1) {
        const std::string_view known(name);
        if (known != "system.posix_acl_access" && !known.starts_with("user.")) continue;
        const ssize_t length = ::getxattr(path.c_str(), name, value.data(), value.size());
        if (length >= 0)
            attributes.emplace_back(known, std::string(value.data(), value.data() + length));
    }
    return attributes;
}

/// Gives the new file the old one's owner, rights and attributes. Another's file may have to change
/// hands.
bool takeOver(int descriptor, const Old& old) {
    if (::fchown(descriptor, old.status.st_uid, old.status.st_gid) != 0 &&
        ::fchown(descriptor, static_cast<uid_t>(-1), old.status.st_gid) != 0 && errno != EPERM) {
        return false;
    }
    if (::fchmod(descriptor, old.status.st_mode & 07777) != 0) return false;
    return std::ranges::all_of(attributesOf(old.path), [&](const auto& attribute) {
        const auto& [name, value] = attribute;
        return ::fsetxattr(descriptor, name.c_str(), value.data(), value.size(), 0) == 0;
    });
}

/// Gives a file that has no name yet one.
bool nameFile(int descriptor, const std::string& name) {
    const auto link = "/proc/self/fd/" + std::to_string(descriptor);
    return ::linkat(AT_FDCWD, link.c_str(), AT_FDCWD, name.c_str(), AT_SYMLINK_FOLLOW) == 0;
}

/// Writes and syncs; false with errno on failure.
bool fill(int descriptor, std::string_view bytes, const Old* old, struct stat& made) {
    return writeAll(descriptor, bytes) && (!old || takeOver(descriptor, *old)) &&
           ::fsync(descriptor) == 0 && ::fstat(descriptor, &made) == 0;
}

/// Makes the new file; false with errno on failure.
bool makeFile(const std::string& name, std::string_view bytes, const Old* old, struct stat& made) {
    constexpr mode_t mode = 0600;
    {
        // It has no name before it is complete: a process that is killed meanwhile leaves nothing
        // behind.
        FileDescriptor file(
            ::open(path::parent(name).c_str(), O_WRONLY | O_TMPFILE | O_CLOEXEC, mode));
        if (file && fill(file.get(), bytes, old, made) && nameFile(file.get(), name))
            return file.close();
    }
    // Not every file system can do that, and no machine without /proc.
    FileDescriptor file(::open(name.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, mode));
    return file && fill(file.get(), bytes, old, made) && file.close();
}

/// What a process that was killed in the middle of this has left beside the file. None takes an
/// hour.
void removeLeftovers(const std::string& folder) {
    const auto hourAgo = std::filesystem::file_time_type::clock::now() - std::chrono::hours(1);
    std::error_code error;
    for (std::filesystem::directory_iterator entry(folder, error), end; !error && entry != end;
         entry.increment(error)) {
        const auto name = entry->path().filename().string();
        if (!name.starts_with(temporaryPrefix)) continue;
        struct stat info{};
        const bool isOurs = ::lstat(entry->path().c_str(), &info) == 0 && S_ISREG(info.st_mode) &&
                            info.st_uid == ::geteuid();
        std::error_code none;
        if (isOurs && entry->last_write_time(none) < hourAgo && !none)
            ::unlink(entry->path().c_str());
    }
}

/// Writes over the old content. The disk has room for all of it before the first byte goes. False
/// with errno on failure.
bool writeInPlace(const std::string& path, std::string_view bytes, struct stat& made) {
    FileDescriptor file(::open(path.c_str(), O_WRONLY | O_CLOEXEC));
    struct stat before{};
    if (!file || ::fstat(file.get(), &before) != 0) return false;
    const auto size = static_cast<off_t>(bytes.size());
    if (const int full = size > 0 ? ::posix_fallocate(file.get(), 0, size) : 0; full != 0) {
        // A part of the room may have been taken.
        [[maybe_unused]] const int cut = ::ftruncate(file.get(), before.st_size);
        errno = full;
        return false;
    }
    return writeAll(file.get(), bytes) && ::ftruncate(file.get(), size) == 0 &&
           ::fsync(file.get()) == 0 && ::fstat(file.get(), &made) == 0 && file.close();
}

bool isAt(const std::string& path, const struct stat& file) {
    struct stat now{};
    return ::lstat(path.c_str(), &now) == 0 && now.st_ino == file.st_ino &&
           now.st_dev == file.st_dev;
}

/// Gives the new file the old one's name. False with errno on failure, ESTALE where another program
/// has come: making the file took the disk's time.
bool takePlace(std::string& temporary, const std::string& target, const MayReplace& mayReplace) {
    if (!mayReplace) return ::rename(temporary.c_str(), target.c_str()) == 0;
    if (!mayReplace(target)) {
        errno = ESTALE;
        return false;
    }
    const bool exists = ::access(target.c_str(), F_OK) == 0;
    // It is another program's from the exchange on, if this one is killed before it has looked.
    if (exists) {
        const auto exchanged = nameBeside(target, exchangedPrefix);
        if (::rename(temporary.c_str(), exchanged.c_str()) != 0) return false;
        temporary = exchanged;
    }
    const auto rename = [&](unsigned how) {
        return ::renameat2(AT_FDCWD, temporary.c_str(), AT_FDCWD, target.c_str(), how) == 0;
    };
    if (!rename(exists ? RENAME_EXCHANGE : RENAME_NOREPLACE)) {
        // Not every file system has these.
        if (errno == EINVAL || errno == ENOSYS) return rename(0);
        if (errno == EEXIST || errno == ENOENT) errno = ESTALE;
        return false;
    }
    if (!exists) return true;
    // What stood there until now has the other name, and only now nobody else changes what that is.
    if (mayReplace(temporary)) {
        ::unlink(temporary.c_str());
        return true;
    }
    rename(RENAME_EXCHANGE);
    errno = ESTALE;
    return false;
}

} // namespace

Error fileError(const std::string& action, const std::string& path, const std::string& reason) {
    return {"Could not " + action + " " + path + ": " + reason + "."};
}

Error fileError(const std::string& action, const std::string& path, int errorNumber) {
    auto error = fileError(action, path, std::generic_category().message(errorNumber));
    error.isMissing = errorNumber == ENOENT || errorNumber == ENOTDIR;
    return error;
}

std::string temporaryNameBeside(const std::string& path) {
    return nameBeside(path, temporaryPrefix);
}

bool syncFolderOf(const std::string& path) {
    const FileDescriptor folder(
        ::open(path::parent(path).c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    // Some file systems know no syncing of folders.
    return folder && (::fsync(folder.get()) == 0 || errno == EINVAL);
}

Result<struct stat> replaceFile(const std::string& path, std::string_view bytes,
                                const MayReplace& mayReplace) {
    constexpr auto meanwhile = "Another program changed it at the same time";
    const auto target = linkTarget(path);
    if (!target) return fileError("write", path, errno);
    Old old{*target, {}};
    const bool existed = ::stat(target->c_str(), &old.status) == 0;
    if (!existed && errno != ENOENT) return fileError("write", path, errno);
    if (existed && S_ISDIR(old.status.st_mode)) return fileError("write", path, EISDIR);
    if (existed && !S_ISREG(old.status.st_mode))
        return fileError("write", path, "Not a regular file");
    if (existed && ::access(target->c_str(), W_OK) != 0) return fileError("write", path, errno);

    removeLeftovers(path::parent(*target));
    std::string temporary = temporaryNameBeside(*target);
    struct stat made{};
    const bool isMade = makeFile(temporary, bytes, existed ? &old : nullptr, made);
    if (isMade && takePlace(temporary, *target, mayReplace)) {
        syncFolderOf(*target);
        return made;
    }
    const int reason = errno;
    // Another program's file may lie there, if it came as the two changed places again.
    if (!isMade || isAt(temporary, made)) ::unlink(temporary.c_str());
    if (reason == ESTALE) return fileError("write", path, meanwhile);
    // A file that is a mount of its own, or in a folder that takes no new file.
    const bool onlyInPlace =
        reason == EBUSY || reason == EACCES || reason == EPERM || reason == EXDEV;
    if (!existed || !onlyInPlace) return fileError("write", path, reason);
    if (mayReplace && !mayReplace(*target)) return fileError("write", path, meanwhile);
    if (!writeInPlace(*target, bytes, made)) return fileError("write", path, errno);
    return made;
}

} // namespace corvane
