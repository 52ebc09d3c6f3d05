#pragma once

#include "foundation/Result.h"

#include <string>
#include <vector>

#include <sys/types.h>

namespace corvane {

struct DetachedOptions {
    /// Where the program starts; the home folder where empty or missing.
    std::string workingDirectory = {};
    /// The desktop entry that the program is started for, told to it as GIO does
    /// (GIO_LAUNCHED_DESKTOP_FILE and ..._PID), so that its windows can be recognised.
    std::string desktopFile = {};
    /// What lets its windows come to the front (XDG_ACTIVATION_TOKEN, DESKTOP_STARTUP_ID); none
    /// where empty.
    std::string token = {};
};

/// Starts a program that lives on its own: in a session of its own, no child of this process, with
/// /dev/null as its standard streams and no other descriptor of ours. The first word is a path or
/// is searched in PATH. The process id, or why the program couldn't be executed. Any thread.
Result<pid_t> startDetached(const std::vector<std::string>& command,
                            const DetachedOptions& options = {});

} // namespace corvane
