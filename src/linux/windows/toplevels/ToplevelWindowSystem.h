#pragma once

#include "linux/windows/toplevels/ToplevelList.h"

#include <mutex>

namespace corvane::toplevels {

/// A compositor that only lists its windows for others (wlr-foreign-toplevel-management, else
/// ext-foreign-toplevel-list, which takes no requests): it tells no process, no frame, no monitor
/// and no order, and places nothing, so it is never ready. The window with the keyboard counts as
/// the uppermost one. Whether X11 clients take a request to
/// close is the X server's word; as the list doesn't tell which windows are theirs, nothing is
/// asked that is called like one that takes none, and nothing at all while another server than this
/// compositor's is all that can be asked.
class ToplevelWindowSystem final : public WindowSystem {
public:
    /// `xServer` is the session's; null where there is none.
    explicit ToplevelWindowSystem(std::unique_ptr<WindowSystem> xServer);

    /// The compositor of this session lists its windows for others.
    bool isHere(Deadline by);

    bool isReady(Deadline) override { return false; }
    Abilities abilities(Deadline by) override;
    std::optional<WindowsNow> windows(Deadline by) override;
    std::optional<ManagedWindow> window(const WindowRef& window, Deadline by) override;
    std::optional<std::vector<Monitor>> monitors(Deadline) override { return std::nullopt; }
    WindowAnswer place(const WindowRef& window, const FrameWish& wish, Deadline by) override;
    WindowAnswer setFullscreen(const WindowRef& window, bool on, Deadline by) override;
    WindowAnswer setMaximized(const WindowRef& window, bool on, Deadline by) override;
    WindowAnswer activate(const WindowRef& window, Deadline by) override;
    WindowAnswer askToClose(std::span<const WindowRef> windows, Deadline by) override;

private:
    bool isListed(Deadline by);
    std::optional<WindowsNow> read(Deadline by);
    bool spareXClients(std::vector<ManagedWindow>& windows, Deadline by);
    /// Null where it is gone.
    const Toplevel* find(const WindowRef& window) const;
    /// Puts a window into a state, told by `is`, by a request.
    WindowAnswer change(const WindowRef& window, bool Toplevel::* is, bool on,
                        void (*request)(Handle*), Deadline by);

    std::mutex mutex_;
    const std::unique_ptr<WindowSystem> xServer_;
    std::uint64_t lastNumber_ = 0;
    std::unique_ptr<ToplevelList> list_;
};

} // namespace corvane::toplevels
