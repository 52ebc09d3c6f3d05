#include "platform/SafeNames.h"

#include "foundation/Url.h"
#include "platform/FileSystem.h"

#include <chrono>
#include <cmath>
#include <cstdint>

namespace corvane {

namespace {

std::string twoDigits(long number) {
    return (number < 10 ? "0" : "") + std::to_string(number);
}

} // namespace

std::string fileDate(Timestamp moment) {
    using namespace std::chrono;
    const sys_seconds time{seconds(static_cast<std::int64_t>(std::floor(moment.toUnix())))};
    const auto day = floor<days>(time);
    const year_month_day date{day};
    const hh_mm_ss clock{time - day};
    return std::to_string(static_cast<int>(date.year())) + "-" +
           twoDigits(static_cast<unsigned>(date.month())) + "-" +
           twoDigits(static_cast<unsigned>(date.day())) + "T" + twoDigits(clock.hours().count()) +
           "-" + twoDigits(clock.minutes().count()) + "-" + twoDigits(clock.seconds().count());
}

std::string unusedSiblingPath(const FileSystem& fileSystem, std::string_view folder,
                              std::string_view stem, std::string_view extension) {
    for (int number = 1;; ++number) {
        const auto suffix = number == 1 ? "" : " " + std::to_string(number);
        auto candidate = path::join(folder, std::string(stem) + suffix + std::string(extension));
        if (!fileSystem.exists(candidate)) return candidate;
    }
}

Result<std::string> keepFileAside(FileSystem& fileSystem, const std::string& path,
                                  std::string_view why, Timestamp now) {
    if (const auto stamp = fileSystem.stamp(path); !stamp) {
        if (stamp.error().isMissing) return std::string();
        return stamp.error();
    }
    auto kept = unusedSiblingPath(fileSystem, path::parent(path),
                                  path::stem(path) + "." + std::string(why) + "-" + fileDate(now),
                                  "." + path::extension(path));
    // A copy: with the file itself away, a process that is killed now would leave none.
    const auto bytes = fileSystem.readFile(path);
    const auto done = bytes ? fileSystem.writeFile(kept, *bytes) : fileSystem.moveItem(path, kept);
    return done ? Result(kept) : done.error();
}

} // namespace corvane
