#pragma once

#include "linux/windows/sway/SwaySocket.h"
#include "linux/windows/sway/SwayTree.h"

#include <memory>
#include <mutex>

namespace corvane::sway {

/// The sway that shows this session. Floating windows are placed to the pixel and stay on their
/// workspace where that is there; tiled ones and the scratchpad's are refused, a tiled one
/// but for its workspace, and nothing is maximized. It doesn't tell who is connected.
class SwayWindowSystem final : public WindowSystem {
public:
    /// `xServer` is the session's, asked for what only it knows of X11 clients; null where there is
    /// none.
    explicit SwayWindowSystem(std::unique_ptr<WindowSystem> xServer);

    bool isReady(Deadline by) override;
    Abilities abilities(Deadline by) override;
    std::optional<WindowsNow> windows(Deadline by) override;
    std::optional<ManagedWindow> window(const WindowRef& window, Deadline by) override;
    std::optional<std::vector<Monitor>> monitors(Deadline by) override;
    WindowAnswer place(const WindowRef& window, const FrameWish& wish, Deadline by) override;
    WindowAnswer setFullscreen(const WindowRef& window, bool on, Deadline by) override;
    WindowAnswer setMaximized(const WindowRef& window, bool on, Deadline by) override;
    WindowAnswer setTilingWorkspace(const WindowRef& window, const std::string& workspace,
                                    Deadline by) override;
    WindowAnswer activate(const WindowRef& window, Deadline by) override;
    WindowAnswer askToClose(std::span<const WindowRef> windows, Deadline by) override;

private:
    std::optional<std::string> ask(Question question, std::string_view words, Deadline by);
    std::optional<Tree> tree(Deadline by);
    /// `done` where it is there, and then as it is now.
    WindowAnswer look(const WindowRef& window, TreeWindow& now, Deadline by);
    /// Keeps `now` up to date.
    std::optional<PixelRect> frameAtRest(TreeWindow& now, const PixelRect& aim, Deadline by);
    void keepFilling(const TreeWindow& filling, Deadline by);
    WindowAnswer moveTo(const TreeWindow& start, const FrameWish& wish, Deadline by);

    std::mutex mutex_;
    const std::unique_ptr<WindowSystem> xServer_;
    /// The process at the display; 0 where it isn't of this machine and process space.
    std::optional<pid_t> compositor_;
};

} // namespace corvane::sway
