#pragma once

#include "linux/system/FileDescriptor.h"

#include <string>

#include <sys/types.h>

namespace corvane {

/// A connection to whoever listens at that path; none where nobody does, or where too many wait
/// there already. Doesn't block.
FileDescriptor connectedTo(const std::string& path);

/// The process at the other end; 0 where it isn't of this machine and process space. One below has
/// a number here too, but tells of others by the numbers that they have there.
pid_t processBehind(int socket);

} // namespace corvane
