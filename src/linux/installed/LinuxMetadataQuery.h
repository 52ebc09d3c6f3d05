#pragma once

#include "platform/MetadataQuery.h"

namespace corvane {

class InstalledApplications;

/// The metadata index, in which only applications are indexed, by name. It answers the predicate
/// "kMDItemKind == 'Application' AND kMDItemDisplayName CONTAINS[cd] %@" and finds nothing for any
/// other.
class LinuxMetadataQuery final : public MetadataQuery {
public:
    explicit LinuxMetadataQuery(const InstalledApplications& installed) : installed_(installed) {}

    std::vector<MetadataItem> results(const std::string& predicateFormat,
                                      const std::string& argument) override;

private:
    const InstalledApplications& installed_;
};

} // namespace corvane
