#pragma once

namespace corvane {

class ApplicationObject;
class WorkspaceStore;

/// Receives the desktop's events of the application. Main thread.
class AppDelegate {
public:
    explicit AppDelegate(ApplicationObject& application) : application_(application) {}

    /// Empty until the first window has appeared.
    WorkspaceStore* workspaceStore = nullptr;

    /// A click on the application's icon. Brings the first window that isn't a sheet forward and
    /// returns false; true leaves the rest to the desktop, which shows or makes the main window.
    bool applicationShouldHandleReopen(bool hasVisibleWindows);
    bool applicationShouldTerminateAfterLastWindowClosed() const;
    /// The process is about to end: saves the layouts of the running workspaces, if the user wants
    /// that.
    void applicationWillTerminate();

private:
    void autoSaveRunningLayouts();

    ApplicationObject& application_;
};

} // namespace corvane
