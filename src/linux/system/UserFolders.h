#pragma once

#include <string>

/// The user's folders by the XDG conventions, from the environment as it is at the call. Absolute,
/// with no trailing "/"; they needn't exist.
namespace corvane::userFolders {

/// $HOME, else what the user database says.
std::string home();
/// $XDG_DATA_HOME, else ~/.local/share.
std::string data();
/// $XDG_CONFIG_HOME, else ~/.config.
std::string config();
/// As xdg-user-dirs names it, else ~/Documents.
std::string documents();

} // namespace corvane::userFolders
