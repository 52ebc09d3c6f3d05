#pragma once

#include "platform/FileSystem.h"

#include <map>
#include <set>
#include <string>

namespace corvane {

/// A file system in memory. Folders exist by being entered in `directories`, or above a file.
class SimulatedFiles : public FileSystem {
public:
    std::map<std::string, std::string> contents;
    std::set<std::string> directories;

    /// Faults: paths whose reading, writing or removing (moving away included) fails. A folder's
    /// path covers what is in it.
    std::set<std::string> unreadable;
    std::set<std::string> unwritable;
    std::set<std::string> unremovable;
    /// What lies behind a mount that has gone: it may be there, and nobody can tell.
    std::set<std::string> unreachable;
    /// How often a look at a path fails before it is within reach.
    mutable std::map<std::string, int> failingLooks;
    /// The items that other users have no rights at.
    std::set<std::string> privateItems;
    /// Writes that came through, by path.
    std::map<std::string, int> writes;

    /// What stays the same when an item is moved or its content changes, and is never used again.
    /// Nothing where there is no such item.
    std::optional<int> identityOf(const std::string& path);
    /// The place of an item now.
    std::optional<std::string> pathOf(int identity) const;

    std::string applicationSupportDirectory() const override { return "/home/user/.local/share"; }
    std::string documentsDirectory() const override { return "/home/user/Documents"; }
    bool exists(const std::string& path) const override;
    bool isDirectory(const std::string& path) const override;
    std::vector<std::string> namesIn(const std::string& folder) const override;
    Result<FileStamp> stamp(const std::string& path) const override;
    Result<std::string> readFile(const std::string& path) const override;
    Result<void> writeFile(const std::string& path, std::string_view bytes) override;
    Result<FileStamp> rewriteFile(const std::string& path, std::string_view bytes,
                                  const std::optional<FileStamp>& known) override;
    Result<void> createDirectory(const std::string& path) override;
    Result<void> copyItem(const std::string& from, const std::string& to) override;
    Result<void> moveItem(const std::string& from, const std::string& to) override;
    Result<void> removeItem(const std::string& path) override;
    void makePrivate(const std::string& path) override { privateItems.insert(path); }

private:
    bool isReachable(const std::string& path) const;

    std::map<std::string, int> identities_;
    /// Where each item was last; it may be gone from there.
    std::map<int, std::string> places_;
    int identitiesGiven_ = 0;
};

} // namespace corvane
