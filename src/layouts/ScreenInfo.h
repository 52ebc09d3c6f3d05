#pragma once

#include "core/Records.h"
#include "platform/Displays.h"

#include <optional>
#include <vector>

namespace corvane {

/// What a capture knows of the display of a window. Window frames have their origin at the top
/// left, displays at the bottom left; neither is converted.
struct ScreenInfo {
    Rect frame;
    /// The window's origin and size divided by the display's size.
    Rect relativeFrame;
    std::int64_t index = 0;
    bool isPrimary = true;

    bool operator==(const ScreenInfo&) const = default;
};

/// The index of the first display that the frame shares an area with; 0 where there is none.
std::int64_t screenIndexForFrame(const Rect& frame, const std::vector<Display>& screens);

/// Of the record's display, or of the first one where the record's is gone, with the record's own
/// index all the same. Nothing where there is no display with a size.
std::optional<ScreenInfo> makeScreenInfo(const WindowLayout& layout,
                                         const std::vector<Display>& screens);

SavedWindowLayout makeSavedWindowLayout(const WindowLayout& layout, Timestamp savedDate,
                                        const std::vector<Display>& screens);

} // namespace corvane
