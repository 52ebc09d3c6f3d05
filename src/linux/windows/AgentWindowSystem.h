#pragma once

#include "linux/windows/Agent.h"
#include "linux/windows/AgentAnswers.h"

#include <map>
#include <memory>
#include <mutex>

namespace corvane {

/// A compositor with an agent of ours inside. Its identifiers of windows may be too long for a
/// number, so each gets one when it is first seen. Who is connected isn't told.
class AgentWindowSystem final : public WindowSystem {
public:
    /// `xServer` is the session's, asked for what only it knows of X11 clients; null where there is
    /// none.
    AgentWindowSystem(std::unique_ptr<Agent> agent, std::unique_ptr<WindowSystem> xServer);

    /// The agent's compositor shows this session, whether the agent answers or not.
    bool isHere(Deadline by);

    bool isReady(Deadline by) override;
    Abilities abilities(Deadline by) override;
    std::string switchOn(Deadline by) override;
    std::optional<WindowsNow> windows(Deadline by) override;
    std::optional<ManagedWindow> window(const WindowRef& window, Deadline by) override;
    std::optional<std::vector<Monitor>> monitors(Deadline by) override;
    WindowAnswer place(const WindowRef& window, const FrameWish& wish, Deadline by) override;
    WindowAnswer setFullscreen(const WindowRef& window, bool on, Deadline by) override;
    WindowAnswer setMaximized(const WindowRef& window, bool on, Deadline by) override;
    WindowAnswer activate(const WindowRef& window, Deadline by) override;
    WindowAnswer askToClose(std::span<const WindowRef> windows, Deadline by) override;

private:
    /// An answer with numbers, and with what the agent doesn't know of X11 clients.
    std::optional<Told> understood(const std::optional<std::string>& answer, Deadline by);
    std::optional<Told> list(Deadline by);
    void giveNumbers(Told& told);
    /// Both: `done` where the window is there, and then as it is now.
    WindowAnswer look(const WindowRef& window, ToldWindow& now, Deadline by);
    WindowAnswer act(const Deed& deed, ToldWindow& now, Deadline by);
    void keepPlaced(const WindowRef& window, const PixelRect& frame, Deadline by);

    std::mutex mutex_;
    const std::unique_ptr<Agent> agent_;
    const std::unique_ptr<WindowSystem> xServer_;
    std::map<std::string, std::uint64_t> numbers_;
    std::uint64_t lastNumber_ = 0;
};

} // namespace corvane
