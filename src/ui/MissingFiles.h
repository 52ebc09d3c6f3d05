#pragma once

#include "core/Records.h"
#include "foundation/Published.h"

#include <cstddef>
#include <memory>
#include <set>
#include <string>

namespace corvane {

class BackgroundQueue;
class FileSystem;
class MainQueue;
class WorkspaceStore;

/// Which files, folders and applications of the store's resources aren't where their paths say. The
/// disk is asked in the background, one look at a time; what can't be reached doesn't count as
/// missing. Store, queues and files outlive it. Main thread.
class MissingFiles {
public:
    MissingFiles(WorkspaceStore& store, BackgroundQueue& background, MainQueue& mainQueue,
                 const FileSystem& fileSystem);

    /// Fires before an answer changes.
    ChangeSignal objectWillChange;
    bool contains(const Resource& resource) const;
    /// Looks now and, by itself, whenever the resources have other paths.
    void look();

private:
    void follow();

    WorkspaceStore& store_;
    BackgroundQueue& background_;
    MainQueue& mainQueue_;
    const FileSystem& fileSystem_;
    /// Of the paths that were looked at, as those are many.
    std::size_t looked_ = 0;
    Published<std::set<std::string>> missing_{objectWillChange};
    bool isLooking_ = false;
    bool isWantedAgain_ = false;
    bool isScheduled_ = false;
    /// What comes back later asks by this whether this is still there.
    std::shared_ptr<const bool> alive_ = std::make_shared<const bool>(true);
    Subscription storeChanges_;
};

} // namespace corvane
