#pragma once

#include "core/BookmarkManager.h"
#include "core/RecordCoding.h"
#include "core/WorkspaceStore.h"
#include "linux/files/LinuxBookmarks.h"
#include "linux/files/LinuxFileSystem.h"
#include "linux/installed/InstalledApplications.h"
#include "simulated/SimulatedDesktop.h"

#include <functional>

namespace corvane::machine {

/// The files of this machine, with something that happens before they are looked at or changed.
struct WatchedFiles final : LinuxFileSystem {
    using LinuxFileSystem::LinuxFileSystem;

    std::function<void()> beforeEach = [] {};

    Result<FileStamp> stamp(const std::string& path) const override {
        beforeEach();
        return LinuxFileSystem::stamp(path);
    }
    Result<FileStamp> rewriteFile(const std::string& path, std::string_view bytes,
                                  const std::optional<FileStamp>& known) override {
        beforeEach();
        return LinuxFileSystem::rewriteFile(path, bytes, known);
    }
    Result<void> createDirectory(const std::string& path) override {
        beforeEach();
        return LinuxFileSystem::createDirectory(path);
    }
    Result<void> moveItem(const std::string& from, const std::string& to) override {
        beforeEach();
        return LinuxFileSystem::moveItem(from, to);
    }
};

/// The store with the files and the bookmarks of this machine; all else is simulated.
struct StoreOnDisk {
    SimulatedDesktop desktop;
    InstalledApplications installed;
    WatchedFiles files{installed};
    LinuxBookmarks linuxBookmarks{installed};
    Platform platform = desktop.platform(files, linuxBookmarks);
    BookmarkManager bookmarks{files, linuxBookmarks, platform.clock, platform.mainQueue,
                              platform.diskQueue};
    WorkspaceStore store{platform, bookmarks};

    void add(const std::string& name) {
        store.addWorkspace(makeWorkspace(name, "", "folder", platform.clock.now()));
    }
};

} // namespace corvane::machine
