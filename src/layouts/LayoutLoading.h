#pragma once

#include "core/Records.h"
#include "platform/UserDefaults.h"

#include <functional>
#include <optional>

namespace corvane {

/// Stores a layout with a workspace.
using PersistLayout = std::function<void(const WorkspaceLayout&, const Workspace&)>;

/// The workspace's stored layout, or what an earlier version left of it in the user defaults.
std::optional<WorkspaceLayout> loadWorkspaceLayout(const Workspace& workspace,
                                                   UserDefaults& defaults,
                                                   const PersistLayout& persist);

/// Moves the layout of an earlier version from the user defaults into the workspace. An entry that
/// can't be understood stays where it is.
std::optional<WorkspaceLayout> migrateLegacyLayout(const Workspace& workspace,
                                                   UserDefaults& defaults,
                                                   const PersistLayout& persist);

} // namespace corvane
