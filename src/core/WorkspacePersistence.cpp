#include "core/WorkspacePersistence.h"

#include "core/RecordCoding.h"
#include "core/SafeNames.h"
#include "foundation/Diagnostics.h"
#include "foundation/Json.h"
#include "foundation/Url.h"
#include "platform/Alerts.h"
#include "platform/FileSystem.h"
#include "platform/MainQueue.h"
#include "platform/Panels.h"

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

void WorkspacePersistence::saveWorkspaces(const std::vector<Workspace>& workspaces) {
    const auto failed = [](std::string_view why) {
        diagnostic({"Failed to save workspaces: ", why});
    };
    if (const auto error = fileSystem_.createDirectory(dataDirectory()))
        return failed(error->localizedDescription);
    std::string bytes;
    try {
        bytes = encodeWorkspaces(workspaces);
    } catch (const json::EncodeError& error) {
        return failed(error.what());
    }
    if (unreadableBecause_ && !makeRoomForSaving())
        return failed("the unreadable file can't be moved aside");
    const auto file = workspacesFilePath();
    if (const auto error = fileSystem_.writeFile(file, bytes))
        return failed(error->localizedDescription);
    diagnostic({"Workspaces saved to: ", file});
}

std::vector<Workspace> WorkspacePersistence::loadWorkspaces() {
    const auto file = workspacesFilePath();
    migrateFromDocumentsIfNeeded(file);
    unreadableBecause_.reset();
    if (!fileSystem_.exists(file)) return {};
    try {
        auto workspaces = read(file);
        diagnostic({"Workspaces loaded from: ", file});
        return workspaces;
    } catch (const json::DecodeError& error) {
        unreadableBecause_ = error.what();
        diagnostic({"Failed to load workspaces: ", *unreadableBecause_});
        return {};
    }
}

std::vector<Workspace> WorkspacePersistence::read(const std::string& path) const {
    const auto bytes = fileSystem_.readFile(path);
    if (!bytes) throw json::DecodeError(bytes.error().localizedDescription);
    return decodeWorkspaces(*bytes, bundles_);
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
        if (const auto error = fileSystem_.writeFile(url->path(), text))
            return failed(error->localizedDescription);
    } catch (const json::EncodeError& error) {
        return failed(error.what());
    }
    return url;
}

std::optional<std::vector<Workspace>> WorkspacePersistence::importWorkspaces() {
    const auto url = panels_.runOpenPanel(
        {.title = "Import Workspaces", .message = "Select a Corvane workspaces file to import"});
    if (!url) return std::nullopt;
    try {
        return read(url->path());
    } catch (const json::DecodeError& error) {
        diagnostic({"Failed to import workspaces: ", error.what()});
        showFailureAlert("Import Failed",
                         std::string("Could not import workspaces: ") + error.what());
        return std::nullopt;
    }
}

void WorkspacePersistence::migrateFromDocumentsIfNeeded(const std::string& file) {
    const auto legacyFile = path::join(fileSystem_.documentsDirectory(), legacyProjectsFile);
    if (!fileSystem_.exists(legacyFile) || fileSystem_.exists(file)) return;
    auto error = fileSystem_.createDirectory(dataDirectory());
    if (!error) error = fileSystem_.copyItem(legacyFile, file);
    if (!error) error = fileSystem_.removeItem(legacyFile);
    if (error) {
        diagnostic({"Failed to migrate workspaces: ", error->localizedDescription});
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

bool WorkspacePersistence::makeRoomForSaving() {
    const auto file = workspacesFilePath();
    const auto kept = moveUnreadableFileAside(fileSystem_, file, clock_.now());
    if (!kept) {
        if (!std::exchange(toldOfBlockedSaves_, true)) {
            showFailureAlert("Workspaces Can't Be Saved",
                             "The workspaces file can't be read (" + *unreadableBecause_ +
                                 "), and it can't be moved aside either (" +
                                 kept.error().localizedDescription +
                                 "). It stays as it is, and changes aren't saved.\n\n" + file);
        }
        return false;
    }
    if (!kept->empty()) {
        showFailureAlert(
            "Workspaces File Not Readable",
            "The workspaces file can't be read: " + *unreadableBecause_ +
                "\n\nIt was kept, and Corvane goes on with a new file. The old one is at:\n\n" +
                *kept);
    }
    unreadableBecause_.reset();
    return true;
}

void WorkspacePersistence::showFailureAlert(std::string title, std::string message) {
    mainQueue_.async([&alerts = alerts_, title = std::move(title), message = std::move(message)] {
        alerts.runModal(
            {.title = title, .message = message, .style = AlertStyle::warning, .buttons = {"OK"}});
    });
}

} // namespace corvane
