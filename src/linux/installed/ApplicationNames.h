#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace corvane {

class InstalledApplications;
struct InstalledApplication;

/// The application that a user means: by bundle path, else by the first of these that fits when
/// case is ignored, in this order: file name of the bundle, a former name, translated or
/// untranslated name, desktop id or bundle identifier, name of the program. Hidden ones come after
/// all others, and behind them Finder, Terminal and Safari.
std::optional<InstalledApplication> applicationNamed(const InstalledApplications& installed,
                                                     std::string_view name);

} // namespace corvane
