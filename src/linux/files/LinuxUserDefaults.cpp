#include "linux/files/LinuxUserDefaults.h"

#include "foundation/Diagnostics.h"
#include "foundation/Url.h"
#include "linux/system/UserFolders.h"
#include "platform/Bundles.h"
#include "platform/MainQueue.h"

#include <utility>

namespace corvane {

LinuxUserDefaults::LinuxUserDefaults(FileSystem& files, const Clock& clock, MainQueue& mainQueue,
                                     DiskQueue& diskQueue)
    : mainQueue_(mainQueue),
      file_(files, clock, mainQueue, diskQueue,
            path::join(userFolders::config(), std::string(programIdentifier) + ".plist"),
            {.written = [this](const auto& written) { noteWritten(written); },
             .kept =
                 [this](const auto& kept, const auto& unreadableBecause) {
                     if (onKeptAside) onKeptAside(kept, unreadableBecause);
                 }}) {
    load();
}

LinuxUserDefaults::~LinuxUserDefaults() {
    // Whoever would be told has gone.
    onKeptAside = {};
    if (isDue_) write();
}

void LinuxUserDefaults::load() {
    const auto bytes = file_.read();
    if (!bytes && bytes.error().isMissing) return;
    const auto list = bytes ? PropertyList::parse(*bytes) : bytes.error();
    const auto* values = list ? list->as<PropertyList::Dictionary>() : nullptr;
    if (values) {
        values_ = *values;
        return;
    }
    const auto why = list ? "It holds something else." : list.error().localizedDescription;
    diagnostic({"Failed to read preferences: ", why});
    file_.distrust(why);
    isUnreadable_ = true;
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
    writeLater();
}

void LinuxUserDefaults::removeObject(std::string_view key) {
    if (values_.erase(std::string(key)) == 0 && !isUnstored_) return;
    writeLater();
}

/// Not the file itself: behind a symbolic link the old values would stay.
void LinuxUserDefaults::removePersistentDomain() {
    values_.clear();
    writeLater();
}

void LinuxUserDefaults::writeLater() {
    if (std::exchange(isDue_, true)) return;
    mainQueue_.async([this, alive = std::weak_ptr(alive_)] {
        if (!alive.expired()) write();
    });
}

void LinuxUserDefaults::write() {
    isDue_ = false;
    file_.write(PropertyList{values_}.toBinary());
}

void LinuxUserDefaults::noteWritten(const Result<void>& written) {
    isUnstored_ = !written;
    if (!written)
        diagnostic({"Failed to save preferences: ", written.error().localizedDescription});
}

} // namespace corvane
