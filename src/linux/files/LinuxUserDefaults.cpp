#include "linux/files/LinuxUserDefaults.h"

#include "foundation/Diagnostics.h"
#include "foundation/Url.h"
#include "linux/installed/LinuxBundles.h"
#include "linux/system/UserFolders.h"
#include "platform/SafeNames.h"

namespace corvane {

LinuxUserDefaults::LinuxUserDefaults(FileSystem& files, const Clock& clock)
    : files_(files), clock_(clock),
      path_(path::join(userFolders::config(), std::string(mainBundleIdentifier) + ".plist")) {
    fileIsUnreadable_ = !load();
}

bool LinuxUserDefaults::load() {
    const auto bytes = files_.readFile(path_);
    if (!bytes && bytes.error().isMissing) return true;
    if (!bytes) {
        diagnostic({"Failed to read preferences: ", bytes.error().localizedDescription});
        return false;
    }
    const auto list = PropertyList::parse(*bytes);
    const auto* values = list ? list->as<PropertyList::Dictionary>() : nullptr;
    if (!values) {
        diagnostic({"Failed to decode preferences: ", path_});
        return false;
    }
    values_ = *values;
    return true;
}

std::optional<PropertyList> LinuxUserDefaults::objectForKey(std::string_view key) const {
    const auto found = values_.find(std::string(key));
    if (found == values_.end()) return std::nullopt;
    return found->second;
}

void LinuxUserDefaults::setObject(std::string_view key, PropertyList value) {
    const auto [entry, isNew] = values_.try_emplace(std::string(key));
    if (!isNew && entry->second == value && !isUnstored_) return;
    entry->second = std::move(value);
    store();
}

void LinuxUserDefaults::removeObject(std::string_view key) {
    if (values_.erase(std::string(key)) == 0 && !isUnstored_) return;
    store();
}

void LinuxUserDefaults::removePersistentDomain() {
    values_.clear();
    isUnstored_ = false;
    if (fileIsUnreadable_) {
        isUnstored_ = !moveUnreadableFileAside();
    } else if (files_.exists(path_) && !files_.removeItem(path_)) {
        store();
    }
}

bool LinuxUserDefaults::moveUnreadableFileAside() {
    const auto kept = moveFileAside(files_, path_, "unreadable", clock_.now());
    if (!kept) {
        diagnostic({"Failed to move preferences aside: ", kept.error().localizedDescription});
        return false;
    }
    fileIsUnreadable_ = false;
    return true;
}

void LinuxUserDefaults::store() {
    isUnstored_ = true;
    if (fileIsUnreadable_ && !moveUnreadableFileAside()) return;
    auto written = files_.createDirectory(path::parent(path_));
    if (written) written = files_.writeFile(path_, PropertyList{values_}.toBinary());
    if (!written) {
        diagnostic({"Failed to save preferences: ", written.error().localizedDescription});
        return;
    }
    isUnstored_ = false;
}

} // namespace corvane
