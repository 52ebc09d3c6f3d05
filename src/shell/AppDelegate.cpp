#include "shell/AppDelegate.h"

#include "platform/ApplicationObject.h"

#include <algorithm>

namespace corvane {

bool AppDelegate::applicationShouldHandleReopen(bool hasVisibleWindows) {
    if (hasVisibleWindows) return true;
    const auto windows = application_.windows();
    const auto first = std::find_if(windows.begin(), windows.end(),
                                    [](const auto& window) { return !window.isSheet; });
    if (first == windows.end()) return true;
    application_.bringToFront(first->identifier);
    return false;
}

bool AppDelegate::applicationShouldTerminateAfterLastWindowClosed() const {
    return false;
}

} // namespace corvane
