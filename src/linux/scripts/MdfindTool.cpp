#include "linux/scripts/MdfindTool.h"

#include "linux/installed/InstalledApplications.h"
#include "linux/scripts/MdfindQuery.h"

namespace corvane {

TaskResult runMdfindTool(const InstalledApplications& installed,
                         const std::vector<std::string>& arguments) {
    const auto name = arguments.size() == 1 ? parseApplicationNameQuery(arguments.front())
                                            : std::optional<std::string>();
    if (!name) return {.status = 1, .output = ""};
    TaskResult result;
    for (const auto& application : installed.visible()) {
        if (application.name == *name || application.displayName == *name) {
            result.output += application.bundlePath + "\n";
        }
    }
    return result;
}

} // namespace corvane
