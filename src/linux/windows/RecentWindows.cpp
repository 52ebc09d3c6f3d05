#include "linux/windows/RecentWindows.h"

#include <algorithm>

namespace corvane {

template <typename Value>
bool RecentWindows::isRecent(const Reading<Value>& reading) const {
    return reading.value && std::chrono::steady_clock::now() - reading.came < reading.lifetime;
}

template <typename Value, typename Read>
std::optional<Value> RecentWindows::recent(Reading<Value>& reading, Read&& read) {
    const std::lock_guard lock(mutex_);
    if (!isRecent(reading)) {
        reading.value = read();
        reading.came = std::chrono::steady_clock::now();
    }
    return reading.value;
}

/// What was read while the request was on its way may be from before it.
WindowAnswer RecentWindows::changed(WindowAnswer answer) {
    const std::lock_guard lock(mutex_);
    windows_.value.reset();
    return answer;
}

/// Another workspace may be shown by now, with other panels.
WindowAnswer RecentWindows::showed(WindowAnswer answer) {
    const std::lock_guard lock(mutex_);
    windows_.value.reset();
    monitors_.value.reset();
    return answer;
}

/// Who asks for this goes on to the windows.
bool RecentWindows::isReady(Deadline by) {
    const auto now = windows(by);
    return now && now->isReady;
}

std::optional<WindowsNow> RecentWindows::windows(Deadline by) {
    return recent(windows_, [&] { return system_.windows(by); });
}

std::optional<ManagedWindow> RecentWindows::window(const WindowRef& window, Deadline by) {
    {
        const std::lock_guard lock(mutex_);
        if (isRecent(windows_)) {
            const auto& all = windows_.value->windows;
            const auto found = std::ranges::find(all, window, &ManagedWindow::window);
            if (found != all.end()) return *found;
        }
    }
    return system_.window(window, by);
}

std::optional<std::vector<Monitor>> RecentWindows::monitors(Deadline by) {
    return recent(monitors_, [&] { return system_.monitors(by); });
}

WindowAnswer RecentWindows::place(const WindowRef& window, const FrameWish& wish, Deadline by) {
    return changed(system_.place(window, wish, by));
}

WindowAnswer RecentWindows::setFullscreen(const WindowRef& window, bool on, Deadline by) {
    return changed(system_.setFullscreen(window, on, by));
}

WindowAnswer RecentWindows::setMaximized(const WindowRef& window, bool on, Deadline by) {
    return changed(system_.setMaximized(window, on, by));
}

WindowAnswer RecentWindows::setTilingWorkspace(const WindowRef& window,
                                               const std::string& workspace, Deadline by) {
    return showed(system_.setTilingWorkspace(window, workspace, by));
}

WindowAnswer RecentWindows::activate(const WindowRef& window, Deadline by) {
    return showed(system_.activate(window, by));
}

WindowAnswer RecentWindows::askToClose(std::span<const WindowRef> windows, Deadline by) {
    return changed(system_.askToClose(windows, by));
}

} // namespace corvane
