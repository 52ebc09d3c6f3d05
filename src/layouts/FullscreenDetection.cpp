#include "layouts/FullscreenDetection.h"

#include "foundation/Diagnostics.h"
#include "layouts/WindowFrame.h"

#include <algorithm>
#include <cmath>
#include <string>

namespace corvane {

namespace {

constexpr double exactFitTolerance = 1.0;
constexpr double nearFullRatio = 0.98;
constexpr double originWindowRatio = 0.95;
constexpr double accessibilityMatchTolerance = 5.0;
constexpr double originTolerance = 50.0;
constexpr Rect defaultDisplay{0, 0, 1920, 1080};

bool areClose(double a, double b, double tolerance) {
    return std::abs(a - b) <= tolerance;
}

bool covers(const Rect& frame, const Display& screen, double ratio) {
    return frame.width >= screen.frame.width * ratio && frame.height >= screen.frame.height * ratio;
}

/// A window left of or above the primary display fits too: its position has no lower bound.
bool fitsExactly(const Rect& frame, const Display& screen) {
    return areClose(frame.width, screen.frame.width, exactFitTolerance) &&
           areClose(frame.height, screen.frame.height, exactFitTolerance) &&
           frame.x <= exactFitTolerance && frame.y <= exactFitTolerance;
}

bool isSpecialLevel(std::int64_t layer) {
    return layer == 0 || layer == 1000 || layer == 2000;
}

bool isFullscreenByBounds(const Rect& frame, std::int64_t layer,
                          const std::vector<Display>& screens) {
    const auto anyScreen = [&](auto fits) { return std::ranges::any_of(screens, fits); };
    if (layer == 0 && anyScreen([&](const auto& screen) { return fitsExactly(frame, screen); })) {
        diagnostic({"Fullscreen detected: Layer 0 + full screen coverage (",
                    std::to_string(static_cast<std::int64_t>(frame.width)), "x",
                    std::to_string(static_cast<std::int64_t>(frame.height)), ")"});
        return true;
    }
    if (isSpecialLevel(layer) &&
        anyScreen([&](const auto& screen) { return covers(frame, screen, nearFullRatio); })) {
        diagnostic({"Fullscreen detected: Special level (", std::to_string(layer),
                    ") + near-full dimensions"});
        return true;
    }
    return frame.x == 0.0 && frame.y == 0.0 &&
           anyScreen([&](const auto& screen) { return covers(frame, screen, originWindowRatio); });
}

} // namespace

bool FullscreenDetection::isPotentialFullscreenWindow(std::int64_t layer, double width,
                                                      double height, double x, double y) const {
    if (layer >= 0) return false;
    const auto main = displays_.mainScreen();
    const auto& screen = main ? main->frame : defaultDisplay;
    return width >= screen.width && height >= screen.height && std::abs(x) < originTolerance &&
           std::abs(y) < originTolerance;
}

bool FullscreenDetection::isWindowFullscreen(const WindowInfo& window) {
    const auto frame = windowFrame(window);
    if (!frame) return false;
    const auto layer = window.layer.value_or(0);
    // A tiler may give a window all of the screen that isn't fullscreen.
    const bool isTiled = window.tilingWorkspace.has_value();
    if (!isTiled && isFullscreenByBounds(*frame, layer, displays_.screens())) return true;
    if (isFullscreenByAccessibility(window, *frame)) return true;
    diagnostic(
        {"Not fullscreen: layer=", std::to_string(layer), ", frame=", describedFrame(*frame)});
    return false;
}

bool FullscreenDetection::isFullscreenByAccessibility(const WindowInfo& window, const Rect& frame) {
    if (!window.ownerPID || !window.number) return false;
    const auto close = [](double a, double b) {
        return areClose(a, b, accessibilityMatchTolerance);
    };
    return std::ranges::any_of(elementsOf(*window.ownerPID), [&](const Element& element) {
        return close(element.frame.x, frame.x) && close(element.frame.y, frame.y) &&
               close(element.frame.width, frame.width) &&
               close(element.frame.height, frame.height) &&
               accessibility_.isFullscreen(element.window).value_or(false);
    });
}

// Walked anew for each of its windows, an application with many would keep the user waiting.
const std::vector<FullscreenDetection::Element>&
FullscreenDetection::elementsOf(std::int32_t processIdentifier) {
    const auto [found, isNew] = elements_.try_emplace(processIdentifier);
    if (!isNew) return found->second;
    const auto windows = accessibility_.windows(processIdentifier);
    for (const auto& window : windows.value_or(std::vector<AccessibilityWindow>())) {
        const auto position = accessibility_.position(window);
        const auto size = accessibility_.size(window);
        if (!position || !size) continue;
        found->second.push_back({window, {position->x, position->y, size->width, size->height}});
    }
    return found->second;
}

} // namespace corvane
