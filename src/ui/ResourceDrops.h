#pragma once

#include "foundation/Url.h"

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

namespace corvane {

class ResourceManagement;

/// What a drag carries.
struct DropInfo {
    /// The items that are file URLs, as bytes of a URL each.
    std::vector<std::string> fileUrls = {};
    /// The first text; absent where there is none.
    std::optional<std::string> text = {};

    bool hasFileURL() const { return !fileUrls.empty(); }
    bool hasText() const { return text.has_value(); }
};

/// Takes files and applications that are dropped on the list: each becomes a resource at its end.
/// The list outlives it. Main thread.
class ResourceDropDelegate {
public:
    explicit ResourceDropDelegate(ResourceManagement& list) : list_(list) {}

    bool validateDrop(const DropInfo& info) const { return info.hasFileURL(); }
    void dropEntered(const DropInfo& info);
    void dropExited();
    bool performDrop(const DropInfo& info);

private:
    ResourceManagement& list_;
};

/// Takes a row that is dropped on the row at `targetIndex`. A row's drag is the decimal text of its
/// index and nothing else. The list outlives it. Main thread.
class ResourceReorderDelegate {
public:
    ResourceReorderDelegate(ResourceManagement& list, std::size_t targetIndex)
        : list_(list), targetIndex_(targetIndex) {}

    bool validateDrop(const DropInfo& info) const { return isReorder(info); }
    void dropEntered(const DropInfo& info);
    void dropExited();
    bool performDrop(const DropInfo& info);

private:
    static bool isReorder(const DropInfo& info) { return info.hasText() && !info.hasFileURL(); }

    ResourceManagement& list_;
    std::size_t targetIndex_;
};

/// The whole text as a base-10 integer, with an optional sign and no blanks.
std::optional<long long> decimalInteger(const std::string& text);

} // namespace corvane
