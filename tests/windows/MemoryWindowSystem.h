#pragma once

#include "linux/windows/WindowSystem.h"

#include <functional>
#include <string>
#include <vector>

namespace corvane {

/// Windows in memory. Plain data that a test sets and looks at; every request is answered at once,
/// or not at all where something has stopped.
class MemoryWindowSystem : public WindowSystem {
public:
    struct Client {
        ManagedWindow window = {};
        PixelSize least = {}, step = {};
        bool ignoresClose = false, hasStopped = false;
        /// Where it goes back to from fullscreen and maximized.
        PixelRect restored = {};
    };

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

    /// Shows a window on top, with a number and a frame where it has none yet. What it says else
    /// stays as it is.
    ManagedWindow& show(ManagedWindow window);
    /// Null where it is gone.
    Client* find(const WindowRef& window);
    void maximize(Client& client, bool on);
    void fillScreen(Client& client, bool on);

    /// Bottom to top.
    std::vector<Client> clients;
    std::vector<Monitor> screens{{{{0, 0}, {1440, 900}}, {{0, 0}, {1440, 900}}}};
    std::optional<std::uint64_t> active;
    std::string workspace = "1";
    std::set<pid_t> session;
    /// Nothing where it can't tell; else who has windows is added.
    std::optional<std::set<pid_t>> connected = std::set<pid_t>();
    bool tellsProcesses = true;
    bool isThere = true, serverHasStopped = false, managerHasStopped = false;
    /// As of a manager that gives no window the whole screen.
    bool refusesFullscreen = false;
    std::string whatToDoFirst;
    /// How often it was asked for something that a real system would have to be asked for.
    int questions = 0;
    /// The titles of those that were asked to close, in order.
    std::vector<std::string> askedToClose;

private:
    bool answers();
    WindowAnswer change(const WindowRef& window, const std::function<WindowAnswer(Client&)>& act);
    const Monitor& monitorOf(const PixelRect& frame) const;

    std::uint64_t lastNumber_ = 0;
};

} // namespace corvane
