#include "ui/FilePanel.h"

#include "foundation/Text.h"
#include "platform/Alerts.h"

#include <algorithm>
#include <filesystem>
#include <tuple>
#include <utility>

namespace corvane {

namespace {

constexpr std::string_view applicationsFolder = "/Applications";

/// What names of that content end in; empty where they may end in anything.
std::string_view extensionOf(PanelContent content) {
    switch (content) {
    case PanelContent::json:
        return "json";
    case PanelContent::application:
        return "app";
    default:
        return "";
    }
}

std::string_view wordFor(PanelContent content) {
    switch (content) {
    case PanelContent::json:
        return "a JSON file";
    case PanelContent::application:
        return "an application";
    case PanelContent::folder:
        return "a folder";
    default:
        return "a file";
    }
}

bool hasExtension(const std::string& name, std::string_view extension) {
    return text::equalsIgnoringCase(path::extension(name), extension);
}

std::string nameInQuotes(const std::string& path) {
    return "“" + path::lastComponent(path) + "”";
}

void sortForUser(std::vector<DirectoryEntry>& entries) {
    std::vector<std::string> titles;
    for (const auto& entry : entries)
        titles.push_back(FilePanel::titleOf(entry));
    auto keys = text::localizedSortKeys(titles);
    std::vector<std::tuple<bool, std::string, DirectoryEntry>> sorted;
    for (std::size_t i = 0; i < entries.size(); ++i) {
        const bool isFile = entries[i].kind != EntryKind::folder;
        sorted.emplace_back(isFile, std::move(keys[i]), std::move(entries[i]));
    }
    std::ranges::sort(sorted, {}, [](const auto& entry) {
        const auto& [isFile, key, value] = entry;
        return std::tie(isFile, key, value.name);
    });
    for (std::size_t i = 0; i < entries.size(); ++i)
        entries[i] = std::move(std::get<DirectoryEntry>(sorted[i]));
}

} // namespace

FilePanel::FilePanel(std::string title, std::string message, PanelContent content, bool isSaving,
                     const FileSystem& fileSystem, Alerts& alerts)
    : title_(std::move(title)), message_(std::move(message)), content_(content),
      isSaving_(isSaving), fileSystem_(fileSystem), alerts_(alerts) {}

FilePanel::FilePanel(const SavePanel& panel, const FileSystem& fileSystem, Alerts& alerts)
    : FilePanel(panel.title, panel.message, panel.content, true, fileSystem, alerts) {
    proposedName_ = panel.proposedName;
    start(panel.directory);
    setName(proposedName_);
}

FilePanel::FilePanel(const OpenPanel& panel, const FileSystem& fileSystem, Alerts& alerts)
    : FilePanel(panel.title, panel.message, panel.content, false, fileSystem, alerts) {
    start(panel.directory);
}

void FilePanel::start(const std::string& directory) {
    const std::string candidates[]{directory, fileSystem_.documentsDirectory(),
                                   fileSystem_.homeDirectory(), "/"};
    for (const auto& candidate : candidates) {
        if (candidate.empty()) continue;
        goTo(candidate);
        if (folderProblem_.empty()) return;
    }
}

std::vector<PanelPlace> FilePanel::ancestors() const {
    std::vector<PanelPlace> places;
    for (auto path = folder_;; path = path::parent(path)) {
        places.push_back({path::lastComponent(path), path});
        if (path == "/") break;
    }
    std::ranges::reverse(places);
    return places;
}

std::vector<PanelPlace> FilePanel::shortcuts() const {
    if (content_ == PanelContent::application)
        return {{"Applications", std::string(applicationsFolder), "app"}};
    return {{"Home", fileSystem_.homeDirectory(), "house"},
            {"Documents", fileSystem_.documentsDirectory(), "doc"}};
}

std::string FilePanel::titleOf(const DirectoryEntry& entry) {
    return entry.kind == EntryKind::application ? path::stem(entry.name) : entry.name;
}

std::string_view FilePanel::emptyText() const {
    if (!folderProblem_.empty()) return "";
    switch (content_) {
    case PanelContent::json:
        return "There are no JSON files in this folder.";
    case PanelContent::application:
        return "There are no applications in this folder.";
    case PanelContent::folder:
        return "There are no folders in this folder.";
    default:
        return "This folder is empty.";
    }
}

bool FilePanel::allows(const DirectoryEntry& entry) const {
    switch (content_) {
    case PanelContent::json:
        return entry.kind == EntryKind::file && hasExtension(entry.name, extensionOf(content_));
    case PanelContent::application:
        return entry.kind == EntryKind::application;
    case PanelContent::folder:
        return entry.kind == EntryKind::folder;
    case PanelContent::file:
        return entry.kind == EntryKind::file || entry.kind == EntryKind::application;
    }
    return false;
}

void FilePanel::readFolder() {
    refusal_.clear();
    selected_.reset();
    auto found = fileSystem_.contentsOfDirectory(folder_);
    entries_ = found ? std::move(*found) : std::vector<DirectoryEntry>();
    folderProblem_ = found ? "" : found.error().localizedDescription;
    std::erase_if(entries_, [this](const DirectoryEntry& entry) {
        const bool isHidden = entry.name.starts_with('.') && !showsHidden_;
        return isHidden || (entry.kind != EntryKind::folder && !allows(entry));
    });
    sortForUser(entries_);
}

void FilePanel::goTo(const std::string& folder) {
    objectWillChange.fire();
    const bool nameIsPath = namesFolder() || name_.find('/') != std::string::npos;
    folder_ = resolved(folder);
    readFolder();
    if (!isSaving_)
        setName("");
    else
        setName(nameIsPath ? proposedName_ : name_);
}

void FilePanel::goUp() {
    const auto from = path::lastComponent(folder_);
    goTo(path::parent(folder_));
    const auto found = std::ranges::find(entries_, from, &DirectoryEntry::name);
    if (found != entries_.end()) select(static_cast<std::size_t>(found - entries_.begin()));
}

void FilePanel::select(std::size_t entry) {
    if (entry >= entries_.size()) return;
    objectWillChange.fire();
    selected_ = entry;
    refusal_.clear();
    // A folder is no name to save under.
    if (!isSaving_ || entries_[entry].kind != EntryKind::folder) name_ = entries_[entry].name;
}

void FilePanel::selectByPrefix(std::string_view prefix) {
    const auto wanted = text::lowercased(prefix);
    const auto found = std::ranges::find_if(entries_, [&](const DirectoryEntry& entry) {
        return text::lowercased(titleOf(entry)).starts_with(wanted);
    });
    if (found != entries_.end()) select(static_cast<std::size_t>(found - entries_.begin()));
}

void FilePanel::setName(const std::string& name) {
    objectWillChange.fire();
    name_ = name;
    refusal_.clear();
    selected_.reset();
    const auto found = std::ranges::find(entries_, name, &DirectoryEntry::name);
    if (found != entries_.end()) selected_ = static_cast<std::size_t>(found - entries_.begin());
}

void FilePanel::setShowsHidden(bool shows) {
    if (shows == showsHidden_) return;
    objectWillChange.fire();
    showsHidden_ = shows;
    readFolder();
    setName(name_);
}

std::string FilePanel::resolved(const std::string& name) const {
    const bool isInHome = name == "~" || name.starts_with("~/");
    const auto whole = isInHome                ? fileSystem_.homeDirectory() + name.substr(1)
                       : name.starts_with('/') ? name
                                               : path::join(folder_, name);
    const auto normal = std::filesystem::path(whole).lexically_normal().string();
    return normal.size() > 1 && normal.ends_with('/') ? normal.substr(0, normal.size() - 1)
                                                      : normal;
}

/// Only a text that is meant as a path, since a file may be saved beside a folder of its name.
bool FilePanel::namesFolder() const {
    const bool isPath =
        name_ == "~" || name_ == "." || name_ == ".." || name_.find('/') != std::string::npos;
    return isPath && fileSystem_.isDirectory(resolved(name_));
}

std::string FilePanel::fileToSave() const {
    const auto extension = extensionOf(content_);
    const auto file = resolved(name_);
    if (extension.empty() || hasExtension(file, extension)) return file;
    return file + "." + std::string(extension);
}

std::string FilePanel::savingProblem() const {
    const auto folder = name_.empty() ? folder_ : path::parent(fileToSave());
    if (!fileSystem_.isDirectory(folder)) return "There is no folder “" + folder + "”.";
    if (!fileSystem_.isWritable(folder))
        return "You can't save files in " + nameInQuotes(folder) + ".";
    return "";
}

std::string FilePanel::problem() const {
    if (!refusal_.empty()) return refusal_;
    if (!folderProblem_.empty()) return folderProblem_;
    return isSaving_ && !namesFolder() ? savingProblem() : "";
}

bool FilePanel::canConfirm() const {
    if (text::trimmed(name_).empty())
        return content_ == PanelContent::folder && folderProblem_.empty();
    return !isSaving_ || namesFolder() || savingProblem().empty();
}

std::optional<std::string> FilePanel::activate(std::size_t entry) {
    if (entry >= entries_.size()) return std::nullopt;
    if (entries_[entry].kind == EntryKind::folder) {
        goTo(path::join(folder_, entries_[entry].name));
        return std::nullopt;
    }
    select(entry);
    return confirm();
}

std::optional<std::string> FilePanel::confirm() {
    if (!canConfirm()) return std::nullopt;
    return isSaving_ ? confirmSaving() : confirmOpening();
}

std::optional<std::string> FilePanel::confirmSaving() {
    if (namesFolder()) {
        goTo(name_);
        return std::nullopt;
    }
    const auto file = fileToSave();
    if (fileSystem_.isDirectory(file)) {
        objectWillChange.fire();
        refusal_ = nameInQuotes(file) + " is a folder.";
        return std::nullopt;
    }
    if (!fileSystem_.exists(file)) return file;
    const auto answer = alerts_.runModal(
        {.title = nameInQuotes(file) + " already exists. Do you want to replace it?",
         .message = "A file with this name is already in " + nameInQuotes(path::parent(file)) +
                    ". Replacing it overwrites what it holds.",
         .buttons = {"Replace", "Cancel"},
         .firstButtonIsDestructive = true});
    return answer.button == AlertResponse::firstButton ? std::optional(file) : std::nullopt;
}

std::optional<EntryKind> FilePanel::kindOf(const std::string& path) const {
    if (path == "/") return EntryKind::folder;
    if (const auto beside = fileSystem_.contentsOfDirectory(path::parent(path))) {
        const auto found =
            std::ranges::find(*beside, path::lastComponent(path), &DirectoryEntry::name);
        return found == beside->end() ? std::nullopt : std::optional(found->kind);
    }
    if (fileSystem_.isDirectory(path)) return EntryKind::folder;
    return fileSystem_.exists(path) ? std::optional(EntryKind::file) : std::nullopt;
}

std::optional<std::string> FilePanel::confirmOpening() {
    auto target = name_.empty() ? folder_ : resolved(name_);
    auto kind = kindOf(target);
    if (const auto extension = extensionOf(content_); !kind && !extension.empty()) {
        const auto whole = target + "." + std::string(extension);
        kind = kindOf(whole);
        if (kind) target = whole;
    }
    if (kind && allows({path::lastComponent(target), *kind})) return target;
    if (kind == EntryKind::folder) {
        goTo(target);
        return std::nullopt;
    }
    objectWillChange.fire();
    if (kind) {
        refusal_ = nameInQuotes(target) + " isn't " + std::string(wordFor(content_)) + ".";
    } else {
        const bool wantsFolder = content_ == PanelContent::folder;
        refusal_ =
            "There is no " + std::string(wantsFolder ? "folder" : "file") + " “" + target + "”.";
    }
    return std::nullopt;
}

} // namespace corvane
