#include "layouts/LayoutRestoration.h"

#include "foundation/Diagnostics.h"
#include "quit/RunningApplicationMatching.h"

namespace corvane {

void LayoutRestoration::apply(const WindowLayout& layout) const {
    if (const auto application = findRunningApplication(applications_, layout.appName)) {
        control_.applyWindowLayout(layout, *application);
    } else {
        diagnostic({"App ", layout.appName, " not found for layout restoration"});
    }
}

void LayoutRestoration::maximize(WindowLayout layout) const {
    layout.isFullscreen = false;
    const auto screens = displays_.screens();
    if (!screens.empty()) layout.frame = screens.front().visibleFrame;
    apply(layout);
    diagnostic(
        {"Applied ", layout.appName, " as maximized instead of fullscreen (macOS limitation)"});
}

void LayoutRestoration::applyWindowLayouts(const std::vector<WindowLayout>& layouts,
                                           std::string_view fullscreenPriority,
                                           const FullscreenConflict& onConflict) const {
    std::vector<WindowLayout> fullscreen;
    for (const auto& layout : layouts) {
        if (layout.isFullscreen) {
            fullscreen.push_back(layout);
        } else {
            apply(layout);
        }
    }
    if (fullscreen.empty()) return;
    if (fullscreen.size() == 1) return apply(fullscreen.front());

    const bool lastCounts = fullscreenPriority == "last";
    const auto& chosen = lastCounts ? fullscreen.back() : fullscreen.front();
    diagnostic(
        {"Prioritizing fullscreen for ", lastCounts ? "LAST" : "FIRST", " app: ", chosen.appName});
    onConflict(chosen);
    apply(chosen);
    for (const auto& layout : fullscreen) {
        if (layout.appName != chosen.appName) maximize(layout);
    }
}

} // namespace corvane
