#include "core/KeptCopies.h"

#include "foundation/Url.h"
#include "platform/FileSystem.h"
#include "platform/SafeNames.h"

#include <algorithm>
#include <vector>

namespace corvane {

namespace {

constexpr std::string_view prefix = "corvane_workspaces-";
constexpr std::string_view extension = ".json";

void removeOld(FileSystem& fileSystem, const std::string& folder) {
    constexpr std::size_t most = 10;
    std::vector<std::string> stems;
    for (const auto& name : fileSystem.namesIn(folder)) {
        if (name.starts_with(prefix) && name.ends_with(extension))
            stems.push_back(path::stem(name));
    }
    // By their dates.
    std::ranges::sort(stems);
    for (std::size_t i = 0; i + most < stems.size(); ++i)
        (void)fileSystem.removeItem(path::join(folder, stems[i] + std::string(extension)));
}

} // namespace

Result<void> keepCopy(FileSystem& fileSystem, const std::string& folder, std::string_view bytes,
                      Timestamp now) {
    if (const auto done = fileSystem.createDirectory(folder); !done) return done;
    const auto file = unusedSiblingPath(fileSystem, folder, std::string(prefix) + fileDate(now),
                                        std::string(extension));
    if (const auto done = fileSystem.writeFile(file, bytes); !done) return done;
    removeOld(fileSystem, folder);
    return {};
}

} // namespace corvane
