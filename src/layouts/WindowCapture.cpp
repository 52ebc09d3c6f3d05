#include "layouts/WindowCapture.h"

#include "foundation/Diagnostics.h"
#include "layouts/ScreenInfo.h"
#include "layouts/WindowFrame.h"

#include <utility>

namespace corvane {

namespace {

constexpr double smallestSide = 50.0;

bool isLargeEnough(const WindowInfo& window) {
    const auto& bounds = window.bounds;
    return bounds && bounds->width && bounds->height && *bounds->width > smallestSide &&
           *bounds->height > smallestSide;
}

void tellSaved(const WindowInfo& window, const WindowLayout& layout, std::int32_t pid) {
    diagnostic({"Saved window '", window.name.value_or("Untitled"), "' for ", layout.appName, ": ",
                describedFrame(layout.frame),
                " - Fullscreen: ", layout.isFullscreen ? "true" : "false",
                ", Layer: ", std::to_string(window.layer.value_or(-1)),
                ", Owner PID: ", std::to_string(window.ownerPID.value_or(-1)),
                " vs App PID: ", std::to_string(pid)});
}

} // namespace

std::optional<std::vector<WindowInfo>>
WindowCapture::windowsForApplication(const RunningApplication& application) const {
    const auto onScreen = windowList_.onScreenWindows();
    if (!onScreen) return std::nullopt;
    const auto appName = application.localizedName.value_or("");
    const FullscreenDetection detection(displays_, accessibility_);
    std::vector<WindowInfo> owned;
    std::vector<WindowInfo> potential;
    for (const auto& window : *onScreen) {
        if (!isLargeEnough(window)) continue;
        const auto& bounds = *window.bounds;
        if (window.ownerPID == application.processIdentifier) {
            owned.push_back(window);
        } else if (detection.isPotentialFullscreenWindow(window.layer.value_or(0), *bounds.width,
                                                         *bounds.height, bounds.x.value_or(0),
                                                         bounds.y.value_or(0))) {
            potential.push_back(window);
        } else if (window.ownerName.value_or("") == appName) {
            owned.push_back(window);
        }
    }
    if (!owned.empty()) return owned;
    if (potential.empty()) return std::nullopt;
    diagnostic({"No regular windows found for ", appName, ", checking ",
                std::to_string(potential.size()), " potential fullscreen windows"});
    diagnostic(
        {"Attributing potential fullscreen window to ", appName, " (no other windows found)"});
    return std::vector{potential.front()};
}

std::vector<WindowInfo> WindowCapture::chosenWindows(std::vector<WindowInfo> windows,
                                                     const std::string& displayName) const {
    FullscreenDetection detection(displays_, accessibility_);
    std::vector<WindowInfo> regular;
    std::vector<WindowInfo> fullscreen;
    for (auto& window : windows) {
        const bool isFullscreen = detection.isWindowFullscreen(window);
        if (isFullscreen) diagnostic({"Found fullscreen window for ", displayName});
        (isFullscreen ? fullscreen : regular).push_back(std::move(window));
    }
    if (regular.empty()) {
        diagnostic({displayName, " only has fullscreen windows - saving those"});
        return fullscreen;
    }
    if (!fullscreen.empty()) {
        diagnostic(
            {displayName,
             " has both regular and fullscreen windows - saving only regular windows to avoid conflicts"});
    }
    return regular;
}

std::vector<WindowLayout> WindowCapture::capture(const RunningApplication& application,
                                                 const std::string& name) const {
    auto windows = windowsForApplication(application);
    if (!windows) return {};
    const auto displayName = application.localizedName.value_or(name);
    const auto pid = application.processIdentifier;
    diagnostic({"Processing app: ", displayName, " (PID: ", std::to_string(pid), ")"});
    diagnostic({"Found ", std::to_string(windows->size()), " windows for ", displayName});
    // Asked once more: a window may have changed since the choice.
    FullscreenDetection detection(displays_, accessibility_);
    std::vector<WindowLayout> layouts;
    for (const auto& window : chosenWindows(std::move(*windows), displayName)) {
        const auto frame = windowFrame(window);
        if (!frame) continue;
        const auto screen = screenIndexForFrame(*frame, displays_.screens());
        layouts.push_back({.appName = displayName,
                           .frame = *frame,
                           .isFullscreen = detection.isWindowFullscreen(window),
                           .isMinimized = false,
                           .screen = screen,
                           .tilingWorkspace = window.tilingWorkspace});
        tellSaved(window, layouts.back(), pid);
    }
    return layouts;
}

} // namespace corvane
