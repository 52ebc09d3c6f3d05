#pragma once

#include "platform/TaskRunner.h"

namespace corvane {

class ApplicationOpener;

/// Runs "/usr/bin/open" and "/usr/bin/mdfind" as tools of its own (OpenTool.h, MdfindTool.h), and
/// any other launch path as the program that stands there: no shell, standard input empty, standard
/// error dropped. A program ended by a signal has the signal's number as its status.
class LinuxTaskRunner final : public TaskRunner {
public:
    explicit LinuxTaskRunner(const ApplicationOpener& opener) : opener_(opener) {}

    Result<TaskResult> run(const std::string& launchPath,
                           const std::vector<std::string>& arguments) override;

private:
    const ApplicationOpener& opener_;
};

} // namespace corvane
