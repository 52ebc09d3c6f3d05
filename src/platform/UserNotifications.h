#pragma once

#include "foundation/Result.h"

#include <functional>
#include <optional>

namespace corvane {

/// UNUserNotificationCenter currentNotificationCenter. Main thread.
class UserNotifications {
public:
    virtual ~UserNotifications() = default;
    /// requestAuthorizationWithOptions: of alert and sound. The handler is called once, later, on
    /// any thread.
    virtual void
    requestAuthorization(std::function<void(bool granted, std::optional<Error>)> handler) = 0;
};

} // namespace corvane
