#pragma once

#include "platform/Bookmarks.h"

namespace corvane {

class InstalledApplications;

/// Bookmarks as small property lists. A file is known by its inode, the moment of its birth and the
/// kernel's handle: it is found at its path, else under another name in its folder, else, where the
/// system lets this process open a file by its handle, wherever it was moved on its file system,
/// else, where nothing stands at its path, in the folders next to its own. A search looks at 5,000
/// entries at most. What an editor put aside when it saved a new file at the path doesn't count. An
/// installed application is known by its identifier.
class LinuxBookmarks : public Bookmarks {
public:
    explicit LinuxBookmarks(const InstalledApplications& installed) : installed_(installed) {}

    Result<Bytes> create(const Url& url) override;
    Result<Url> resolve(const Bytes& bookmark) override;
    /// There is nothing to unlock here: the file's own permissions count when it is opened.
    bool startAccessing(const Url&) override { return true; }
    void stopAccessing(const Url&) override {}

private:
    Result<Url> resolveApplication(const std::string& oldPath, const std::string& identifier) const;

    const InstalledApplications& installed_;
};

} // namespace corvane
