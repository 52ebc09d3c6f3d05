#pragma once

#include "core/Records.h"

#include <string>
#include <string_view>
#include <vector>

namespace corvane {

class Bundles;

/// The JSON form of the records. Decoding throws json::DecodeError, which names the place; one bad
/// record fails the whole text. Encoding throws json::EncodeError.

/// A JSON array of workspaces. An application resource without a bundle identifier gets it from its
/// bundle.
std::vector<Workspace> decodeWorkspaces(std::string_view json, const Bundles& bundles);
/// Compact, keys in the order of the fields.
std::string encodeWorkspaces(const std::vector<Workspace>& workspaces);

/// The form in which earlier versions left layouts in the user defaults.
WorkspaceLayout decodeWorkspaceLayout(std::string_view json);

} // namespace corvane
