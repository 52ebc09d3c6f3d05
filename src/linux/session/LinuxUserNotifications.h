#pragma once

#include "platform/UserNotifications.h"

namespace corvane {

class EventThread;
class MainQueue;

/// The desktop's notifications, by org.freedesktop.Notifications. A freedesktop desktop asks the
/// user for no permission: it is always given.
class LinuxUserNotifications final : public UserNotifications {
public:
    LinuxUserNotifications(MainQueue& mainQueue, EventThread& events)
        : mainQueue_(mainQueue), events_(events) {}

    void requestAuthorization(std::function<void(Result<void> granted)> handler) override;
    void add(const UserNotification& notification) override;

private:
    MainQueue& mainQueue_;
    EventThread& events_;
};

} // namespace corvane
