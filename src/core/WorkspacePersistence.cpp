#include "core/WorkspacePersistence.h"

#include "core/RecordCoding.h"
#include "foundation/Diagnostics.h"
#include "foundation/Json.h"
#include "foundation/Url.h"
#include "platform/Alerts.h"
#include "platform/FileSystem.h"
#include "platform/MainQueue.h"
#include "platform/Panels.h"
#include "platform/SafeNames.h"

#include <new>
#include <utility>

namespace corvane {

namespace {

constexpr std::string_view workspacesFile = "corvane_workspaces.json";
constexpr std::string_view legacyProjectsFile = "corvane_workspaces.json";

} // namespace

WorkspacePersistence::WorkspacePersistence(FileSystem& fileSystem, const Bundles& bundles,
                                           MainQueue& mainQueue, Alerts& alerts, Panels& panels,
                                           const Clock& clock)
    : fileSystem_(fileSystem), bundles_(bundles), mainQueue_(mainQueue), alerts_(alerts),
      panels_(panels), clock_(clock), appSupportPath_(fileSystem.applicationSupportDirectory()) {}

std::string WorkspacePersistence::dataDirectory() const {
    return path::join(appSupportPath_, "Corvane");
}

std::string WorkspacePersistence::workspacesFilePath() const {
    return path::join(dataDirectory(), workspacesFile);
}

Result<void> WorkspacePersistence::saveWorkspaces(const std::vector<Workspace>& workspaces) {
    const auto saved = write(workspaces);
    if (saved) {
        toldOfFailedSaves_ = false;
        diagnostic({"Workspaces saved to: ", workspacesFilePath()});
        return saved;
    }
    const auto& why = saved.error().localizedDescription;
    diagnostic({"Failed to save workspaces: ", why});
    if (!std::exchange(toldOfFailedSaves_, true)) {
        showFailureAlert(
            "Workspaces Can't Be Saved",
            why +
                "\n\nYour changes are kept while Corvane runs, and saved as soon as that works again.");
    }
    return saved;
}

Result<void> WorkspacePersistence::write(const std::vector<Workspace>& workspaces) {
    if (const auto made = fileSystem_.createDirectory(dataDirectory()); !made) return made.error();
    std::string bytes;
    try {
        bytes = encodeWorkspaces(workspaces);
    } catch (const json::EncodeError& error) {
        return Error{error.what()};
    }
    const auto file = workspacesFilePath();
    if (const auto room = makeRoomForSaving(file); !room) return room;
    if (const auto written = fileSystem_.writeFile(file, bytes); !written) return written.error();
    known_ = stampOf(file);
    return {};
}

std::vector<Workspace> WorkspacePersistence::loadWorkspaces() {
    const auto file = workspacesFilePath();
    migrateFromDocumentsIfNeeded(file);
    fileSystem_.makePrivate(dataDirectory());
    unreadableBecause_.reset();
    known_ = stampOf(file);
    auto workspaces = read(file);
    if (workspaces) {
        diagnostic({"Workspaces loaded from: ", file});
        return std::move(*workspaces);
    }
    if (workspaces.error().isMissing) return {};
    unreadableBecause_ = workspaces.error().localizedDescription;
    diagnostic({"Failed to load workspaces: ", *unreadableBecause_});
    return {};
}

std::optional<FileStamp> WorkspacePersistence::stampOf(const std::string& file) const {
    const auto stamp = fileSystem_.stamp(file);
    return stamp ? std::optional(*stamp) : std::nullopt;
}

Result<std::vector<Workspace>> WorkspacePersistence::read(const std::string& path) const {
    const auto bytes = fileSystem_.readFile(path);
    if (!bytes) return bytes.error();
    try {
        return decodeWorkspaces(*bytes, bundles_);
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

std::optional<std::vector<Workspace>> WorkspacePersistence::importWorkspaces() {
    const auto url = panels_.runOpenPanel(
        {.title = "Import Workspaces", .message = "Select a Corvane workspaces file to import"});
    if (!url) return std::nullopt;
    auto workspaces = read(url->path());
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
    auto moved = bytes ? fileSystem_.createDirectory(dataDirectory()) : bytes.error();
    if (moved) moved = fileSystem_.writeFile(file, *bytes);
    if (moved) moved = fileSystem_.removeItem(legacyFile);
    if (!moved) {
        diagnostic({"Failed to migrate workspaces: ", moved.error().localizedDescription});
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

Result<void> WorkspacePersistence::makeRoomForSaving(const std::string& file) {
    const auto stamp = fileSystem_.stamp(file);
    if (!stamp && !stamp.error().isMissing) return stamp.error();
    const bool isKnown = !stamp || *stamp == known_;
    if (isKnown && !unreadableBecause_) return {};
    const auto kept = moveFileAside(fileSystem_, file,
                                    unreadableBecause_ ? "unreadable" : "changed", clock_.now());
    if (!kept) {
        const auto why = unreadableBecause_ ? "can't be read (" + *unreadableBecause_ + ")"
                                            : std::string("was changed by another program");
        return Error{"The workspaces file " + why + ", and it can't be moved aside either (" +
                     kept.error().localizedDescription + "). It stays as it is.\n\n" + file};
    }
    if (!kept->empty()) tellOfKeptFile(*kept);
    unreadableBecause_.reset();
    return {};
}

void WorkspacePersistence::tellOfKeptFile(const std::string& kept) {
    if (unreadableBecause_) {
        showFailureAlert(
            "Workspaces File Not Readable",
            "The workspaces file can't be read: " + *unreadableBecause_ +
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
    mainQueue_.async([&alerts = alerts_, title = std::move(title), message = std::move(message)] {
        alerts.runModal(
            {.title = title, .message = message, .style = AlertStyle::warning, .buttons = {"OK"}});
    });
}

} // namespace corvane
