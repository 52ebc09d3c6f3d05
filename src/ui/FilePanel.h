#pragma once

#include "foundation/Published.h"
#include "platform/FileSystem.h"
#include "platform/Panels.h"

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace corvane {

class Alerts;

/// A folder that a panel leads to.
struct PanelPlace {
    std::string title;
    std::string path;
    /// The name of a symbol.
    std::string_view symbol = "folder";

    bool operator==(const PanelPlace&) const = default;
};

/// One panel that saves or opens a file: a folder with those of its entries that the panel's
/// content allows, and a name. The name may also be a path, from the folder or from "~/" or "/" on.
/// Main thread.
class FilePanel {
public:
    /// Starts in the panel's directory; where that can't be read, in Documents, in the home folder
    /// or in "/". File system and alerts outlive it.
    FilePanel(const SavePanel& panel, const FileSystem& fileSystem, Alerts& alerts);
    FilePanel(const OpenPanel& panel, const FileSystem& fileSystem, Alerts& alerts);

    /// Fires before anything read here changes.
    ChangeSignal objectWillChange;

    const std::string& title() const { return title_; }
    const std::string& message() const { return message_; }
    bool isSaving() const { return isSaving_; }
    /// "Save" or "Open".
    std::string_view confirmTitle() const { return isSaving_ ? "Save" : "Open"; }
    /// Whether the name can be typed; applications are only picked.
    bool takesName() const { return content_ != PanelContent::application; }

    const std::string& folder() const { return folder_; }
    /// From "/" down to the folder itself.
    std::vector<PanelPlace> ancestors() const;
    std::vector<PanelPlace> shortcuts() const;

    /// Folders first, each kind in the user's order of names.
    const std::vector<DirectoryEntry>& entries() const { return entries_; }
    /// What an entry is called: an application without its extension.
    static std::string titleOf(const DirectoryEntry& entry);
    /// What stands in the place of the entries where there are none.
    std::string_view emptyText() const;
    std::optional<std::size_t> selected() const { return selected_; }
    const std::string& name() const { return name_; }
    bool showsHidden() const { return showsHidden_; }

    /// Why the folder can't be shown, or why the name can't be taken; empty where all is well.
    std::string problem() const;
    bool canConfirm() const;

    /// A folder that can't be read is shown without entries and as a problem.
    void goTo(const std::string& folder);
    /// Selects the folder where it came from.
    void goUp();
    void select(std::size_t entry);
    /// Selects the first entry whose title starts with that text, case ignored.
    void selectByPrefix(std::string_view prefix);
    void setName(const std::string& name);
    void setShowsHidden(bool shows);

    /// Opens a folder, or takes an entry as the answer. Like `confirm` it gives the path that ends
    /// the panel, and nothing while the panel stays up.
    std::optional<std::string> activate(std::size_t entry);
    /// Takes what the name, or else the folder itself, stands for. A folder is gone to where no
    /// folder is wanted. Asks before it gives a file to save that is there already.
    std::optional<std::string> confirm();

private:
    FilePanel(std::string title, std::string message, PanelContent content, bool isSaving,
              const FileSystem& fileSystem, Alerts& alerts);
    void start(const std::string& directory);
    void readFolder();
    bool allows(const DirectoryEntry& entry) const;
    std::string resolved(const std::string& name) const;
    bool namesFolder() const;
    std::string fileToSave() const;
    std::string savingProblem() const;
    std::optional<EntryKind> kindOf(const std::string& path) const;
    std::optional<std::string> confirmSaving();
    std::optional<std::string> confirmOpening();

    const std::string title_;
    const std::string message_;
    const PanelContent content_;
    const bool isSaving_;
    const FileSystem& fileSystem_;
    Alerts& alerts_;
    std::string proposedName_;

    std::string folder_;
    std::string folderProblem_;
    std::vector<DirectoryEntry> entries_;
    std::optional<std::size_t> selected_;
    std::string name_;
    /// What the last confirm met.
    std::string refusal_;
    bool showsHidden_ = false;
};

} // namespace corvane
