#pragma once

#include "foundation/Rect.h"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace corvane {

struct Point {
    double x = 0;
    double y = 0;

    bool operator==(const Point&) const = default;
};

struct Size {
    double width = 0;
    double height = 0;

    bool operator==(const Size&) const = default;
};

/// AXUIElement of one window. The window may have gone; then reads give nothing and sets an error.
struct AccessibilityWindow {
    std::int32_t processIdentifier = 0;
    std::uint64_t identifier = 0;

    bool operator==(const AccessibilityWindow&) const = default;
};

/// What came of each of the two: 0, or the error's code.
struct FrameCodes {
    int position = 0, size = 0;

    bool operator==(const FrameCodes&) const = default;
};

/// What can be done on the desktop that is there.
struct DesktopFacts {
    /// For a person: "GNOME (Wayland)".
    std::string name = {};
    /// It tells which windows there are. Where it doesn't, it isn't known which applications run.
    bool tellsWindows = false;
    bool placesWindows = false;
    /// One sentence for a person on what either of the two needs, or leaves out; or empty.
    std::string whatToDoFirst = {};
};

/// The Accessibility interface. Frames as in WindowInfo: what a person sees, origin at the top left
/// of the primary display, y downward. Main thread; every operation waits for the answer of the
/// other side, half a second at most, and asks once more where there is none; a frame that fills a
/// monitor takes up to four such answers.
class Accessibility {
public:
    virtual ~Accessibility() = default;

    /// A set that went through.
    static constexpr int success = 0;
    /// kAXErrorInvalidUIElement: the window has gone. kAXErrorCannotComplete: no answer in time.
    static constexpr int invalidElement = -25202;
    static constexpr int cannotComplete = -25204;

    /// AXIsProcessTrusted.
    virtual bool isProcessTrusted() = 0;
    virtual DesktopFacts desktop() = 0;
    /// "AXWindows" of the application with that process, front first; nothing on an error.
    virtual std::optional<std::vector<AccessibilityWindow>>
    windows(std::int32_t processIdentifier) = 0;

    /// "AXPosition", "AXSize" and "AXFullScreen"; nothing where the read fails.
    virtual std::optional<Point> position(const AccessibilityWindow& window) = 0;
    virtual std::optional<Size> size(const AccessibilityWindow& window) = 0;
    virtual std::optional<bool> isFullscreen(const AccessibilityWindow& window) = 0;

    /// Sets "AXPosition" and then "AXSize", or "AXFullScreen". 0, or the error's code. A window
    /// that takes only a part of what is asked, by its steps or limits, counts as set. Where
    /// windows are kept to their display, the size is measured against the one of the new position.
    virtual FrameCodes setFrame(const AccessibilityWindow& window, const Rect& frame) = 0;
    virtual int setFullscreen(const AccessibilityWindow& window, bool fullscreen) = 0;
    /// Has a tiler give the window its place on the workspace of that name. 0, or the error's code:
    /// none but a tiled window can be put so.
    virtual int setTilingWorkspace(const AccessibilityWindow& window, const std::string& name) = 0;
};

} // namespace corvane
