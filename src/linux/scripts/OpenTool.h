#pragma once

#include "platform/TaskRunner.h"

#include <string>
#include <vector>

namespace corvane {

class ApplicationOpener;

/// The open command, as far as the program sends it:
///   open [--new] -a application [item ...] [--args argument ...]
/// An application is given by bundle path, name, identifier or program name. With nothing to open,
/// one that runs comes forward, unless a new one is wanted; with arguments it is started all the
/// same. Status 1 where an application or a file is missing, an option is unknown or a start fails.
/// Any thread.
TaskResult runOpenTool(const ApplicationOpener& opener, const std::vector<std::string>& arguments);

} // namespace corvane
