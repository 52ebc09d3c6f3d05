#include "launch/ApplicationLookup.h"

#include "foundation/Diagnostics.h"
#include "foundation/Text.h"
#include "platform/Applications.h"
#include "platform/Bundles.h"
#include "platform/MetadataQuery.h"
#include "platform/TaskRunner.h"

#include <algorithm>

namespace corvane {

namespace {

bool equalsAny(std::string_view value, const std::vector<std::string>& variations) {
    return std::any_of(variations.begin(), variations.end(), [&](const auto& variation) {
        return text::equalsIgnoringCase(value, variation);
    });
}

bool partiallyMatchesAny(std::string_view fileName, const std::vector<std::string>& variations) {
    return std::any_of(variations.begin(), variations.end(), [&](const auto& variation) {
        return text::localizedContainsIgnoringCase(fileName, variation) ||
               text::localizedContainsIgnoringCase(variation, fileName);
    });
}

/// An application whose file name equals a spelling, or partly does; the first such in the list,
/// whichever it is.
std::optional<Url> findByFileName(const std::vector<std::string>& variations,
                                  const std::vector<Url>& applications) {
    for (const auto& url : applications) {
        const auto fileName = path::stem(url.path());
        if (equalsAny(fileName, variations)) {
            diagnostic({"Found app via exact match: ", url.path()});
            return url;
        }
        if (partiallyMatchesAny(fileName, variations)) {
            diagnostic({"Found app via partial match: ", url.path()});
            return url;
        }
    }
    return std::nullopt;
}

} // namespace

std::vector<std::string> appNameVariations(std::string_view name) {
    std::vector<std::string> variations;
    const auto add = [&](std::string spelling) {
        const bool known =
            std::find(variations.begin(), variations.end(), spelling) != variations.end();
        if (!spelling.empty() && !known) variations.push_back(std::move(spelling));
    };
    add(std::string(name));
    const auto trimmedName = text::trimmed(name);
    add(trimmedName);
    if (trimmedName.find(' ') != std::string::npos) {
        add(text::replacingAll(trimmedName, " ", ""));
        const auto pieces = text::split(trimmedName, ' ');
        add(pieces.front());
        add(pieces.back());
    }
    return variations;
}

std::optional<std::string>
ApplicationLookup::findBundleIdentifierDynamically(const std::string& name) const {
    const auto task =
        tasks_.run("/usr/bin/mdfind",
                   {"kMDItemKind == 'Application' && kMDItemDisplayName == '" + name + "'"});
    if (!task) {
        diagnostic({"Failed to search for app '", name,
                    "' dynamically: ", task.error().localizedDescription});
        return std::nullopt;
    }
    if (!text::isValidUtf8(task->output)) return std::nullopt;
    for (const auto& line : text::split(text::trimmed(task->output), '\n')) {
        if (line.empty()) continue;
        const auto bundle = bundles_.open(line);
        if (!bundle || !bundle->bundleIdentifier) continue;
        diagnostic({"Dynamically found bundle ID for '", name, "': ", *bundle->bundleIdentifier});
        return bundle->bundleIdentifier;
    }
    return std::nullopt;
}

std::optional<Url> ApplicationLookup::findApplication(const std::string& name) const {
    diagnostic({"Searching for app: '", name, "'"});
    const auto variations = appNameVariations(name);
    diagnostic({"App variations: ", text::joined(variations, ", ")});
    if (auto url = findByDisplayName(variations)) return url;
    if (auto url = findByBundleIdentifier(variations)) return url;
    const auto applications = applications_.urlsForApplications("");
    if (auto url = findByFileName(variations, applications)) return url;
    if (auto url = findByBundleNames(variations, applications)) return url;
    if (auto url = findRunning(variations)) return url;
    return findByMetadata(variations);
}

std::optional<Url> ApplicationLookup::findByDisplayName(const Variations& variations) const {
    for (const auto& variation : variations) {
        const auto identifier = findBundleIdentifierDynamically(variation);
        if (!identifier) continue;
        diagnostic({"Trying bundle ID: ", *identifier});
        if (auto url = applications_.urlForApplication(*identifier)) {
            diagnostic({"Found app via bundle ID: ", url->path()});
            return url;
        }
    }
    return std::nullopt;
}

std::optional<Url> ApplicationLookup::findByBundleIdentifier(const Variations& variations) const {
    for (const auto& variation : variations) {
        // Text that holds "com." holds the "." of an identifier too.
        if (variation.find("com.") == std::string::npos) continue;
        if (auto url = applications_.urlForApplication(variation)) {
            diagnostic({"Found app via bundle identifier: ", url->path()});
            return url;
        }
    }
    return std::nullopt;
}

std::optional<Url>
ApplicationLookup::findByBundleNames(const Variations& variations,
                                     const std::vector<Url>& applications) const {
    for (const auto& url : applications) {
        const auto bundle = bundles_.open(url.path());
        if (!bundle) continue;
        if (bundle->displayName && equalsAny(*bundle->displayName, variations)) {
            diagnostic({"Found app via bundle display name: ", url.path()});
            return url;
        }
        if (bundle->name && equalsAny(*bundle->name, variations)) {
            diagnostic({"Found app via bundle name: ", url.path()});
            return url;
        }
    }
    return std::nullopt;
}

std::optional<Url> ApplicationLookup::findRunning(const Variations& variations) const {
    for (const auto& application : applications_.runningApplications()) {
        if (!application.localizedName || !application.bundleURL) continue;
        const auto isMeant = [&](const auto& name) { return equalsAny(name, variations); };
        if (!isMeant(*application.localizedName) &&
            std::ranges::none_of(application.otherNames, isMeant, &OtherName::name)) {
            continue;
        }
        diagnostic({"Found app via running applications: ", application.bundleURL->path()});
        return application.bundleURL;
    }
    return std::nullopt;
}

std::optional<Url> ApplicationLookup::findByMetadata(const Variations& variations) const {
    for (const auto& variation : variations) {
        const auto items = metadataQuery_.results(
            "kMDItemKind == 'Application' AND kMDItemDisplayName CONTAINS[cd] %@", variation);
        for (const auto& item : items) {
            if (!item.path || path::extension(*item.path) != "app") continue;
            diagnostic({"Found app via metadata search: ", *item.path});
            return Url::fromPath(*item.path);
        }
    }
    return std::nullopt;
}

} // namespace corvane
