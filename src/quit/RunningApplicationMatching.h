#pragma once

#include "platform/Applications.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

/// From the name of an application to one that runs. The list is read afresh at each call; only
/// regular applications are ever found by name. A set of names is a list without duplicates, in the
/// order in which they came.
namespace corvane {

/// The running application that a free-text name means: among the visible ones first, then among
/// all. One without a name of its own isn't found.
std::optional<RunningApplication> findRunningApplication(const Applications& applications,
                                                         const std::string& name);

/// The first of the list that some spelling of the name fits: exactly, by identifier, partly, or by
/// its program; a looser way only where no spelling fits in a stricter one. Null where none does.
/// `includingHidden` shows in the diagnostics alone.
const RunningApplication* matchRunningApplication(const std::vector<RunningApplication>& list,
                                                  const std::string& name, bool includingHidden);

/// Whether every word of the search text is a word of the application's name. A short text has to
/// be the whole name, or to stand at an end of it.
bool isPartialAppNameMatch(const RunningApplication& application, std::string_view searchText);

/// The names of the applications that run for a set of names, in its order; they may repeat.
std::vector<std::string> runningApplicationNames(const Applications& applications,
                                                 const std::vector<std::string>& names);

/// The first name of the set that means an application called `runningName`, ignoring case: the
/// name itself or one of its spellings, never a part. Null where none does.
const std::string* matchesAppNameSet(const std::vector<std::string>& names,
                                     std::string_view runningName);

/// All that it is known by, its own first.
std::vector<std::string> allNames(const RunningApplication& application);
std::vector<std::string> allIdentifiers(const RunningApplication& application);

/// What a person reads as its name.
std::string shownName(const RunningApplication& application);

/// Whether it counts as system software, by its policy and by where its bundle lies.
bool isSystemApplication(const RunningApplication& application);

} // namespace corvane
