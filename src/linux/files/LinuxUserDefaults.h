#pragma once

#include "platform/FileSystem.h"
#include "platform/MainQueue.h"
#include "platform/UserDefaults.h"

namespace corvane {

/// The defaults domain as a property list in the XDG configuration folder, read once at
/// construction and replaced at each change. A file that can't be read or decoded is moved aside
/// (`app.corvane.Corvane.unreadable-{date}.plist`) before anything takes its place.
class LinuxUserDefaults final : public UserDefaults {
public:
    LinuxUserDefaults(FileSystem& files, const Clock& clock);

    std::optional<PropertyList> objectForKey(std::string_view key) const override;
    void setObject(std::string_view key, PropertyList value) override;
    void removeObject(std::string_view key) override;
    void removePersistentDomain() override;

    /// Where the domain is stored.
    const std::string& path() const { return path_; }

private:
    bool load();
    bool moveUnreadableFileAside();
    void store();

    FileSystem& files_;
    const Clock& clock_;
    std::string path_;
    PropertyList::Dictionary values_;
    bool fileIsUnreadable_ = false;
    /// The last change isn't on disk.
    bool isUnstored_ = false;
};

} // namespace corvane
