#pragma once

#include <string>
#include <vector>

namespace corvane {

/// One of NSApplication's windows.
struct ApplicationWindow {
    int identifier = 0;
    bool isSheet = false;
};

/// NSApplication: its windows and its end. Main thread.
class ApplicationObject {
public:
    virtual ~ApplicationObject() = default;
    /// Every window that hasn't been closed, hidden ones included, in the order in which they were
    /// made.
    virtual std::vector<ApplicationWindow> windows() const = 0;
    /// makeKeyAndOrderFront: and orderFrontRegardless.
    virtual void bringToFront(int windowIdentifier) = 0;
    /// Makes a new main window, as the scene does.
    virtual void openMainWindow() = 0;
    /// terminate: asks the delegate and ends the main loop.
    virtual void terminate() = 0;
};

} // namespace corvane
