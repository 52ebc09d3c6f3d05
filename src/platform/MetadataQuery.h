#pragma once

#include <optional>
#include <string>
#include <vector>

namespace corvane {

/// NSMetadataItem: `path` is the value of NSMetadataItemPathKey, absent where the item has none.
struct MetadataItem {
    std::optional<std::string> path;
};

/// NSMetadataQuery over the local computer. Any thread.
class MetadataQuery {
public:
    virtual ~MetadataQuery() = default;
    /// The results that stand right after startQuery and stopQuery. `predicateFormat` has one %@,
    /// for `argument`.
    virtual std::vector<MetadataItem> results(const std::string& predicateFormat,
                                              const std::string& argument) = 0;
};

} // namespace corvane
