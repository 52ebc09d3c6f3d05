#include "quit/RunningApplicationMatching.h"

#include "foundation/Diagnostics.h"
#include "foundation/Text.h"
#include "launch/ApplicationLookup.h"

#include <algorithm>

namespace corvane {

namespace {

using List = std::vector<RunningApplication>;
using Names = std::vector<std::string>;

List eligible(List list, bool includingHidden) {
    std::erase_if(list, [&](const RunningApplication& application) {
        return !application.isRegular() || !application.localizedName ||
               (application.isHidden && !includingHidden);
    });
    return list;
}

/// The first of the list that fits the first spelling that any fits.
template <typename Fits>
const RunningApplication* firstFitting(const Names& variations, const List& list, Fits&& fits) {
    for (const auto& variation : variations) {
        for (const auto& application : list) {
            if (fits(application, variation)) return &application;
        }
    }
    return nullptr;
}

const RunningApplication* findAmong(Names (*textsOf)(const RunningApplication&),
                                    const Names& variations, const List& list) {
    return firstFitting(variations, list, [&](const auto& application, const auto& variation) {
        return std::ranges::count(textsOf(application), variation) > 0;
    });
}

bool meansPartly(const std::string& search, const std::string& target) {
    if (search == target) return true;
    constexpr std::size_t shortestPart = 5;
    const bool isShort = text::characterCount(search) < shortestPart;
    if (isShort && search.find(' ') == std::string::npos) return false;
    const auto words = text::words(search);
    const auto targetWords = text::words(target);
    const bool hasAll = std::ranges::all_of(
        words, [&](const auto& word) { return std::ranges::count(targetWords, word) > 0; });
    if (words.empty() || !hasAll) return false;
    if (words.size() > 1) return true;
    const auto& word = words.front();
    if (text::characterCount(word) > shortestPart) return true;
    return target.starts_with(word + " ") || target.ends_with(" " + word) || target == word;
}

bool isSystemPath(const std::string& path) {
    if (path.starts_with("/usr/")) return true;
    for (const auto* part : {"/loginwindow", "/WindowServer", "/Dock.app"}) {
        if (path.find(part) != std::string::npos) return true;
    }
    return path.starts_with("/System/") && !path.starts_with("/System/Applications/");
}

const RunningApplication* findPartly(const Names& variations, const List& list) {
    return firstFitting(variations, list, isPartialAppNameMatch);
}

const RunningApplication* findByExecutable(const Names& variations, const List& list) {
    return firstFitting(variations, list, [](const auto& application, const auto& variation) {
        return application.executableURL &&
               text::equalsIgnoringCase(path::stem(application.executableURL->path()), variation);
    });
}

} // namespace

std::optional<RunningApplication> findRunningApplication(const Applications& applications,
                                                         const std::string& name) {
    for (const bool includingHidden : {false, true}) {
        const auto list = eligible(applications.runningApplications(), includingHidden);
        if (const auto* found = matchRunningApplication(list, name, includingHidden)) return *found;
    }
    return std::nullopt;
}

const RunningApplication* matchRunningApplication(const List& list, const std::string& name,
                                                  bool includingHidden) {
    const auto variations = appNameVariations(name);
    const auto tell = [&](std::string_view how, std::string_view what, std::string_view more = "") {
        diagnostic({"Found running app ", name, " via ", how, ": '", what, "'", more,
                    includingHidden ? " (including hidden)" : ""});
    };
    const auto* found = findAmong(allNames, variations, list);
    if (found) {
        tell("exact match", shownName(*found));
    } else if ((found = findAmong(allIdentifiers, variations, list))) {
        tell("bundle ID", allIdentifiers(*found).front());
    } else if ((found = findPartly(variations, list))) {
        tell("partial match", shownName(*found));
    } else if ((found = findByExecutable(variations, list))) {
        tell("executable name", shownName(*found),
             " (executable: '" + found->executableURL->lastPathComponent() + "')");
    }
    return found;
}

bool isPartialAppNameMatch(const RunningApplication& application, std::string_view searchText) {
    const auto search = text::lowercased(searchText);
    return std::ranges::any_of(allNames(application), [&](const std::string& name) {
        return meansPartly(search, text::lowercased(name));
    });
}

std::vector<std::string> runningApplicationNames(const Applications& applications,
                                                 const std::vector<std::string>& names) {
    std::vector<std::string> running;
    for (const auto& name : names) {
        const auto found = findRunningApplication(applications, name);
        if (found && found->localizedName) running.push_back(*found->localizedName);
    }
    return running;
}

const std::string* matchesAppNameSet(const std::vector<std::string>& names,
                                     std::string_view runningName) {
    for (const auto& name : names) {
        if (text::equalsIgnoringCase(name, runningName)) return &name;
        for (const auto& variation : appNameVariations(name)) {
            if (text::equalsIgnoringCase(variation, runningName)) return &name;
        }
    }
    return nullptr;
}

std::string shownName(const RunningApplication& application) {
    return application.localizedName.value_or("Unknown");
}

std::vector<std::string> allNames(const RunningApplication& application) {
    Names names;
    if (application.localizedName) names.push_back(*application.localizedName);
    for (const auto& other : application.otherNames)
        names.push_back(other.name);
    return names;
}

std::vector<std::string> allIdentifiers(const RunningApplication& application) {
    Names identifiers;
    if (application.bundleIdentifier) identifiers.push_back(*application.bundleIdentifier);
    for (const auto& other : application.otherNames) {
        if (!other.bundleIdentifier.empty()) identifiers.push_back(other.bundleIdentifier);
    }
    return identifiers;
}

bool isSystemApplication(const RunningApplication& application) {
    if (!application.isRegular() || !application.bundleURL) return true;
    return isSystemPath(application.bundleURL->path()) ||
           std::ranges::any_of(application.otherNames, isSystemPath, &OtherName::bundlePath);
}

} // namespace corvane
