#pragma once

#include "foundation/Result.h"

#include <optional>
#include <string>
#include <vector>

namespace corvane {

struct InstalledApplication;

/// Starts an installed application with URIs to open and arguments of its own behind them. Its Exec
/// line is run, as only that tells of a failure; an entry without one is asked for on the session
/// bus. The error is in words for the user. Any thread.
std::optional<Error> launchEntry(const InstalledApplication& application,
                                 const std::vector<std::string>& uris,
                                 const std::vector<std::string>& arguments);

} // namespace corvane
