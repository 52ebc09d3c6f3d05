#pragma once

#include "foundation/Published.h"

#include <vector>

namespace corvane {

class MainQueue;
class NotificationCenter;
class WorkspaceStore;

/// Relays each change of the store as one notification "WorkspaceStoreDidChange", a turn of the
/// main queue later, when the new value can be read.
class AppCoordinator {
public:
    void relayChanges(WorkspaceStore& store, MainQueue& mainQueue,
                      NotificationCenter& notificationCenter);

private:
    std::vector<Subscription> cancellables_;
};

} // namespace corvane
