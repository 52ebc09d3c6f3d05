#pragma once

#include "linux/windows/WindowSystem.h"
#include "platform/WindowList.h"

namespace corvane {

class RunningApplications;

/// CGWindowListCopyWindowInfo over the window system: the windows of the current workspace that
/// are neither hidden nor minimized, and behind them the tiled ones of other workspaces. An owner
/// is told by the identifier of its running application. Waits half a second at most.
class LinuxWindowList final : public WindowList {
public:
    /// Both outlive the list.
    LinuxWindowList(WindowSystem& windows, RunningApplications& running)
        : windows_(windows), running_(running) {}

    std::optional<std::vector<WindowInfo>> onScreenWindows() override;

private:
    WindowSystem& windows_;
    RunningApplications& running_;
};

} // namespace corvane
