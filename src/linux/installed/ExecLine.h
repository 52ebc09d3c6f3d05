#pragma once

#include "foundation/Result.h"

#include <optional>
#include <string>
#include <vector>

namespace corvane {

struct InstalledApplication;

using Command = std::vector<std::string>;

/// The commands that open `uris` by an entry's Exec key: its field codes filled in, one command for
/// each URI where the entry takes a single one. An entry with no field code for them gets them at
/// its end. `arguments` go behind everything. No shell is involved, and one that the key itself
/// names gets an item as an argument of its script, never as a part of it. An error where the key
/// is malformed or has an item inside of any other text, where it takes paths and a URI isn't a
/// file's, and for a URI with no scheme or of a file that has no absolute path on this machine.
Result<std::vector<Command>> execCommands(const InstalledApplication& application,
                                          const std::vector<std::string>& uris,
                                          const std::vector<std::string>& arguments);

/// Why one of the URIs can't be handed to any application, as above; nothing where all can.
Result<void> areOpenable(const std::vector<std::string>& uris);

/// Whether the Exec key has a code for what is to be opened.
bool takesItems(const InstalledApplication& application);

} // namespace corvane
