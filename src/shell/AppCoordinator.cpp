#include "shell/AppCoordinator.h"

#include "core/WorkspaceStore.h"
#include "platform/MainQueue.h"
#include "platform/NotificationCenter.h"

namespace corvane {

void AppCoordinator::relayChanges(WorkspaceStore& store, MainQueue& mainQueue,
                                  NotificationCenter& notificationCenter) {
    cancellables_.push_back(store.objectWillChange.subscribe([&mainQueue, &notificationCenter] {
        mainQueue.async(
            [&notificationCenter] { notificationCenter.post("WorkspaceStoreDidChange"); });
    }));
}

} // namespace corvane
