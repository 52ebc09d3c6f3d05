#pragma once

#include "linux/windows/WindowSystem.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

/// What a sway or an i3 is asked at its socket, and how.
namespace corvane::sway {

enum class Question : std::uint32_t { run = 0, workspaces = 1, outputs = 3, tree = 4, version = 7 };

/// Puts one question to the sway or i3 of this session, over a connection of its own, so that no
/// late answer is taken for the next one's. Sockets are tried in this order: those that SWAYSOCK
/// and I3SOCK name, then those in the runtime folder, newest first; only one whose process is
/// `compositor` counts. Nothing where none answers by then or with more than 16 MiB.
std::optional<std::string> ask(Question question, std::string_view words, pid_t compositor,
                               Deadline by);

} // namespace corvane::sway
