#pragma once

#include "linux/installed/InstalledApplication.h"
#include "linux/system/ProcessFacts.h"
#include "linux/windows/WindowSystem.h"

#include <vector>

/// Which of the installed applications something is of: null where nothing fits. Among equals shown
/// ones come first. Nothing but the arguments is looked at.
namespace corvane {

/// The one that a window itself names: by its desktop file, then by its class and identifier. In a
/// sandbox only the sandbox's own entries count, and the sandbox's identifier where it names none.
const InstalledApplication* applicationNamedBy(const ApplicationHints& hints,
                                               const ProcessFacts& process,
                                               const std::vector<InstalledApplication>& installed);

/// The one that a process was started as: by the entry that its launcher named, then by its
/// program.
const InstalledApplication*
applicationStartedAs(const ProcessFacts& process,
                     const std::vector<InstalledApplication>& installed);

/// The only one whose program has that name, as toolkits name windows by it; null where others run
/// it too.
const InstalledApplication* onlyApplicationOf(const std::string& program,
                                              const std::vector<InstalledApplication>& installed);

/// An application's share of a process.
struct ProcessShare {
    /// Null for what is of no installed application.
    const InstalledApplication* application = nullptr;
    /// Bottom to top.
    std::vector<ManagedWindow> windows;
};

/// Divides the windows of one process, given bottom to top, among the applications that they name,
/// the oldest window's first. What names none is of the same application as the window that it
/// belongs to, else as the process's oldest window.
std::vector<ProcessShare> sharesOf(const ProcessFacts& process,
                                   const std::vector<ManagedWindow>& windows,
                                   const std::vector<InstalledApplication>& installed);

/// An ordinary window of the taskbar that isn't shown for another process's window, as the dialogs
/// of a file chooser are.
bool isMain(const ManagedWindow& window, const std::vector<ManagedWindow>& all);

} // namespace corvane
