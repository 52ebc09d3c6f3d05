#pragma once

#include "platform/TaskRunner.h"

#include <string>
#include <vector>

namespace corvane {

class InstalledApplications;

/// The mdfind command over the installed applications. Prints the bundle paths, one a line, of
/// what is called exactly as the query says (see MdfindQuery.h): the applications whose bundle has
/// that file name, else the ones that are known by that other name.
/// Status 1 and no output for any other query. Any thread.
TaskResult runMdfindTool(const InstalledApplications& installed,
                         const std::vector<std::string>& arguments);

} // namespace corvane
