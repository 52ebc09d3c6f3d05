#pragma once

#include "foundation/Result.h"

#include <string>
#include <vector>

namespace corvane {

struct TaskResult {
    /// terminationStatus.
    int status = 0;
    /// All of standard output, as bytes.
    std::string output;
};

/// NSTask: launchAndReturnError:, waitUntilExit and the reading of standard output in one. Any
/// thread; returns when the process has ended. An error means that it couldn't be started.
class TaskRunner {
public:
    virtual ~TaskRunner() = default;
    virtual Result<TaskResult> run(const std::string& launchPath,
                                   const std::vector<std::string>& arguments) = 0;
};

} // namespace corvane
