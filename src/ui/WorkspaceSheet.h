#pragma once

#include "core/Records.h"
#include "foundation/Published.h"

#include <functional>
#include <memory>
#include <span>
#include <string>
#include <string_view>

namespace corvane {

class Clock;
class WorkspaceStore;

/// The sheet that makes a workspace or changes one: a name, a description and an icon. Nothing
/// reaches the store before `commit`. Main thread.
class WorkspaceSheet {
public:
    /// Fires before a field below changes.
    ChangeSignal objectWillChange;
    Published<std::string> name{objectWillChange};
    Published<std::string> description{objectWillChange};
    /// The name of a symbol; may be one that isn't among `availableIcons`.
    Published<std::string> selectedIcon{objectWillChange};

    std::string_view title() const { return title_; }
    std::string_view commitTitle() const { return commitTitle_; }
    std::span<const std::string_view> availableIcons() const { return availableIcons_; }
    /// Whether there is a name; blanks count.
    bool canCommit() const { return !name->empty(); }
    /// Creates or saves; nothing where `canCommit` is false.
    void commit();

private:
    friend std::unique_ptr<WorkspaceSheet> newSpaceSheet(WorkspaceStore&, const Clock&);
    friend std::unique_ptr<WorkspaceSheet> editWorkspaceSheet(const Workspace&, WorkspaceStore&,
                                                              const Clock&);
    WorkspaceSheet() = default;

    std::string_view title_;
    std::string_view commitTitle_;
    std::span<const std::string_view> availableIcons_;
    std::function<void()> store_;
};

/// NewSpaceSheet: adds a workspace at the end of the list. Store and clock outlive the sheet.
std::unique_ptr<WorkspaceSheet> newSpaceSheet(WorkspaceStore& store, const Clock& clock);
/// EditWorkspaceSheet: writes the whole record back as it was when the sheet was made, but for the
/// three fields and `dateModified`.
std::unique_ptr<WorkspaceSheet> editWorkspaceSheet(const Workspace& workspace,
                                                   WorkspaceStore& store, const Clock& clock);

} // namespace corvane
