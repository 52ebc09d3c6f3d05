#pragma once

#include "platform/FileSystem.h"

#include <functional>
#include <memory>
#include <string>

namespace corvane {

class Clock;
class DiskQueue;
class MainQueue;

/// A file that this program alone writes, always whole, and never over what it hasn't read: one
/// that can't be read or understood, or that isn't the one last read or written, is kept aside
/// first (platform/SafeNames.h); where that fails, or the file can't be reached, nothing is
/// written. Main thread; what is handed over outlives the disk queue's work.
class OwnFile {
public:
    /// Both are called on the main thread, during `write` where the disk answers soon, else on a
    /// later turn.
    struct Reports {
        /// What came of the newest content that was written.
        std::function<void(const Result<void>&)> written;
        /// The file was kept aside, because of that; an empty text where another program had
        /// changed it.
        std::function<void(const std::string& kept, const std::string& unreadableBecause)> kept;
    };

    OwnFile(FileSystem& fileSystem, const Clock& clock, MainQueue& mainQueue, DiskQueue& diskQueue,
            std::string path, Reports reports);
    ~OwnFile();
    OwnFile(const OwnFile&) = delete;

    const std::string& path() const;
    /// Before the first write. An error that `isMissing` where there is no such file.
    Result<std::string> read();
    /// What was read can't be understood.
    void distrust(const std::string& why);
    /// Replaces the content, with the folders above the file. What is written while the disk is
    /// slow comes in order, but for contents that a newer one overtakes; none is lost at the end.
    void write(std::string bytes);

private:
    struct State;
    const std::shared_ptr<State> state_;
    DiskQueue& diskQueue_;
};

} // namespace corvane
