#pragma once

#include "desktop/harness/Screen.h"
#include "linux/windows/WindowSystem.h"

#include <functional>
#include <map>
#include <memory>
#include <ostream>
#include <string>
#include <vector>

namespace corvane {

/// How a client of the tests shows its one window.
struct ClientWishes {
    /// The window's name in a test, and its title.
    std::string title;
    PixelSize size = {300, 200};
    PixelSize least = {}, step = {};
    /// The title of a dialog that it shows above the window; none where empty.
    std::string dialog = {};
    enum class AtClose { closes, ignores, takesNoRequest } atClose = AtClose::closes;
};

using ByHand = desktop::Deed;

/// What stops and goes on.
enum class Part { client, manager, server };

/// What not every window system has, so that what is about it is left out there.
enum class Feature {
    /// Tells which window a dialog belongs to.
    owners,
    minimizing,
    maximizing,
    shading,
    workspaces,
    tiling,
    /// What a client says of its least size and its steps holds for placements too.
    sizeLimits,
    sizeSteps,
    /// Leaves a window partly beyond the screen's edge.
    overTheEdge,
    /// Tells which window is above which, also once one was raised.
    order,
    /// Clients that take no request to close.
    unaskable,
    /// Has no panel before one is added.
    bareScreen,
    /// A panel at the top of the first monitor, 30 high, and that it is one of the windows.
    panels,
    panelWindows,
    /// A second monitor, to the right of the first and as large as it.
    secondMonitor,
    /// A manager apart from the server.
    manager,
    /// A client that has stopped doesn't keep its window from being placed.
    placesStoppedClients,
};

/// Longer than the program waits: a machine full of tests is slow.
inline Deadline soon() {
    return std::chrono::steady_clock::now() + std::chrono::seconds(2);
}

/// A desktop of a test's own: it runs as long as this lives, on one monitor of 1440 by 900.
class WindowSession {
public:
    virtual ~WindowSession() = default;
    /// What is tested.
    virtual WindowSystem& system() = 0;
    virtual bool has(Feature feature) const = 0;

    /// Returns the window's process once its window is there.
    virtual pid_t show(const ClientWishes& wishes) = 0;
    /// Programs of other kinds, each with one window, by what is special about them.
    virtual std::map<std::string, pid_t> showOthers() { return {}; }
    /// Programs in process spaces of their own, by their titles: the process that made the space.
    virtual std::map<std::string, pid_t> showConfined() { return {}; }
    /// The visible frame as "x,y wxh", read by other means than the system that is tested.
    virtual std::string seen(const WindowRef& window) = 0;
    /// What it does comes true a little later, if this desktop does it to such a window at all.
    virtual void act(const WindowRef& window, ByHand deed) = 0;
    virtual void stop(Part part, const WindowRef& window) = 0;
    virtual void goOn(Part part, const WindowRef& window) = 0;
    /// Ends the desktop, and starts another one in its place.
    virtual void end() = 0;
    virtual void startAgain() = 0;
    virtual void addPanel() {}
    /// It is the primary one then, where there is such a one, if it has a scale of its own.
    virtual void addSecondMonitor(double /*scale*/ = 1) {}
};

/// A desktop that this machine has.
struct SessionKind {
    std::string name;
    std::function<std::unique_ptr<WindowSession>()> start;
};
/// Else a failed test is told with the bytes of it.
inline void PrintTo(const SessionKind& kind, std::ostream* out) {
    *out << kind.name;
}

std::unique_ptr<WindowSession> startMemorySession();
/// Of that window manager, "kwin_wayland", "gnome-shell", "sway" or "labwc". The extension for
/// GNOME lies in XDG_DATA_HOME and is that of the running program.
std::unique_ptr<WindowSession> startSession(const std::string& command, bool isExtensionOn = true);

/// What starts a client of that kind.
std::vector<std::string> clientWords(const ClientWishes& wishes);
/// What a shell command prints.
std::string outputOf(const std::string& command);

std::vector<SessionKind> sessionsOfThisMachine();

/// "x,y wxh".
std::string frameText(const PixelRect& frame);

} // namespace corvane
