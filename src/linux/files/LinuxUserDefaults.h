#pragma once

#include "platform/OwnFile.h"
#include "platform/UserDefaults.h"

#include <memory>

namespace corvane {

/// The defaults domain as a property list in the XDG configuration folder, an OwnFile: read once at
/// construction, and written once a turn of the main queue in which it changed, and at the end.
class LinuxUserDefaults final : public UserDefaults {
public:
    LinuxUserDefaults(FileSystem& files, const Clock& clock, MainQueue& mainQueue,
                      DiskQueue& diskQueue);
    ~LinuxUserDefaults() override;

    std::optional<PropertyList> objectForKey(std::string_view key) const override;
    void setObject(std::string_view key, PropertyList value) override;
    void removeObject(std::string_view key) override;
    void removePersistentDomain() override;
    bool isUnreadable() const override { return isUnreadable_; }

private:
    void load();
    void writeLater();
    void write();
    void noteWritten(const Result<void>& written);

    MainQueue& mainQueue_;
    OwnFile file_;
    PropertyList::Dictionary values_;
    bool isUnreadable_ = false;
    /// A write is due on a later turn.
    bool isDue_ = false;
    /// The last write didn't come through.
    bool isUnstored_ = false;
    /// What is done later asks by this whether the defaults are still there.
    const std::shared_ptr<const bool> alive_ = std::make_shared<const bool>(true);
};

} // namespace corvane
