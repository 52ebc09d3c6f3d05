#pragma once

#include "foundation/Result.h"

#include <string>
#include <vector>

namespace corvane {

struct InstalledApplication;

using Command = std::vector<std::string>;

/// The commands that open `uris` by an entry's Exec key: its field codes filled in, one command for
/// each URI where the entry takes a single one. An entry with no field code for them gets them at
/// its end. `arguments` go behind everything. No shell is involved. An error where the key is
/// malformed or takes paths and a URI isn't a file's.
Result<std::vector<Command>> execCommands(const InstalledApplication& application,
                                          const std::vector<std::string>& uris,
                                          const std::vector<std::string>& arguments);

} // namespace corvane
