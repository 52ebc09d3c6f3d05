#include "linux/installed/EntryFiles.h"

#include "foundation/Diagnostics.h"
#include "foundation/Text.h"

#include <algorithm>
#include <filesystem>
#include <vector>

#include <sys/stat.h>

namespace corvane {

namespace {

namespace fs = std::filesystem;

/// A folder that is looked through, with those above it as the system knows them.
struct Walk {
    const std::string& root;
    EntryFiles& files;
    FolderTimes& folders;
    std::vector<std::pair<dev_t, ino_t>> above = {};
};

void addEntry(const std::string& path, Walk& walk) {
    if (!path.ends_with(entrySuffix) || !text::isValidUtf8(path)) return;
    std::string id = path.substr(walk.root.size() + 1);
    std::replace(id.begin(), id.end(), '/', '-');
    if (const auto stamp = entryStampOf(path)) {
        walk.files.try_emplace(id, EntryFile{path, *stamp});
    } else {
        diagnostic({"Passed over ", path, ": there is no file behind it"});
    }
}

void collectFrom(const std::string& folder, Walk& walk) {
    constexpr std::size_t deepest = 8;
    struct stat info{};
    const bool isThere = ::stat(folder.c_str(), &info) == 0;
    const std::pair self(info.st_dev, info.st_ino);
    if (walk.above.size() > deepest || std::ranges::count(walk.above, self) > 0) {
        diagnostic({"Passed over ", folder, ": it is too deep, or leads back"});
        return;
    }
    walk.folders.emplace(folder, changeTimeOf(folder));
    if (!isThere) return;
    walk.above.push_back(self);
    // An iterator that goes down by itself would end at the first link that leads to itself.
    std::error_code error;
    for (fs::directory_iterator entry(folder, error), end; !error && entry != end;
         entry.increment(error)) {
        std::error_code unknown;
        if (entry->is_directory(unknown)) {
            collectFrom(entry->path(), walk);
        } else {
            addEntry(entry->path(), walk);
        }
    }
    walk.above.pop_back();
}

} // namespace

std::optional<EntryStamp> entryStampOf(const std::string& path) {
    struct stat info{};
    if (::stat(path.c_str(), &info) != 0 || !S_ISREG(info.st_mode)) return std::nullopt;
    return EntryStamp{info.st_dev, info.st_ino, info.st_size, info.st_mtim.tv_sec,
                      info.st_mtim.tv_nsec};
}

std::optional<std::int64_t> changeTimeOf(const std::string& folder) {
    constexpr std::int64_t nanoseconds = 1'000'000'000;
    struct stat info{};
    if (::stat(folder.c_str(), &info) != 0) return std::nullopt;
    return info.st_mtim.tv_sec * nanoseconds + info.st_mtim.tv_nsec;
}

void collectEntries(const std::string& root, EntryFiles& files, FolderTimes& folders) {
    Walk walk{root, files, folders};
    collectFrom(root, walk);
}

} // namespace corvane
