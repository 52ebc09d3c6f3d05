#include "ui/MissingFiles.h"

#include "core/WorkspaceStore.h"
#include "platform/FileSystem.h"
#include "platform/MainQueue.h"

#include <functional>
#include <utility>

namespace corvane {

namespace {

std::set<std::string> pathsOf(const std::vector<Workspace>& workspaces) {
    std::set<std::string> paths;
    for (const auto& workspace : workspaces) {
        for (const auto& resource : workspace.resources) {
            if (factsOf(resource.type).isInFileSystem) paths.insert(resource.path);
        }
    }
    return paths;
}

std::size_t fingerprint(const std::set<std::string>& paths) {
    std::size_t all = paths.size();
    for (const auto& path : paths)
        all = all * 31 + std::hash<std::string>()(path);
    return all;
}

bool isMissing(const std::string& path, const FileSystem& fileSystem) {
    if (fileSystem.exists(path)) return false;
    const auto stamp = fileSystem.stamp(path);
    return !stamp && stamp.error().isMissing;
}

} // namespace

MissingFiles::MissingFiles(WorkspaceStore& store, BackgroundQueue& background, MainQueue& mainQueue,
                           const FileSystem& fileSystem)
    : store_(store), background_(background), mainQueue_(mainQueue), fileSystem_(fileSystem),
      storeChanges_(store.objectWillChange.subscribe([this] { follow(); })) {
    look();
}

bool MissingFiles::contains(const Resource& resource) const {
    return factsOf(resource.type).isInFileSystem && missing_->contains(resource.path);
}

/// The signal comes before the change, and in bursts.
void MissingFiles::follow() {
    if (std::exchange(isScheduled_, true)) return;
    mainQueue_.async([this, alive = std::weak_ptr(alive_)] {
        if (alive.expired()) return;
        isScheduled_ = false;
        if (fingerprint(pathsOf(*store_.workspaces)) != looked_) look();
    });
}

void MissingFiles::look() {
    isWantedAgain_ = isLooking_;
    if (isLooking_) return;
    isLooking_ = true;
    auto paths = pathsOf(*store_.workspaces);
    looked_ = fingerprint(paths);
    background_.async([this, alive = std::weak_ptr(alive_), paths = std::move(paths),
                       &fileSystem = fileSystem_, &mainQueue = mainQueue_] {
        std::set<std::string> missing;
        for (const auto& path : paths) {
            if (isMissing(path, fileSystem)) missing.insert(path);
        }
        mainQueue.async([this, alive, missing = std::move(missing)] {
            if (alive.expired()) return;
            isLooking_ = false;
            if (missing != *missing_) missing_ = missing;
            if (isWantedAgain_) look();
        });
    });
}

} // namespace corvane
