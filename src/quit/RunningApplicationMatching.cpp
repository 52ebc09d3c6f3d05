#include "quit/RunningApplicationMatching.h"

#include "foundation/Diagnostics.h"
#include "foundation/Text.h"
#include "launch/ApplicationLookup.h"

#include <algorithm>
#include <functional>

namespace corvane {

namespace {

using List = std::vector<RunningApplication>;
using Names = std::vector<std::string>;

/// A search text, taken apart once for many names.
class PartialSearch {
public:
    explicit PartialSearch(std::string_view searchText)
        : text_(text::lowercased(searchText)), words_(text::words(text_)),
          length_(text::characterCount(text_)) {}

    /// The name is in lower case.
    bool matches(const std::string& name) const {
        if (text_ == name) return true;
        constexpr std::size_t shortestPart = 5;
        if (length_ < shortestPart && text_.find(' ') == std::string::npos) return false;
        if (words_.empty() || !hasAllWords(name)) return false;
        if (words_.size() > 1) return true;
        const auto& word = words_.front();
        if (text::characterCount(word) > shortestPart) return true;
        return name.starts_with(word + " ") || name.ends_with(" " + word) || name == word;
    }

private:
    bool hasAllWords(const std::string& name) const {
        // A whole word is a part of the text too, which is found out sooner.
        for (const auto& word : words_) {
            if (name.find(word) == std::string::npos) return false;
        }
        const auto nameWords = text::words(name);
        return std::ranges::all_of(
            words_, [&](const auto& word) { return std::ranges::count(nameWords, word) > 0; });
    }

    std::string text_;
    std::vector<std::string> words_;
    std::size_t length_;
};

List eligible(List list, bool includingHidden) {
    std::erase_if(list, [&](const RunningApplication& application) {
        return !application.isRegular() || !application.localizedName ||
               (application.isHidden && !includingHidden);
    });
    return list;
}

/// The first of the list that fits the first search that any fits. `textOf` gives what of an
/// application is compared, or nothing; each text is made once, for all searches.
template <typename Searches, typename TextOf, typename Fits>
const RunningApplication* firstFitting(const Searches& searches, const List& list, TextOf&& textOf,
                                       Fits&& fits) {
    const RunningApplication* found = nullptr;
    std::size_t stillBetter = searches.size();
    for (const auto& application : list) {
        if (stillBetter == 0) break;
        const auto& text = textOf(application);
        if (!text) continue;
        for (std::size_t i = 0; i < stillBetter; ++i) {
            if (!fits(searches[i], *text)) continue;
            found = &application;
            stillBetter = i;
        }
    }
    return found;
}

const RunningApplication* findPartly(const Names& variations, const List& list) {
    const std::vector<PartialSearch> searches(variations.begin(), variations.end());
    return firstFitting(
        searches, list,
        [](const RunningApplication& application) -> std::optional<std::string> {
            if (!application.localizedName) return std::nullopt;
            return text::lowercased(*application.localizedName);
        },
        [](const PartialSearch& search, const std::string& name) { return search.matches(name); });
}

const RunningApplication* findByExecutable(const Names& variations, const List& list) {
    return firstFitting(
        variations, list,
        [](const RunningApplication& application) -> std::optional<std::string> {
            if (!application.executableURL) return std::nullopt;
            return path::stem(application.executableURL->path());
        },
        [](const std::string& variation, const std::string& program) {
            return text::equalsIgnoringCase(program, variation);
        });
}

const RunningApplication* findEqual(const Names& variations, const List& list,
                                    std::optional<std::string> RunningApplication::*field) {
    return firstFitting(
        variations,
        list, [field](const auto& application) -> const auto& { return application.*field; },
        std::equal_to());
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
    const auto* found = findEqual(variations, list, &RunningApplication::localizedName);
    if (found) {
        tell("exact match", shownName(*found));
    } else if ((found = findEqual(variations, list, &RunningApplication::bundleIdentifier))) {
        tell("bundle ID", *found->bundleIdentifier);
    } else if ((found = findPartly(variations, list))) {
        tell("partial match", shownName(*found));
    } else if ((found = findByExecutable(variations, list))) {
        tell("executable name", shownName(*found),
             " (executable: '" + found->executableURL->lastPathComponent() + "')");
    }
    return found;
}

bool isPartialAppNameMatch(const RunningApplication& application, std::string_view searchText) {
    return application.localizedName &&
           PartialSearch(searchText).matches(text::lowercased(*application.localizedName));
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

const std::string* findInAppNameSet(const std::vector<std::string>& names,
                                    std::string_view runningName) {
    for (const auto& name : names) {
        if (text::equalsIgnoringCase(name, runningName)) return &name;
        for (const auto& variation : appNameVariations(name)) {
            if (text::equalsIgnoringCase(variation, runningName)) return &name;
        }
    }
    return nullptr;
}

bool matchesAppNameSet(const std::vector<std::string>& names, std::string_view runningName) {
    return findInAppNameSet(names, runningName) != nullptr;
}

std::string shownName(const RunningApplication& application) {
    return application.localizedName.value_or("Unknown");
}

bool isSystemApplication(const RunningApplication& application) {
    if (!application.isRegular() || !application.bundleURL) return true;
    const auto& path = application.bundleURL->path();
    for (const auto* folder :
         {"/System/Library/CoreServices/", "/System/Library/Frameworks/", "/usr/"}) {
        if (path.starts_with(folder)) return true;
    }
    for (const auto* part : {"/loginwindow", "/WindowServer", "/Dock.app"}) {
        if (path.find(part) != std::string::npos) return true;
    }
    if (path.starts_with("/Applications/") || path.starts_with("/System/Applications/"))
        return false;
    return path.starts_with("/System/");
}

} // namespace corvane
