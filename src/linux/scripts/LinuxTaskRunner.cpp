#include "linux/scripts/LinuxTaskRunner.h"

#include "linux/running/ApplicationOpener.h"
#include "linux/scripts/MdfindTool.h"
#include "linux/scripts/OpenTool.h"

namespace corvane {

Result<TaskResult> LinuxTaskRunner::run(const std::string& launchPath,
                                        const std::vector<std::string>& arguments) {
    if (launchPath == "/usr/bin/open") return runOpenTool(opener_, arguments);
    if (launchPath == "/usr/bin/mdfind") return runMdfindTool(opener_.installed(), arguments);
    return Error{"There is no program at " + launchPath + "."};
}

} // namespace corvane
