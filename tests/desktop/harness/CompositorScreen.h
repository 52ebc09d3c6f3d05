#pragma once

#include "desktop/harness/Screen.h"

namespace corvane::desktop {

/// A Wayland compositor: one answer tells all of its windows.
class CompositorScreen : public Screen {
public:
    std::vector<Window> windows() const override;
    bool isViewable(const Window& window) const override;
    std::string look(const Window& window) const override;
    std::string front() const override;
    int workspace() const override;
    bool hasHands() const override { return false; }
    std::vector<std::string> panel() const override { return {"swaybg", "-c", "#345678"}; }

protected:
    /// The number of the workspace, and then a line for each window, with a tab between: id,
    /// process, class, look, "seen" or "", "front" or "", title.
    virtual std::string told() const = 0;

private:
    struct Line {
        Window window;
        std::string look;
        bool isSeen = false, isInFront = false;
    };
    std::vector<Line> lines() const;
    Line find(const Window& window) const;
};

/// Starts a compositor that hands a command of the shell on to its session; the command tells where
/// the displays are.
std::unique_ptr<Process> startCompositor(Surroundings& around,
                                         const std::vector<std::string>& command);
/// Before it, for one whose X server ends with its last client, and lets a window escape that comes
/// before its manager.
inline constexpr auto keepXServer =
    "xprop -root -spy >/dev/null & "
    "until xprop -root _NET_SUPPORTING_WM_CHECK | grep -q 0x; do sleep 0.05; done; ";
inline constexpr auto reportDisplays = R"(echo "$WAYLAND_DISPLAY $DISPLAY $XAUTHORITY" >&3)";

} // namespace corvane::desktop
