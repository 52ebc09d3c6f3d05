#pragma once

#include "linux/windows/WindowSystem.h"

#include <mutex>

namespace corvane {

/// A window system that is asked anew only where its last answer is older than 50 ms, that about
/// monitors than 250, or something has been requested since that may change it, for those who put
/// many questions in one go. Whoever decides over the end of a process asks the bare system.
class RecentWindows final : public WindowSystem {
public:
    /// The system outlives this.
    explicit RecentWindows(WindowSystem& system,
                           std::chrono::milliseconds lifetime = std::chrono::milliseconds(50))
        : system_(system), windows_{lifetime}, monitors_{5 * lifetime} {}

    bool isReady(Deadline by) override;
    Abilities abilities(Deadline by) override { return system_.abilities(by); }
    std::string switchOn(Deadline by) override { return system_.switchOn(by); }
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
    std::string beginLaunch(const Launch& launch, Deadline by) override {
        return system_.beginLaunch(launch, by);
    }
    void endLaunch(const std::string& token, Deadline by) override { system_.endLaunch(token, by); }

private:
    template <typename Value>
    struct Reading {
        std::chrono::milliseconds lifetime;
        std::optional<Value> value = {};
        std::chrono::steady_clock::time_point came = {};
    };
    template <typename Value>
    bool isRecent(const Reading<Value>& reading) const;
    template <typename Value, typename Read>
    std::optional<Value> recent(Reading<Value>& reading, Read&& read);
    WindowAnswer changed(WindowAnswer answer);
    WindowAnswer showed(WindowAnswer answer);

    WindowSystem& system_;
    std::mutex mutex_;
    Reading<WindowsNow> windows_;
    Reading<std::vector<Monitor>> monitors_;
};

} // namespace corvane
