#pragma once

#include "foundation/Url.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace corvane {

class Applications;
class Bundles;
class MetadataQuery;
class TaskRunner;

/// The spellings of an application name: as given, trimmed, without spaces, its first and its last
/// word. Non-empty, without duplicates, in that order.
std::vector<std::string> appNameVariations(std::string_view name);

/// Finds an application by a free-text name. Asks the desktop afresh at each call and waits for the
/// answers. Any thread.
class ApplicationLookup {
public:
    ApplicationLookup(Applications& applications, const Bundles& bundles, TaskRunner& tasks,
                      MetadataQuery& metadataQuery)
        : applications_(applications), bundles_(bundles), tasks_(tasks),
          metadataQuery_(metadataQuery) {}

    /// The URL of an application bundle. Six stages, from the most exact source to the loosest; the
    /// first hit counts.
    std::optional<Url> findApplication(const std::string& name) const;
    /// The identifier of the first bundle that a search by display name gives.
    std::optional<std::string> findBundleIdentifierDynamically(const std::string& name) const;

private:
    using Variations = std::vector<std::string>;
    std::optional<Url> findByDisplayName(const Variations& variations) const;
    std::optional<Url> findByBundleIdentifier(const Variations& variations) const;
    std::optional<Url> findByBundleNames(const Variations& variations,
                                         const std::vector<Url>& applications) const;
    std::optional<Url> findRunning(const Variations& variations) const;
    std::optional<Url> findByMetadata(const Variations& variations) const;

    Applications& applications_;
    const Bundles& bundles_;
    TaskRunner& tasks_;
    MetadataQuery& metadataQuery_;
};

} // namespace corvane
