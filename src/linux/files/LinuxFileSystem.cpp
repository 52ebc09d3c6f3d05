#include "linux/files/LinuxFileSystem.h"

#include "foundation/Url.h"
#include "linux/installed/InstalledApplications.h"
#include "linux/system/AtomicFile.h"
#include "linux/system/FileDescriptor.h"
#include "linux/system/UserFolders.h"

#include <cerrno>
#include <cstdio>
#include <filesystem>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace corvane {
namespace {

namespace fs = std::filesystem;

/// A path with a null character would name another file to the kernel.
bool isUsable(const std::string& path) {
    return !path.empty() && path.find('\0') == std::string::npos;
}

Error unusable(const std::string& action, const std::string& path) {
    return fileError(action, path.substr(0, path.find('\0')), EINVAL);
}

/// Reads to the end, as the file may grow or shrink meanwhile; false with errno on failure.
bool readAll(int descriptor, std::size_t expected, std::size_t most, std::string& content) {
    constexpr std::size_t step = 1 << 16;
    std::size_t size = 0;
    content.resize(expected + 1);
    while (size <= most) {
        if (size == content.size()) content.resize(size + size / 2 + step);
        const ssize_t got = ::read(descriptor, content.data() + size, content.size() - size);
        if (got < 0 && errno == EINTR) continue;
        if (got < 0) return false;
        if (got == 0) {
            content.resize(size);
            return true;
        }
        size += static_cast<std::size_t>(got);
    }
    errno = EFBIG;
    return false;
}

/// Renames only onto nothing; false with errno on failure.
bool renameWithoutReplacing(const std::string& from, const std::string& to) {
    if (::renameat2(AT_FDCWD, from.c_str(), AT_FDCWD, to.c_str(), RENAME_NOREPLACE) == 0) {
        return true;
    }
    if (errno != EINVAL && errno != ENOSYS) return false;
    // The file system lacks the operation.
    struct stat present{};
    if (::lstat(to.c_str(), &present) == 0) {
        errno = EEXIST;
        return false;
    }
    return ::rename(from.c_str(), to.c_str()) == 0;
}

FileStamp stampOf(const struct stat& info) {
    constexpr std::int64_t nanoseconds = 1'000'000'000;
    return {info.st_dev, info.st_ino, static_cast<std::uint64_t>(info.st_size),
            info.st_mtim.tv_sec * nanoseconds + info.st_mtim.tv_nsec};
}

void syncTree(const std::string& root) {
    const auto sync = [](const fs::path& path) {
        const FileDescriptor file(
            ::open(path.c_str(), O_RDONLY | O_NONBLOCK | O_NOFOLLOW | O_CLOEXEC));
        if (file) ::fsync(file.get());
    };
    std::error_code error;
    for (fs::recursive_directory_iterator entry(root, error), end; !error && entry != end;
         entry.increment(error)) {
        sync(entry->path());
    }
    sync(root);
}

} // namespace

LinuxFileSystem::LinuxFileSystem(const InstalledApplications& installed)
    : installed_(installed), applicationSupport_(userFolders::data()),
      documents_(userFolders::documents()) {}

bool LinuxFileSystem::exists(const std::string& path) const {
    struct stat info{};
    if (!isUsable(path)) return false;
    return ::stat(path.c_str(), &info) == 0 || installed_.byBundlePath(path).has_value();
}

bool LinuxFileSystem::isDirectory(const std::string& path) const {
    struct stat info{};
    if (!isUsable(path)) return false;
    if (::stat(path.c_str(), &info) == 0) return S_ISDIR(info.st_mode);
    return installed_.byBundlePath(path).has_value();
}

std::vector<std::string> LinuxFileSystem::namesIn(const std::string& folder) const {
    std::vector<std::string> names;
    std::error_code error;
    for (fs::directory_iterator entry(folder, error), end; !error && entry != end;
         entry.increment(error)) {
        names.push_back(entry->path().filename());
    }
    return names;
}

Result<FileStamp> LinuxFileSystem::stamp(const std::string& path) const {
    if (!isUsable(path)) return unusable("look at", path);
    struct stat info{};
    if (::stat(path.c_str(), &info) != 0) return fileError("look at", path, errno);
    return stampOf(info);
}

Result<std::string> LinuxFileSystem::readFile(const std::string& path) const {
    if (!isUsable(path)) return unusable("read", path);
    // Opening a pipe would wait for its other end, a terminal could become this process's own.
    const FileDescriptor file(::open(path.c_str(), O_RDONLY | O_NONBLOCK | O_NOCTTY | O_CLOEXEC));
    struct stat info{};
    if (!file || ::fstat(file.get(), &info) != 0) return fileError("read", path, errno);
    if (S_ISDIR(info.st_mode)) return fileError("read", path, EISDIR);
    if (!S_ISREG(info.st_mode)) return fileError("read", path, "Not a regular file");
    // No file that is read here has a use for more.
    constexpr std::size_t most = std::size_t{64} << 20;
    if (static_cast<std::size_t>(info.st_size) > most) return fileError("read", path, EFBIG);
    std::string content;
    try {
        if (readAll(file.get(), static_cast<std::size_t>(info.st_size), most, content)) {
            return content;
        }
    } catch (const std::bad_alloc&) {
        return fileError("read", path, ENOMEM);
    }
    return fileError("read", path, errno);
}

Result<void> LinuxFileSystem::writeFile(const std::string& path, std::string_view bytes) {
    if (!isUsable(path)) return unusable("write", path);
    const auto written = replaceFile(path, bytes);
    return written ? Result<void>() : written.error();
}

Result<FileStamp> LinuxFileSystem::rewriteFile(const std::string& path, std::string_view bytes,
                                               const std::optional<FileStamp>& known) {
    if (!isUsable(path)) return unusable("write", path);
    const auto written = replaceFile(path, bytes, [&](const std::string& place) {
        const auto now = LinuxFileSystem::stamp(place);
        return now ? *now == known : now.error().isMissing;
    });
    if (!written) return written.error();
    return stampOf(*written);
}

Result<void> LinuxFileSystem::createDirectory(const std::string& path) {
    if (!isUsable(path)) return unusable("create the folder", path);
    std::string folder;
    for (const auto& part : fs::path(path)) {
        folder = folder.empty() ? part.string() : path::join(folder, part.string());
        if (isDirectory(folder)) continue;
        if (::mkdir(folder.c_str(), S_IRWXU) != 0 && !(errno == EEXIST && isDirectory(folder)))
            return fileError("create the folder", path, errno);
    }
    return {};
}

Result<void> LinuxFileSystem::copyItem(const std::string& from, const std::string& to) {
    if (!isUsable(from)) return unusable("copy", from);
    if (!isUsable(to)) return unusable("copy to", to);
    // The copy would take itself along without an end.
    if (to.starts_with(from + "/")) return fileError("copy " + from + " to", to, EINVAL);
    std::error_code error;
    if (fs::exists(fs::symlink_status(to, error))) return fileError("copy to", to, EEXIST);
    const std::string temporary = temporaryNameBeside(to);
    fs::copy(from, temporary, fs::copy_options::recursive | fs::copy_options::copy_symlinks, error);
    std::optional<Error> failure;
    if (error) {
        failure = fileError("copy " + from + " to", to, error.message());
    } else {
        syncTree(temporary);
        if (!renameWithoutReplacing(temporary, to)) failure = fileError("copy to", to, errno);
    }
    if (failure) {
        fs::remove_all(temporary, error);
        return *failure;
    }
    syncFolderOf(to);
    return {};
}

Result<void> LinuxFileSystem::moveItem(const std::string& from, const std::string& to) {
    if (!isUsable(from)) return unusable("move", from);
    if (!isUsable(to)) return unusable("move to", to);
    if (renameWithoutReplacing(from, to)) {
        syncFolderOf(to);
        return {};
    }
    if (errno != EXDEV) return fileError("move " + from + " to", to, errno);
    if (const auto copied = copyItem(from, to); !copied) return copied;
    return removeItem(from);
}

Result<void> LinuxFileSystem::removeItem(const std::string& path) {
    if (!isUsable(path)) return unusable("remove", path);
    std::error_code error;
    if (fs::remove_all(path, error) == 0 && !error) return fileError("remove", path, ENOENT);
    if (error) return fileError("remove", path, error.message());
    return {};
}

void LinuxFileSystem::makePrivate(const std::string& path) {
    struct stat info{};
    if (!isUsable(path) || ::stat(path.c_str(), &info) != 0 || info.st_uid != ::geteuid()) return;
    constexpr mode_t ofOthers = S_IRWXG | S_IRWXO;
    if (info.st_mode & ofOthers) ::chmod(path.c_str(), info.st_mode & 07777 & ~ofOthers);
}

} // namespace corvane
