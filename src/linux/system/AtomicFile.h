#pragma once

#include "foundation/Result.h"

#include <functional>
#include <optional>
#include <string>
#include <string_view>

#include <sys/stat.h>

namespace corvane {

/// Whether what stands at a path now, perhaps under another name than before, may go.
using MayReplace = std::function<bool(const std::string& path)>;

/// Replaces the content of a file at one stroke: whoever looks, even after a crash, finds all of
/// the old bytes or all of the new. A symbolic link is followed, also one to a file that isn't
/// there yet, but for another user's in a folder that all may write to; rights, the user's
/// attributes and, where the system allows, owner survive. A file that can be written but not
/// replaced is written in place, and there alone a crash can leave a part of either. Refuses what
/// isn't a regular file, a file that the user may not write, and whatever `mayReplace` doesn't
/// allow as it goes; where the file system can exchange two names, nobody comes between. The status
/// of the file that stands there now.
Result<struct stat> replaceFile(const std::string& path, std::string_view bytes,
                                const MayReplace& mayReplace = {});

/// A name in the folder of `path` that nothing has.
std::string temporaryNameBeside(const std::string& path);

/// Makes the entries of the folder that holds `path` survive a crash. False on failure.
bool syncFolderOf(const std::string& path);

/// "Could not write /a/b: No space left on device."
Error fileError(const std::string& action, const std::string& path, int errorNumber);
Error fileError(const std::string& action, const std::string& path, const std::string& reason);

} // namespace corvane
