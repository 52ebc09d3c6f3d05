#pragma once

#include "linux/windows/kwin/KWinAnswers.h"
#include "linux/windows/kwin/KWinScripting.h"

#include <map>
#include <memory>
#include <mutex>
#include <string>

namespace corvane::kwin {

/// The KWin that shows this session, of Plasma 5.27 or 6. Its identifiers of windows are too long
/// for a number, so each gets one when it is first seen. It doesn't tell who is connected.
class KWinWindowSystem final : public WindowSystem {
public:
    /// `xServer` is the session's, asked for what only it knows of X11 clients; null where there is
    /// none.
    explicit KWinWindowSystem(std::unique_ptr<WindowSystem> xServer);

    bool isReady(Deadline by) override;
    Abilities abilities(Deadline by) override;
    std::optional<WindowsNow> windows(Deadline by) override;
    std::optional<ManagedWindow> window(const WindowRef& window, Deadline by) override;
    std::optional<std::vector<Monitor>> monitors(Deadline by) override;
    WindowAnswer place(const WindowRef& window, const FrameWish& wish, Deadline by) override;
    WindowAnswer setFullscreen(const WindowRef& window, bool on, Deadline by) override;
    WindowAnswer setMaximized(const WindowRef& window, bool on, Deadline by) override;
    WindowAnswer activate(const WindowRef& window, Deadline by) override;
    WindowAnswer askToClose(std::span<const WindowRef> windows, Deadline by) override;

private:
    std::optional<Told> list(Deadline by);
    void giveNumbers(Told& told);
    /// Both: `done` where the window is there, and then as it is now.
    WindowAnswer look(const WindowRef& window, ToldWindow& now, Deadline by);
    WindowAnswer ask(const std::string& question, ToldWindow& now, Deadline by);

    std::mutex mutex_;
    const std::unique_ptr<WindowSystem> xServer_;
    Scripting scripting_;
    std::map<Uuid, std::uint64_t> numbers_;
    std::uint64_t lastNumber_ = 0;
};

} // namespace corvane::kwin
