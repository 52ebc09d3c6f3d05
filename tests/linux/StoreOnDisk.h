#pragma once

#include "core/BookmarkManager.h"
#include "core/RecordCoding.h"
#include "core/WorkspaceStore.h"
#include "linux/Catalogue.h"
#include "linux/LinuxBookmarks.h"
#include "linux/LinuxFileSystem.h"
#include "simulated/SimulatedDesktop.h"

#include <string>
#include <vector>

namespace corvane::machine {

/// The store with the files and the bookmarks of this machine; all else is simulated.
struct StoreOnDisk {
    SimulatedDesktop desktop;
    Catalogue catalogue;
    LinuxFileSystem files{catalogue};
    LinuxBookmarks linuxBookmarks{catalogue};
    Platform platform = desktop.platform(files, linuxBookmarks);
    BookmarkManager bookmarks{files, linuxBookmarks, platform.clock};
    WorkspaceStore store{platform, bookmarks};

    void add(const std::string& name) {
        store.addWorkspace(makeWorkspace(name, "", "folder", platform.clock.now()));
    }
};

} // namespace corvane::machine
