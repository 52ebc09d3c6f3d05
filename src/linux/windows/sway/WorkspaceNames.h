#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace corvane::sway {

/// The command that moves the window that `criteria` names to the workspace of that name. Nothing
/// for a name that can't become part of a command: one with signs that mean something in it, a word
/// that sway or i3 takes for another workspace, or more than 100 bytes. Names come from files of
/// strangers too.
std::optional<std::string> movingToWorkspace(std::string_view criteria, const std::string& name);

} // namespace corvane::sway
