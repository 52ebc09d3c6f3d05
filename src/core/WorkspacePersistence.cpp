#include "core/WorkspacePersistence.h"

#include "core/DataDirectory.h"
#include "core/KeptCopies.h"
#include "core/RecordCoding.h"
#include "foundation/Diagnostics.h"
#include "foundation/Json.h"
#include "foundation/Url.h"
#include "platform/Alerts.h"
#include "platform/FileSystem.h"
#include "platform/MainQueue.h"
#include "platform/Panels.h"

#include <new>
#include <utility>

namespace corvane {

namespace {

constexpr std::string_view workspacesFile = "corvane_workspaces.json";
constexpr std::string_view legacyProjectsFile = "corvane_workspaces.json";

void showFailure(MainQueue& mainQueue, Alerts& alerts, std::string title, std::string message) {
    mainQueue.async([&alerts, title = std::move(title), message = std::move(message)] {
        alerts.runModal(
            {.title = title, .message = message, .style = AlertStyle::warning, .buttons = {"OK"}});
    });
}

} // namespace

WorkspacePersistence::WorkspacePersistence(FileSystem& fileSystem, const Bundles& bundles,
                                           MainQueue& mainQueue, DiskQueue& diskQueue,
                                           Alerts& alerts, Panels& panels, const Clock& clock)
    : fileSystem_(fileSystem), bundles_(bundles), mainQueue_(mainQueue), diskQueue_(diskQueue),
      alerts_(alerts), panels_(panels), clock_(clock), dataDirectory_(dataDirectoryOf(fileSystem)),
      file_(fileSystem, clock, mainQueue, diskQueue, path::join(dataDirectory_, workspacesFile),
            {.written = [this](const auto& saved) { noteSaved(saved); },
             .kept = [this](const auto& kept, const auto& why) { tellOfKeptFile(kept, why); }}) {}

const Result<void>& WorkspacePersistence::saveWorkspaces(const std::vector<Workspace>& workspaces) {
    try {
        file_.write(encodeWorkspaces(workspaces));
    } catch (const json::EncodeError& error) {
        noteSaved(Error{error.what()});
    }
    return saved_;
}

void WorkspacePersistence::noteSaved(const Result<void>& saved) {
    saved_ = saved;
    if (saved) {
        toldOfFailedSaves_ = false;
        diagnostic({"Workspaces saved to: ", file_.path()});
        tellOfLegacyFile();
    } else {
        tellOfFailedSave(saved.error().localizedDescription);
    }
    if (onSaved) onSaved();
}

void WorkspacePersistence::tellOfFailedSave(const std::string& why) {
    diagnostic({"Failed to save workspaces: ", why});
    if (std::exchange(toldOfFailedSaves_, true)) return;
    showFailureAlert("Workspaces Can't Be Saved",
                     why + "\n\nYour changes are kept while Corvane runs. The next change tries "
                           "again, a press on the sign in the header and the end of Corvane too.");
}

std::vector<Workspace> WorkspacePersistence::loadWorkspaces() {
    migrateFromDocumentsIfNeeded(file_.path());
    makeDataPrivate();
    const auto bytes = file_.read();
    if (!bytes && bytes.error().isMissing) return {};
    auto workspaces = bytes ? decoded(*bytes) : bytes.error();
    if (workspaces) {
        diagnostic({"Workspaces loaded from: ", file_.path()});
        return std::move(*workspaces);
    }
    const auto& why = workspaces.error().localizedDescription;
    file_.distrust(why);
    diagnostic({"Failed to load workspaces: ", why});
    return {};
}

/// Commands may hold secrets.
void WorkspacePersistence::makeDataPrivate() {
    fileSystem_.makePrivate(dataDirectory_);
    for (const auto& name : fileSystem_.namesIn(dataDirectory_))
        fileSystem_.makePrivate(path::join(dataDirectory_, name));
}

void WorkspacePersistence::keepCopy(const std::vector<Workspace>& workspaces) {
    const auto failed = [&mainQueue = mainQueue_, &alerts = alerts_](const Error& error) {
        showFailure(mainQueue, alerts, "No Copy Kept",
                    "No copy of the workspaces could be kept: " + error.localizedDescription);
    };
    try {
        diskQueue_.run([&fileSystem = fileSystem_, folder = copiesDirectory(), failed,
                        bytes = json::prettyPrinted(encodeWorkspaces(workspaces)),
                        now = clock_.now()] {
            const auto kept = corvane::keepCopy(fileSystem, folder, bytes, now);
            if (!kept) failed(kept.error());
        });
    } catch (const json::EncodeError& error) {
        failed(Error{error.what()});
    }
}

std::string WorkspacePersistence::copiesDirectory() const {
    return path::join(dataDirectory_, "Copies");
}

Result<std::vector<Workspace>> WorkspacePersistence::decoded(const std::string& bytes) const {
    try {
        return decodeWorkspaces(bytes, bundles_);
    } catch (const json::DecodeError& error) {
        return Error{error.what()};
    } catch (const std::bad_alloc&) {
        return Error{"The file takes more memory than there is."};
    }
}

std::optional<Url>
WorkspacePersistence::exportWorkspaces(const std::vector<Workspace>& workspaces) {
    const auto url =
        panels_.runSavePanel({.title = "Export Workspaces",
                              .message = "Choose where to save your Corvane workspaces",
                              .proposedName = "Corvane_Workspaces_Export.json"});
    if (!url) return std::nullopt;
    const auto failed = [&](const std::string& why) {
        diagnostic({"Failed to export workspaces: ", why});
        showFailureAlert("Export Failed", "Could not export workspaces: " + why);
        return std::nullopt;
    };
    try {
        const auto text = json::prettyPrinted(encodeWorkspaces(workspaces));
        const auto written = fileSystem_.writeFile(url->path(), text);
        if (!written) return failed(written.error().localizedDescription);
    } catch (const json::EncodeError& error) {
        return failed(error.what());
    }
    return url;
}

std::optional<std::vector<Workspace>>
WorkspacePersistence::importWorkspaces(const std::string& folder) {
    const auto url = panels_.runOpenPanel({.title = "Import Workspaces",
                                           .message = "Select a Corvane workspaces file to import",
                                           .directory = folder});
    if (!url) return std::nullopt;
    const auto bytes = fileSystem_.readFile(url->path());
    auto workspaces = bytes ? decoded(*bytes) : bytes.error();
    if (workspaces) return std::move(*workspaces);
    const auto& why = workspaces.error().localizedDescription;
    diagnostic({"Failed to import workspaces: ", why});
    showFailureAlert("Import Failed", "Could not import workspaces: " + why);
    return std::nullopt;
}

void WorkspacePersistence::migrateFromDocumentsIfNeeded(const std::string& file) {
    const auto legacyFile = path::join(fileSystem_.documentsDirectory(), legacyProjectsFile);
    // Only where there is none for certain: one that can't be reached may be the user's newest.
    const auto present = fileSystem_.stamp(file);
    if (present || !present.error().isMissing || !fileSystem_.exists(legacyFile)) return;
    // The content moves, as a link would lead nowhere from its new place.
    const auto bytes = fileSystem_.readFile(legacyFile);
    auto moved = bytes ? fileSystem_.createDirectory(dataDirectory_) : bytes.error();
    if (moved) moved = fileSystem_.writeFile(file, *bytes);
    if (moved) moved = fileSystem_.removeItem(legacyFile);
    if (!moved) {
        const auto& why = moved.error().localizedDescription;
        diagnostic({"Failed to migrate workspaces: ", why});
        if (!fileSystem_.exists(file)) legacyFileStays_ = {.path = legacyFile, .why = why};
        return;
    }
    mainQueue_.async([&alerts = alerts_] {
        alerts.runModal(
            {.title = "Workspaces Migrated",
             .message =
                 "Your Corvane workspaces have been moved to a safer location in Application Support for better data protection.",
             .style = AlertStyle::informational,
             .buttons = {"OK"}});
    });
}

void WorkspacePersistence::tellOfLegacyFile() {
    if (!legacyFileStays_) return;
    showFailureAlert("Old Workspaces Not Moved",
                     "There are workspaces of an earlier version that can't be moved here: " +
                         legacyFileStays_->why +
                         "\n\nThey stay as they are, and can be imported in the settings:\n\n" +
                         legacyFileStays_->path);
    legacyFileStays_.reset();
}

void WorkspacePersistence::tellOfKeptFile(const std::string& kept,
                                          const std::string& unreadableBecause) {
    if (!unreadableBecause.empty()) {
        showFailureAlert(
            "Workspaces File Not Readable",
            "The workspaces file can't be read: " + unreadableBecause +
                "\n\nIt was kept, and Corvane goes on with a new file. The old one is at:\n\n" +
                kept);
    } else {
        showFailureAlert(
            "Workspaces File Changed",
            "Another program changed the workspaces file.\n\nThat one was kept, and Corvane goes on with the workspaces that it shows. The other one is at:\n\n" +
                kept);
    }
}

void WorkspacePersistence::showFailureAlert(std::string title, std::string message) {
    showFailure(mainQueue_, alerts_, std::move(title), std::move(message));
}

} // namespace corvane
