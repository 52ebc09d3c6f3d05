#include "linux/scripts/MdfindTool.h"

#include "linux/installed/InstalledApplications.h"
#include "linux/scripts/MdfindQuery.h"

#include <algorithm>

namespace corvane {

TaskResult runMdfindTool(const InstalledApplications& installed,
                         const std::vector<std::string>& arguments) {
    const auto name = arguments.size() == 1 ? parseApplicationNameQuery(arguments.front())
                                            : std::optional<std::string>();
    if (!name) return {.status = 1, .output = ""};
    TaskResult result;
    const auto print = [&](const auto& application, bool isMeant) {
        if (isMeant) result.output += application.bundlePath + "\n";
    };
    const auto applications = installed.visible();
    for (const auto& application : applications)
        print(application, application.storedName() == *name);
    if (!result.output.empty()) return result;
    const auto roles = installed.roles();
    for (const auto& application : applications) {
        const auto others = otherNames(application, roles);
        print(application, std::ranges::count(others, *name, &OtherName::name) > 0);
    }
    return result;
}

} // namespace corvane
