#pragma once

#include "platform/TaskRunner.h"

namespace corvane {

class ApplicationOpener;

/// Runs "/usr/bin/open" and "/usr/bin/mdfind", tools of its own (OpenTool.h, MdfindTool.h). Nothing
/// stands at any other path.
class LinuxTaskRunner final : public TaskRunner {
public:
    explicit LinuxTaskRunner(const ApplicationOpener& opener) : opener_(opener) {}

    Result<TaskResult> run(const std::string& launchPath,
                           const std::vector<std::string>& arguments) override;

private:
    const ApplicationOpener& opener_;
};

} // namespace corvane
