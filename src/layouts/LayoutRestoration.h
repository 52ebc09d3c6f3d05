#pragma once

#include "layouts/WindowControl.h"

#include <functional>
#include <string_view>
#include <vector>

namespace corvane {

/// Puts the windows of a layout back, and keeps it to one fullscreen application. Main thread,
/// which waits for late windows, two seconds a record at most.
class LayoutRestoration {
public:
    LayoutRestoration(const Applications& applications, const Displays& displays,
                      const WindowControl& control)
        : applications_(applications), displays_(displays), control_(control) {}

    using FullscreenConflict = std::function<void(const WindowLayout& chosen)>;

    /// First the regular records, then one fullscreen record, then those of the other fullscreen
    /// applications as large as the first display leaves room. Of several fullscreen records the
    /// last is chosen for the priority "last", otherwise the first; `onConflict` hears of it before
    /// it is applied. A record whose application doesn't run is passed over.
    void applyWindowLayouts(const std::vector<WindowLayout>& layouts,
                            std::string_view fullscreenPriority,
                            const FullscreenConflict& onConflict) const;

private:
    void apply(const WindowLayout& layout) const;
    void maximize(WindowLayout layout) const;

    const Applications& applications_;
    const Displays& displays_;
    WindowControl control_;
};

} // namespace corvane
