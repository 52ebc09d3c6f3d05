#pragma once

#include "desktop/harness/Controls.h"
#include "desktop/harness/Process.h"
#include "desktop/harness/Screen.h"

#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace corvane::desktop {

/// In screen pixels, from the top left.
struct Point {
    int x = 0;
    int y = 0;
};

/// A whole desktop of its own: who shows the windows, without a screen, a session bus with
/// accessibility, default applications and an empty home folder, whatever else the machine has. All
/// of it goes with the object, and with it whatever was started inside.
class Desktop {
public:
    /// The environment variable WINDOW_MANAGER names the window manager, or the compositor as
    /// startScreen() does; openbox else. Throws std::runtime_error where something doesn't come up.
    Desktop();
    ~Desktop();
    Desktop(const Desktop&) = delete;

    /// A path below the home folder, with the folders above it made.
    std::string home(const std::string& relative) const;
    /// The file of the workspaces, and the one of the preferences.
    std::string workspacesFile() const;
    std::string preferencesFile() const;
    /// Makes the next start one of a user who has seen the introduction.
    void skipIntroduction() const;
    /// Adds a desktop entry to those that are here.
    void install(const std::string& id, const std::string& name, const std::string& exec) const;

    /// Starts Corvane; `prefix` is a command that starts a command.
    Process& startCorvane(const std::vector<std::string>& prefix = {});
    Process& corvane() { return *corvane_; }
    static std::string corvaneProgram();
    /// Starts another program here.
    std::unique_ptr<Process> start(const std::vector<std::string>& command) const {
        return around_.start(command);
    }
    /// Runs a command to its end and gives its standard output and errors.
    std::string run(const std::vector<std::string>& command) const { return around_.run(command); }
    /// One more X server, without a window manager; `name` becomes what DISPLAY is to it.
    std::unique_ptr<Process> startDisplay(std::string& name) const {
        return startXServer(around_, name);
    }

    const std::string& busAddress() const { return around_.bus; }
    const Environment& environment() const { return around_.environment; }
    Screen& screen() { return *screen_; }

    std::vector<Window> windows() const { return screen_->windows(); }
    /// The viewable window of that class whose title has `titlePart` in it. The class is the end of
    /// WM_CLASS, in any case.
    std::optional<Window> window(const std::string& windowClass,
                                 const std::string& titlePart = "") const;
    /// Does it to that window; false where there is none.
    bool act(Deed deed, const std::string& windowClass, const std::string& titlePart = "") const;
    /// The processes on this desktop that run the program of that file name.
    std::vector<pid_t> processes(const std::string& program) const;

    /// The named elements that Corvane shows.
    std::vector<Control> controls() const;
    /// Whether Corvane shows an element with that text in its name.
    bool shows(const std::string& text) const;
    /// Clicks on the enabled control of that name as soon as it stands still, or presses it as
    /// assistive programs do where there is no pointer; false where there is none for 20 seconds.
    /// Of several it takes the last, and only one in the place of an element named `inside` if
    /// there is such a name.
    bool press(const std::string& name, const std::string& inside = "") const;
    /// Does the same by what it offers to assistive programs: "Press", "Toggle", "SetFocus", the
    /// first that there is of these or the one that is asked for.
    bool assist(const std::string& name, const std::string& inside = "") const;
    bool act(const std::string& action, const std::string& name,
             const std::string& inside = "") const;
    /// The name of the control that has the keyboard; empty where none has.
    std::string focused() const;
    /// Whether Corvane says something with that text in it to a screen reader soon, or has done so
    /// since this was called with no text.
    bool isAnnounced(const std::string& text) const;
    /// Where `press` would click.
    std::optional<Point> middleOf(const std::string& name, const std::string& inside = "") const;
    /// Drags with the left button, at the pace of a hand.
    void drag(const Point& from, const Point& to) const;
    /// The same, without letting go.
    void carry(const Point& from, const Point& to) const;
    /// Writes into the text of that program's window, by the keyboard where there is one.
    bool type(const Window& window, const std::string& text) const;
    /// Makes it the text of Corvane's first field, as assistive programs do.
    bool write(const std::string& text) const;

    void savePicture(const std::string& file) const;
    /// What all programs of this desktop wrote, Corvane's output last.
    std::string log() const;

private:
    void prepareHome() const;
    void startSession();
    std::optional<Control> find(const std::string& name, const std::string& inside) const;
    /// Brings Corvane's newest window to the front, and gives its identifier.
    std::string raise() const;
    /// A place in that window as it is on the screen: not every window manager tells a program
    /// where it put its window.
    Point asShown(Point place, const std::string& id) const;

    Surroundings around_;
    std::unique_ptr<Process> bus_;
    std::unique_ptr<Screen> screen_;
    std::unique_ptr<Process> corvane_;
    std::unique_ptr<Accessibility> accessibility_;
};

} // namespace corvane::desktop
