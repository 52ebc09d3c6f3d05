#include "linux/MdfindTool.h"

#include "linux/Catalogue.h"
#include "linux/MdfindQuery.h"

namespace corvane {

TaskResult runMdfindTool(const Catalogue& catalogue, const std::vector<std::string>& arguments) {
    const auto name = arguments.size() == 1 ? parseApplicationNameQuery(arguments.front())
                                            : std::optional<std::string>();
    if (!name) return {.status = 1, .output = ""};
    TaskResult result;
    for (const auto& application : catalogue.visible()) {
        if (application.name == *name || application.displayName == *name) {
            result.output += application.bundlePath + "\n";
        }
    }
    return result;
}

} // namespace corvane
