#pragma once

#include "foundation/Rect.h"

#include <algorithm>
#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace corvane {

/// One of NSApplication's windows.
struct ApplicationWindow {
    int identifier = 0;
    bool isSheet = false;
    /// canBecomeKeyWindow: it can have the keyboard.
    bool canBecomeKey = true;
};

/// NSApplication: its windows and its end. Main thread. A window that isn't there any more takes no
/// part in what is asked of it.
class ApplicationObject {
public:
    virtual ~ApplicationObject() = default;
    /// The application has the keyboard.
    virtual bool isActive() const = 0;
    /// The main loop has begun.
    virtual bool isRunning() const = 0;
    /// activateIgnoringOtherApps: with true.
    virtual void activate() = 0;

    /// Every window that hasn't been closed, hidden ones included: the main windows, then the
    /// others, each in the order in which they were made.
    virtual std::vector<ApplicationWindow> windows() const = 0;
    /// The first of them that isn't a sheet.
    std::optional<ApplicationWindow> firstWindow() const {
        const auto all = windows();
        const auto first = std::ranges::find(all, false, &ApplicationWindow::isSheet);
        return first == all.end() ? std::nullopt : std::optional(*first);
    }
    virtual void makeKeyAndOrderFront(int windowIdentifier) = 0;
    /// orderFront: and orderFrontRegardless, which leave the keyboard where it is.
    virtual void orderFront(int windowIdentifier) = 0;
    virtual void deminiaturize(int windowIdentifier) = 0;
    /// Makes a new main window, as the scene does.
    virtual void openMainWindow() = 0;
    /// Makes an empty window and shows it in front, centred, with the keyboard. `content` in
    /// points.
    virtual void openEmptyWindow(const std::string& title, const Rect& content) = 0;

    /// Makes the window of the tour through the program, titled and closable but of a fixed size,
    /// and shows it in front, centred, with the keyboard. `content` in points. Closing it, also by
    /// the tour's own end, only hides it and tells `windowWillClose`; makeKeyAndOrderFront brings
    /// it back.
    virtual int openOnboardingWindow(const std::string& title, const Rect& content,
                                     std::function<void()> windowWillClose) = 0;

    /// terminate: asks the delegate and ends the main loop.
    virtual void terminate() = 0;
};

} // namespace corvane
