#pragma once

#include "linux/windows/x11/X11Connection.h"

#include <string>

/// Launches as the startup notification of X11 tells of them.
namespace corvane::x11 {

/// The operations of the same names of `WindowSystem`. The token holds the time of the server as it
/// is now: what the user does in other windows later counts for more. Nothing is waited for behind
/// that.
std::string beginLaunch(Server& server, const Launch& launch, Deadline deadline);
void endLaunch(Server& server, const std::string& token);

} // namespace corvane::x11
