#pragma once

namespace corvane {

class ApplicationObject;
class MenuBarManager;
class WorkspaceStore;

/// Receives the desktop's events of the application. Main thread.
class AppDelegate {
public:
    explicit AppDelegate(ApplicationObject& application) : application_(application) {}

    /// Both are empty until the first window has appeared.
    MenuBarManager* menuBarManager = nullptr;
    WorkspaceStore* workspaceStore = nullptr;

    /// Each of them makes the status item, if there is none yet and something to make it.
    void applicationDidFinishLaunching();
    void applicationDidBecomeActive();

    /// A click on the application's icon. Brings the first window that isn't a sheet forward and
    /// returns false; true leaves the rest to the desktop, which shows or makes the main window.
    bool applicationShouldHandleReopen(bool hasVisibleWindows);
    bool applicationShouldTerminateAfterLastWindowClosed() const;
    /// The process is about to end: saves the layouts of the running workspaces, if the user wants
    /// that, and the workspaces where the last save failed.
    void applicationWillTerminate();

private:
    void autoSaveRunningLayouts();

    ApplicationObject& application_;
};

} // namespace corvane
