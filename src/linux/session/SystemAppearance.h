#pragma once

#include <atomic>
#include <chrono>
#include <functional>
#include <future>
#include <optional>

using GVariant = struct _GVariant;

namespace corvane {

class EventThread;

/// Whether the user prefers dark or light applications, as the desktop's settings portal says.
class SystemAppearance {
public:
    /// Asks, and listens to later changes. The events end before this goes.
    explicit SystemAppearance(EventThread& events);
    SystemAppearance(const SystemAppearance&) = delete;
    /// What was said last; nothing where there is no portal or no preference. Waits for the first
    /// answer until a tenth of a second after the question. Main thread.
    std::optional<bool> isDark() const;
    /// Calls `told` on the event thread, once, when the portal has said something for the first
    /// time: also where that was before.
    void whenTold(EventThread& events, std::function<void()> told);

private:
    void change(GVariant* parameters);
    void take(GVariant* value);

    /// Of the portal's values: 1 is dark, 2 is light.
    std::atomic<unsigned> colorScheme_ = 0;
    /// Event thread only.
    bool isTold_ = false;
    std::function<void()> told_;
    std::promise<void> answered_;
    std::future<void> answer_ = answered_.get_future();
    std::chrono::steady_clock::time_point deadline_;
};

} // namespace corvane
