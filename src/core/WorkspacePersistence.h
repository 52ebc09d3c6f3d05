#pragma once

#include "core/Records.h"
#include "platform/OwnFile.h"

#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace corvane {

class Alerts;
class Bundles;
class Clock;
class DiskQueue;
class MainQueue;
class Panels;
class Url;

/// Reads and writes the workspaces file, the files of export and import and the copies that are
/// kept before much is lost, and moves a workspaces file that an earlier version left in the
/// Documents folder. Holds no workspaces. Main thread; blocks for the file work, but for a save on
/// a slow disk, and for the panels.
class WorkspacePersistence {
public:
    WorkspacePersistence(FileSystem& fileSystem, const Bundles& bundles, MainQueue& mainQueue,
                         DiskQueue& diskQueue, Alerts& alerts, Panels& panels, const Clock& clock);

    /// Called when it has turned out whether the newest list could be saved.
    std::function<void()> onSaved;
    /// What is known of that.
    const Result<void>& saved() const { return saved_; }
    /// Replaces the file by the list, as OwnFile does; what is known of it at once. An alert tells
    /// of a file that was kept aside, and of failures one, and again only after a save that came
    /// through.
    const Result<void>& saveWorkspaces(const std::vector<Workspace>& workspaces);
    /// The list, empty where there is no file or none that can be read and understood.
    std::vector<Workspace> loadWorkspaces();

    /// Writes the list to a file that the user names, for reading by people too. The file's URL, or
    /// nothing after a cancel or a failure, of which an alert tells.
    std::optional<Url> exportWorkspaces(const std::vector<Workspace>& workspaces);
    /// The list in a file that the user chooses, or nothing after a cancel or a failure, of which
    /// an alert tells. The panel opens in `folder`, or where it was last.
    std::optional<std::vector<Workspace>> importWorkspaces(const std::string& folder = "");

    /// There is an older version's file that couldn't be moved here, and a later start can try
    /// again as long as none is saved.
    bool awaitsLegacyFile() const { return legacyFileStays_.has_value(); }
    /// Keeps the list in a file of its own, with the date in its name; the ten newest stay. An
    /// alert tells of a failure.
    void keepCopy(const std::vector<Workspace>& workspaces);
    std::string copiesDirectory() const;
    const std::string& workspacesFilePath() const { return file_.path(); }

    /// A warning alert with one button "OK", on a later turn of the main queue.
    void showFailureAlert(std::string title, std::string message);

private:
    void migrateFromDocumentsIfNeeded(const std::string& workspacesFile);
    void makeDataPrivate();
    void noteSaved(const Result<void>& saved);
    void tellOfFailedSave(const std::string& why);
    void tellOfKeptFile(const std::string& kept, const std::string& unreadableBecause);
    void tellOfLegacyFile();
    Result<std::vector<Workspace>> decoded(const std::string& bytes) const;

    FileSystem& fileSystem_;
    const Bundles& bundles_;
    MainQueue& mainQueue_;
    DiskQueue& diskQueue_;
    Alerts& alerts_;
    Panels& panels_;
    const Clock& clock_;
    const std::string dataDirectory_;
    OwnFile file_;
    Result<void> saved_;
    struct LegacyFile {
        std::string path, why;
    };
    std::optional<LegacyFile> legacyFileStays_;
    bool toldOfFailedSaves_ = false;
};

} // namespace corvane
