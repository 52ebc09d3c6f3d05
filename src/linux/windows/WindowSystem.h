#pragma once

#include <chrono>
#include <cstdint>
#include <optional>
#include <set>
#include <span>
#include <string>
#include <vector>

#include <sys/types.h>

namespace corvane {

/// A call ends by then, also where the server, the manager or a client has stopped.
using Deadline = std::chrono::steady_clock::time_point;
/// As long as an operation of the seam waits.
inline Deadline halfASecondFromNow() {
    return std::chrono::steady_clock::now() + std::chrono::milliseconds(500);
}

/// In the window system's own space: pixels or logical pixels, fractions kept, y downward, one
/// space over all monitors. Only SeamSpace converts.
struct PixelPoint {
    double x = 0, y = 0;
    bool operator==(const PixelPoint&) const = default;
};
struct PixelSize {
    double width = 0, height = 0;
    bool operator==(const PixelSize&) const = default;
};
struct PixelRect {
    PixelPoint origin;
    PixelSize size;
    bool operator==(const PixelRect&) const = default;
};

/// A window for as long as it lives. Where another process has the number by now, it is gone.
struct WindowRef {
    /// A later window of a process has a greater number.
    std::uint64_t number = 0;
    /// By the server's or compositor's word; 0 where that isn't a process of this machine and
    /// process space, or where only the client says it.
    pid_t process = 0;
    auto operator<=>(const WindowRef&) const = default;
};

enum class WindowKind { ordinary, dock, desktop, other };
enum class WindowLayer { below, normal, above };

/// What a client says of its application: any text, of any length a client may send, and no proof.
struct ApplicationHints {
    std::string applicationId = {}, instanceName = {}, className = {}, desktopFile = {};
    std::string sandboxId = {};
    bool operator==(const ApplicationHints&) const = default;
};

struct ManagedWindow {
    WindowRef window = {};
    /// The window that this one belongs to, as a dialog does.
    std::optional<std::uint64_t> owner = {};
    std::optional<std::string> title = {};
    ApplicationHints hints = {};
    WindowKind kind = WindowKind::ordinary;
    WindowLayer layer = WindowLayer::normal;
    /// What a person sees: decorations in, client-side shadows out.
    PixelRect frame = {};
    /// The system's own name of the virtual desktop; empty where it is on all, or there are none.
    std::string workspace = {};
    bool isOnScreen = false, isMinimized = false, isFullscreen = false, isMaximized = false;
    bool isTiled = false, skipsTaskbar = false;
    /// It takes a polite request to close; one that doesn't would be cut off.
    bool canBeAskedToClose = false;
    bool operator==(const ManagedWindow&) const = default;
};

struct WindowsNow {
    /// What isReady() says at that moment.
    bool isReady = true;
    /// It tells whose windows they are. Where it doesn't, all are known by what they say of their
    /// application alone.
    bool tellsProcesses = true;
    /// Bottom to top, at most `mostWindows`.
    std::vector<ManagedWindow> windows;
    std::optional<std::uint64_t> active;
    /// Processes of the session's own: the manager or compositor, and what it says belongs to it.
    std::set<pid_t> session;
    /// Every process that holds a connection to the display; nothing where the system can't tell.
    /// Who can't be told to have left is sent no signal.
    std::optional<std::set<pid_t>> connected;
};

struct Monitor {
    PixelRect frame;
    /// Without panels and docks.
    PixelRect workArea;
    bool operator==(const Monitor&) const = default;
};

/// What of a frame shall change; what isn't named stays.
struct FrameWish {
    std::optional<PixelPoint> origin = {};
    std::optional<PixelSize> size = {};
};

enum class WindowAnswer {
    /// It stands as wished, or as near as the window allows.
    done,
    gone,
    /// The window or its manager doesn't take this: fullscreen, tiled.
    refused,
    /// No answer by the deadline; what was asked may yet come true.
    unanswered,
};

/// A program that is about to be started for the user.
struct Launch {
    /// For people.
    std::string name;
    std::string desktopId;
};

struct Abilities {
    /// For a person: "GNOME (Wayland)".
    std::string desktop;
    bool placesWindows = false, tellsProcesses = false;
    /// One sentence for a person on what to switch on, or what isn't done all the same; or empty.
    std::string whatToDoFirst;
};

inline constexpr std::size_t mostWindows = 4096;

/// The door to whoever shows the windows: an X server with its manager, or a compositor. It holds
/// no judgement of its own: which application a window is of, and who may be asked to quit, is
/// decided above. Any thread; calls wait for one another; nothing throws; a system that went away
/// and came back is found again by the next call. Text from clients never becomes a program.
class WindowSystem {
public:
    virtual ~WindowSystem() = default;

    /// It answers, and can be told what to do. A session that is only half seen isn't ready.
    virtual bool isReady(Deadline by) = 0;
    virtual Abilities abilities(Deadline by) = 0;
    /// Switches on what keeps it from being ready, where a program may do that for its user, and
    /// waits for it. One sentence for a person: what came of it, and what is left to do.
    virtual std::string switchOn(Deadline by) { return abilities(by).whatToDoFirst; }

    /// All windows, in as many round trips as one takes. Nothing where they can't be told by then.
    virtual std::optional<WindowsNow> windows(Deadline by) = 0;
    /// One of them as it is now; nothing where it is gone or can't be told.
    virtual std::optional<ManagedWindow> window(const WindowRef& window, Deadline by) = 0;
    /// Primary first.
    virtual std::optional<std::vector<Monitor>> monitors(Deadline by) = 0;

    /// Refuses a fullscreen or tiled window, and numbers that no frame can have; takes a maximized
    /// or shaded one out of that state; sets place and size, and returns when the frame has come to
    /// rest.
    virtual WindowAnswer place(const WindowRef& window, const FrameWish& wish, Deadline by) = 0;
    /// Return when the state is there.
    virtual WindowAnswer setFullscreen(const WindowRef& window, bool on, Deadline by) = 0;
    virtual WindowAnswer setMaximized(const WindowRef& window, bool on, Deadline by) = 0;
    /// Moves a tiled window to that workspace, which is made where it isn't there; refuses one that
    /// fills the screen on another, any other window, and a name that can't be told.
    virtual WindowAnswer setTilingWorkspace(const WindowRef& /*window*/,
                                            const std::string& /*workspace*/, Deadline) {
        return WindowAnswer::refused;
    }
    /// To the front with the keyboard, from another workspace or out of an icon too.
    virtual WindowAnswer activate(const WindowRef& window, Deadline by) = 0;
    /// Asks each politely, in that order. A window that takes no such request is left alone, and
    /// the answer is then `refused`. Says nothing of whether they close.
    virtual WindowAnswer askToClose(std::span<const WindowRef> windows, Deadline by) = 0;

    /// A token with which that program's first window comes to the front, if no other one is used
    /// before; whoever shows windows is told that it starts. Empty where there is no such thing.
    virtual std::string beginLaunch(const Launch&, Deadline) { return {}; }
    /// That launch is over, however it went. Nothing happens where the program has said so before.
    virtual void endLaunch(const std::string& /*token*/, Deadline) {}
};

} // namespace corvane
