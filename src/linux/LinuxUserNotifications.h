#pragma once

#include "platform/MainQueue.h"
#include "platform/UserNotifications.h"

namespace corvane {

/// The desktop's notifications. A freedesktop desktop asks the user for no permission: it is always
/// given.
class LinuxUserNotifications final : public UserNotifications {
public:
    explicit LinuxUserNotifications(MainQueue& mainQueue) : mainQueue_(mainQueue) {}

    void
    requestAuthorization(std::function<void(bool granted, std::optional<Error>)> handler) override {
        mainQueue_.async([handler = std::move(handler)] { handler(true, std::nullopt); });
    }

private:
    MainQueue& mainQueue_;
};

} // namespace corvane
