#pragma once

#include "core/BookmarkManager.h"
#include "core/RecordCoding.h"
#include "core/WorkspaceStore.h"
#include "linux/files/LinuxBookmarks.h"
#include "linux/files/LinuxFileSystem.h"
#include "linux/installed/InstalledApplications.h"
#include "simulated/SimulatedDesktop.h"

#include <string>
#include <vector>

namespace corvane::machine {

/// The store with the files and the bookmarks of this machine; all else is simulated.
struct StoreOnDisk {
    SimulatedDesktop desktop;
    InstalledApplications installed;
    LinuxFileSystem files{installed};
    LinuxBookmarks linuxBookmarks{installed};
    Platform platform = desktop.platform(files, linuxBookmarks);
    BookmarkManager bookmarks{files, linuxBookmarks, platform.clock};
    WorkspaceStore store{platform, bookmarks};

    void add(const std::string& name) {
        store.addWorkspace(makeWorkspace(name, "", "folder", platform.clock.now()));
    }
};

} // namespace corvane::machine
