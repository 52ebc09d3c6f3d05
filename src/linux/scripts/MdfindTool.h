#pragma once

#include "platform/TaskRunner.h"

#include <string>
#include <vector>

namespace corvane {

class InstalledApplications;

/// The mdfind command over the installed applications. Prints the bundle paths, one a line, of
/// those whose translated or untranslated name is exactly the one in the query (see MdfindQuery.h).
/// Status 1 and no output for any other query. Any thread.
TaskResult runMdfindTool(const InstalledApplications& installed,
                         const std::vector<std::string>& arguments);

} // namespace corvane
