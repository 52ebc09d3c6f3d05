#pragma once

#include "desktop/harness/Process.h"

#include <memory>
#include <string>
#include <vector>

namespace corvane::desktop {

/// One window of the window manager's or compositor's list.
struct Window {
    std::string id;
    /// 0 where the window doesn't say.
    pid_t pid = 0;
    /// Both parts of WM_CLASS, with a "." between; an application's id with a "." before it.
    std::string windowClass;
    std::string title;
};

/// What a person or a pager does to a window; `move` is to 333,222.
enum class Deed {
    comeForward,
    fillScreen,
    leaveFullScreen,
    maximize,
    minimize,
    close,
    shade,
    move,
    tile,
    toOtherWorkspace
};

/// Who shows the windows of a desktop, asked and told by other means than the program's own. On one
/// monitor of 1440 by 900, with four workspaces.
class Screen {
public:
    virtual ~Screen() = default;

    virtual std::vector<Window> windows() const = 0;
    virtual bool isViewable(const Window& window) const = 0;
    /// What a person sees of it, decorations in and shadows out: "417,163 533x391", and
    /// " fullscreen" or " maximized" behind that. Empty where it is gone.
    virtual std::string look(const Window& window) const = 0;
    /// The title of the one that has the keyboard.
    virtual std::string front() const = 0;
    /// What it does comes true a little later, if such a window takes it here at all.
    virtual void act(const Window& window, Deed deed) const = 0;
    /// A frame as look() has it.
    virtual void place(const Window& window, const std::string& frame) const = 0;
    /// Workspaces count from 0.
    virtual void goTo(int workspace) const = 0;
    virtual int workspace() const = 0;
    virtual void savePicture(const std::string& file) const = 0;
    /// Whether tests have a pointer and a keyboard here.
    virtual bool hasHands() const = 0;
    /// It is made for tiles: nothing is maximized, and dialogs come into the middle of the screen.
    virtual bool tiles() const { return false; }
    /// It tells whose windows they are.
    virtual bool tellsProcesses() const { return true; }
    /// A panel of that desktop.
    virtual std::vector<std::string> panel() const = 0;
    /// The processes of what shows windows, and of what places them where that is another one.
    virtual pid_t server() const = 0;
    virtual pid_t manager() const { return 0; }
    /// Ends what places windows, where that can be done without ending all.
    virtual void stopManager() {}
};

/// Starts one and tells the surroundings where it is. `program` is the command of an X11 window
/// manager,
/// "kwin_wayland", "gnome-shell", "sway" or "labwc". Throws std::runtime_error where it doesn't
/// come up.
std::unique_ptr<Screen> startScreen(Surroundings& around, const std::string& program);

std::unique_ptr<Screen> startX11Screen(Surroundings& around, const std::string& manager);
std::unique_ptr<Screen> startSwayScreen(Surroundings& around);
std::unique_ptr<Screen> startLabwcScreen(Surroundings& around);
std::unique_ptr<Screen> startKWinScreen(Surroundings& around);
std::unique_ptr<Screen> startGnomeScreen(Surroundings& around);

/// An X server without a screen; `name` becomes what DISPLAY is to it.
std::unique_ptr<Process> startXServer(const Surroundings& around, std::string& name);

} // namespace corvane::desktop
