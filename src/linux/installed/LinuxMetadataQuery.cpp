#include "linux/installed/LinuxMetadataQuery.h"

#include "foundation/Text.h"
#include "linux/installed/InstalledApplications.h"

namespace corvane {

std::vector<MetadataItem> LinuxMetadataQuery::results(const std::string& predicateFormat,
                                                      const std::string& argument) {
    if (predicateFormat != "kMDItemKind == 'Application' AND kMDItemDisplayName CONTAINS[cd] %@") {
        return {};
    }
    std::vector<MetadataItem> items;
    for (const auto& application : installed_.visible()) {
        if (text::containsIgnoringCaseAndDiacritics(application.displayName, argument) ||
            text::containsIgnoringCaseAndDiacritics(application.name, argument)) {
            items.push_back({application.bundlePath});
        }
    }
    return items;
}

} // namespace corvane
