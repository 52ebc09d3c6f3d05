#include "linux/system/AtomicFile.h"

#include "foundation/Url.h"
#include "foundation/Uuid.h"
#include "linux/system/FileDescriptor.h"

#include <algorithm>
#include <cerrno>
#include <filesystem>
#include <system_error>

#include <fcntl.h>
#include <sys/stat.h>

namespace corvane {
namespace {

/// The path behind symbolic links, or nothing where they go round in a circle.
std::optional<std::string> linkTarget(std::filesystem::path path) {
    constexpr int mostLinks = 40;
    for (int i = 0; i < mostLinks; ++i) {
        std::error_code error;
        const auto target = std::filesystem::read_symlink(path, error);
        if (error) return path.string();
        path = path.parent_path() / target;
    }
    return std::nullopt;
}

bool writeAll(int descriptor, std::string_view bytes) {
    constexpr std::size_t piece = 1 << 20;
    while (!bytes.empty()) {
        const ssize_t written = ::write(descriptor, bytes.data(), std::min(piece, bytes.size()));
        if (written < 0 && errno == EINTR) continue;
        if (written < 0) return false;
        bytes.remove_prefix(static_cast<std::size_t>(written));
    }
    return true;
}

/// Gives the new file the old one's owner and mode. Another's file may have to change hands.
bool takeOver(int descriptor, const struct stat& old) {
    if (::fchown(descriptor, old.st_uid, old.st_gid) != 0 &&
        ::fchown(descriptor, static_cast<uid_t>(-1), old.st_gid) != 0 && errno != EPERM) {
        return false;
    }
    return ::fchmod(descriptor, old.st_mode & 07777) == 0;
}

/// Gives a file that has no name yet one.
bool nameFile(int descriptor, const std::string& name) {
    const auto link = "/proc/self/fd/" + std::to_string(descriptor);
    return ::linkat(AT_FDCWD, link.c_str(), AT_FDCWD, name.c_str(), AT_SYMLINK_FOLLOW) == 0;
}

/// Writes and syncs; false with errno on failure.
bool fill(int descriptor, std::string_view bytes, const struct stat* old) {
    return writeAll(descriptor, bytes) && (!old || takeOver(descriptor, *old)) &&
           ::fsync(descriptor) == 0;
}

/// Makes the new file; false with errno on failure.
bool makeFile(const std::string& name, std::string_view bytes, const struct stat* old) {
    constexpr mode_t mode = 0600;
    {
        // It has no name before it is complete: a process that is killed meanwhile leaves nothing
        // behind.
        FileDescriptor file(
            ::open(path::parent(name).c_str(), O_WRONLY | O_TMPFILE | O_CLOEXEC, mode));
        if (file && fill(file.get(), bytes, old) && nameFile(file.get(), name)) return file.close();
    }
    // Not every file system can do that, and no machine without /proc.
    FileDescriptor file(::open(name.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, mode));
    return file && fill(file.get(), bytes, old) && file.close();
}

/// Writes over the old content. The disk has room for all of it before the first byte goes.
bool writeInPlace(const std::string& path, std::string_view bytes) {
    FileDescriptor file(::open(path.c_str(), O_WRONLY | O_CLOEXEC));
    const auto size = static_cast<off_t>(bytes.size());
    if (!file || (size > 0 && ::posix_fallocate(file.get(), 0, size) != 0)) return false;
    return writeAll(file.get(), bytes) && ::ftruncate(file.get(), size) == 0 &&
           ::fsync(file.get()) == 0 && file.close();
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
    return path::join(path::parent(path), ".corvane-" + Uuid::random().toString());
}

bool syncFolderOf(const std::string& path) {
    const FileDescriptor folder(
        ::open(path::parent(path).c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    // Some file systems know no syncing of folders.
    return folder && (::fsync(folder.get()) == 0 || errno == EINVAL);
}

Result<void> replaceFile(const std::string& path, std::string_view bytes) {
    const auto target = linkTarget(path);
    if (!target) return fileError("write", path, ELOOP);
    struct stat old {};
    const bool existed = ::stat(target->c_str(), &old) == 0;
    if (!existed && errno != ENOENT) return fileError("write", path, errno);
    if (existed && S_ISDIR(old.st_mode)) return fileError("write", path, EISDIR);
    if (existed && !S_ISREG(old.st_mode)) return fileError("write", path, "Not a regular file");
    if (existed && ::access(target->c_str(), W_OK) != 0) return fileError("write", path, errno);

    const std::string temporary = temporaryNameBeside(*target);
    if (!makeFile(temporary, bytes, existed ? &old : nullptr) ||
        ::rename(temporary.c_str(), target->c_str()) != 0) {
        const int reason = errno;
        ::unlink(temporary.c_str());
        // A file that is a mount of its own, or in a folder that takes no new file.
        const bool onlyInPlace =
            reason == EBUSY || reason == EACCES || reason == EPERM || reason == EXDEV;
        if (existed && onlyInPlace && writeInPlace(*target, bytes)) return {};
        return fileError("write", path, reason);
    }
    syncFolderOf(*target);
    return {};
}

} // namespace corvane
