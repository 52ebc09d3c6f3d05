#pragma once

#include "foundation/Result.h"

#include <functional>
#include <optional>
#include <string>

namespace corvane {

/// UNNotificationRequest with no trigger, its content with no sound.
struct UserNotification {
    std::string identifier;
    std::string title;
    std::string body;
};

/// UNUserNotificationCenter currentNotificationCenter. Main thread.
class UserNotifications {
public:
    virtual ~UserNotifications() = default;
    /// requestAuthorizationWithOptions: of alert and sound. The handler is called once, later, on
    /// any thread.
    virtual void requestAuthorization(std::function<void(Result<void> granted)> handler) = 0;
    /// addNotificationRequest: shows it at once, in the order of the calls, and returns without
    /// waiting. Where that fails, nothing is seen.
    virtual void add(const UserNotification& notification) = 0;
};

} // namespace corvane
