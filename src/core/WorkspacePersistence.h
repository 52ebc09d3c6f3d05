#pragma once

#include "core/Records.h"
#include "platform/FileSystem.h"

#include <optional>
#include <string>
#include <vector>

namespace corvane {

class Alerts;
class Bundles;
class Clock;
class MainQueue;
class Panels;
class Url;

/// Reads and writes the workspaces file and the files of export and import, and moves a workspaces
/// file that an earlier version left in the Documents folder. Holds no workspaces. Main thread;
/// blocks for the file work and the panels.
class WorkspacePersistence {
public:
    WorkspacePersistence(FileSystem& fileSystem, const Bundles& bundles, MainQueue& mainQueue,
                         Alerts& alerts, Panels& panels, const Clock& clock);

    /// Replaces the file by the list, whole. A file that isn't the one last loaded or saved, or
    /// that the last load couldn't read or understand, is moved aside first, and an alert says so;
    /// where that fails, or the file can't be reached, nothing is written. Of failures one alert
    /// tells, and again only after a save that came through.
    Result<void> saveWorkspaces(const std::vector<Workspace>& workspaces);
    /// The list, empty where there is no file or none that can be read and understood.
    std::vector<Workspace> loadWorkspaces();

    /// Writes the list to a file that the user names, for reading by people too. The file's URL, or
    /// nothing after a cancel or a failure, of which an alert tells.
    std::optional<Url> exportWorkspaces(const std::vector<Workspace>& workspaces);
    /// The list in a file that the user chooses, or nothing after a cancel or a failure, of which
    /// an alert tells.
    std::optional<std::vector<Workspace>> importWorkspaces();

    std::string dataDirectory() const;
    std::string workspacesFilePath() const;

    /// A warning alert with one button "OK", on a later turn of the main queue.
    void showFailureAlert(std::string title, std::string message);

private:
    void migrateFromDocumentsIfNeeded(const std::string& workspacesFile);
    Result<void> write(const std::vector<Workspace>& workspaces);
    Result<void> makeRoomForSaving(const std::string& file);
    void tellOfKeptFile(const std::string& kept);
    std::optional<FileStamp> stampOf(const std::string& file) const;
    Result<std::vector<Workspace>> read(const std::string& path) const;

    FileSystem& fileSystem_;
    const Bundles& bundles_;
    MainQueue& mainQueue_;
    Alerts& alerts_;
    Panels& panels_;
    const Clock& clock_;
    const std::string appSupportPath_;
    /// Why the file of the last load couldn't be understood; such a file must outlive the next
    /// save.
    std::optional<std::string> unreadableBecause_;
    /// The file as it was last loaded or saved; nothing where there was none.
    std::optional<FileStamp> known_;
    bool toldOfFailedSaves_ = false;
};

} // namespace corvane
