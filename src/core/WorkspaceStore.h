#pragma once

#include "core/Preference.h"
#include "core/Records.h"
#include "core/WorkspacePersistence.h"
#include "foundation/Published.h"
#include "foundation/Url.h"
#include "platform/Platform.h"

#include <map>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <vector>

namespace corvane {

class BookmarkManager;
class ResourceLauncher;

/// The alerts that the user can switch off, each with the preference that its checkbox clears.
enum class DismissibleAlertType {
    layoutSaved,
    workspaceClosed,
    layoutsDisabled,
    applicationsClosed
};

/// All state of the program and every operation on it: one instance for the life of the process. It
/// is declared here and defined where each subsystem lives: editing, saving, preferences and alerts
/// in core/, starting in launch/, quitting in quit/, window layouts in layouts/. Main thread only.
/// Operations return nothing and can't fail towards their caller: an unknown identifier ends them
/// silently. Records are found by identifier; the first in list order counts.
class WorkspaceStore {
public:
    /// Reads the preferences, loads the file, runs the migrations and seeds an empty store, all
    /// before it returns. The platform and the bookmarks outlive the store.
    WorkspaceStore(Platform& platform, BookmarkManager& bookmarks);
    ~WorkspaceStore();
    WorkspaceStore(const WorkspaceStore&) = delete;
    WorkspaceStore& operator=(const WorkspaceStore&) = delete;

    /// Fires before any field below takes a new value. Declared before them, as they refer to it.
    ChangeSignal objectWillChange;

    /// State that everyone reads and the store alone assigns.
    template <typename T>
    class Field : public Published<T> {
    public:
        using Published<T>::Published;

    private:
        friend class WorkspaceStore;
        friend struct StoreState;
        using Published<T>::operator=;
        using Published<T>::mutate;
    };

    Field<std::vector<Workspace>> workspaces{objectWillChange};
    /// A copy of one record, taken when it was assigned.
    Field<std::optional<Workspace>> activeWorkspace{objectWillChange};
    Field<std::string> searchText{objectWillChange};
    /// A start has run to its end since the flag was last cleared.
    Field<bool> hasLaunchedResources{objectWillChange};
    /// The workspaces whose start has run through. What was asked for, never what runs.
    Field<std::set<Uuid>> runningWorkspaces{objectWillChange};
    /// The resources launched for each workspace; an entry may be empty.
    Field<std::map<Uuid, std::set<Uuid>>> runningResources{objectWillChange};

    /// Why the list differs from the file: the last save failed. Empty while saving works.
    Field<std::string> savingProblem{objectWillChange};

    Preference<bool> focusMode;
    Preference<bool> autoSaveLayouts;
    /// "first" or "last"; any other text counts as "first".
    Preference<std::string> fullscreenPriority;
    Preference<bool> hasShownFullscreenLimitationAlert;
    Preference<bool> enableAccessibilityFeatures;
    Preference<bool> showLayoutSavedAlert;
    Preference<bool> showWorkspaceClosedAlert;
    Preference<bool> showLayoutsDisabledAlert;
    Preference<bool> showApplicationsClosedAlert;

    // Looking things up, and what a view says of itself.

    /// Null where there is none; good until the next change.
    const Workspace* find(const Uuid& workspaceId) const;
    const Resource* find(const Uuid& resourceId, const Uuid& workspaceId) const;
    bool isRunning(const Uuid& workspaceId) const;
    bool isRunning(const Uuid& resourceId, const Uuid& workspaceId) const;
    /// The workspace that a start is about to be for.
    void activate(const Workspace& workspace);
    void search(std::string text);

    // Editing. Every operation that changes the list saves it before it returns.

    void saveWorkspaces();
    void addWorkspace(Workspace workspace);
    /// Replaces the record with the same identifier; the caller sets `dateModified`.
    void updateWorkspace(Workspace workspace);
    /// Removes every record with that identifier, after a copy of all was kept; saves even if there
    /// was none.
    void deleteWorkspace(const Uuid& workspaceId);
    /// A copy with a new identity, " Copy" behind its name, and both dates now; its resources keep
    /// their identifiers.
    void duplicateWorkspace(const Workspace& workspace);
    void addResource(Resource resource, const Uuid& workspaceId);
    void removeResource(const Uuid& resourceId, const Uuid& workspaceId);
    // Put back what was removed, at its old place or, where the list is shorter by now, at the end.
    void insertWorkspace(Workspace workspace, std::size_t index);
    void insertResource(Resource resource, std::size_t index, const Uuid& workspaceId);
    /// `to` counts in the list after the removal. An index outside the list changes nothing.
    void moveResource(std::size_t from, std::size_t to, const Uuid& workspaceId);
    void toggleResourceEnabled(const Uuid& resourceId, const Uuid& workspaceId);
    void addAssociatedApp(const Uuid& resourceId, const std::string& appName,
                          const Uuid& workspaceId);
    /// Removes the first equal name.
    void removeAssociatedApp(const Uuid& resourceId, const std::string& appName,
                             const Uuid& workspaceId);
    void renameResource(const Uuid& resourceId, std::string newName, const Uuid& workspaceId);
    /// Whether the path of a file can be stored. One that isn't UTF-8 can't, and an alert says so.
    bool acceptsPath(const Url& url);
    /// Makes a resource of a dropped or chosen file whose path can be stored.
    void addResourceFromURL(const Url& url, const Uuid& workspaceId);

    // Import and export, by dialogues that end before these return.

    /// Puts the records of a file that the user chooses in place of all workspaces, or behind them,
    /// as they are: a record whose identifier is there already is added all the same.
    void importWorkspaces();
    /// The same with the copies that were kept before workspaces were replaced or deleted.
    void importKeptCopy();
    /// Writes all workspaces to a file that the user names.
    void exportWorkspaces();

    /// Makes the bookmarks of the workspace's files anew, as an editor may have put other files in
    /// their places.
    void renewBookmarks(const Workspace& workspace);

    // Preferences.

    /// Asks, then forgets every stored preference, for the next start: the fields here stay as they
    /// are.
    void resetPreferences();
    /// Lets every dismissible alert be shown again.
    void resetConfirmations();

    // Alerts, each on a later turn of the main queue.

    void showInfoAlert(std::string title, std::string message);
    /// With a checkbox that clears the type's preference. Callers test the preference first.
    void showDismissibleAlert(std::string title, std::string message, DismissibleAlertType type);
    Preference<bool>& preferenceOf(DismissibleAlertType type);

    // Starting.

    /// Opens every enabled resource of the workspace, in order, and marks them and the workspace as
    /// running.
    void startWorkspace(const Workspace& workspace);
    /// Opens one resource, enabled or not, with its first application or the one that stands for
    /// it.
    void launchIndividualResource(const Resource& resource, const Workspace& workspace);

    /// Quits a resource that runs, and launches another.
    void toggle(const Resource& resource, const Workspace& workspace);

    // Quitting. Applications are asked, without waiting for them; one that can't be asked is ended
    // by force. What belongs to a resource is found by name and identifier among what runs now,
    // whoever started it.

    /// Quits what the workspace's enabled resources stand for; the active workspace if none is
    /// given. Its running state is cleared before anything is asked to quit.
    void finishWorkspace(std::optional<Workspace> workspace = std::nullopt);
    /// Quits what one resource stands for, enabled or not. The workspace goes on running.
    void quitIndividualResource(const Resource& resource, const Workspace& workspace);
    /// Focus Mode: quits every user application that no enabled resource of the workspace names.
    void quitNonWorkspaceApplications(const Workspace& workspace);
    /// Asks every user application to quit, none by force. Changes no running state.
    void quitAllApplications();
    /// The summaries that come a second after finishing and after quitting all, if the user wants
    /// them.
    void showWorkspaceClosedSummary(int graceful, int forced,
                                    const std::vector<RunningApplication>& list);
    void showApplicationsClosedSummary(int count, const std::vector<RunningApplication>& list);

    // Window layouts. Two things gate them: `enableAccessibilityFeatures`, which the user sets, and
    // whether the desktop trusts this process, which is asked at each use.

    /// Replaces the workspace's stored layout by the windows that the applications of all its
    /// resources show now; one without any window keeps the old layout. An alert says why nothing
    /// was saved.
    void saveWorkspaceLayout(const Workspace& workspace);
    /// Puts the windows of the stored layout back two seconds later, once. Silent where a gate is
    /// shut.
    void restoreWorkspaceLayout(const Workspace& workspace);
    /// Stores the layout with the workspace and saves the list; nothing where the workspace has
    /// gone.
    void persistWorkspaceLayout(const WorkspaceLayout& layout, const Workspace& workspace);
    /// The applications of all resources, enabled or not, without duplicates, in list order.
    std::vector<std::string> workspaceAppNames(const Workspace& workspace) const;
    /// What the switch of the settings calls after it has set `enableAccessibilityFeatures`.
    void accessibilityFeaturesToggled(bool enabled);
    /// Offers to open the desktop's settings: what a capture shows, on a later turn of the main
    /// queue...
    void showAccessibilityPermissionAlert();
    /// ...and what the switch of the settings shows, at once.
    void showAccessibilityRequiredAlert();

    // Names of applications.

    /// The application that stands for a resource; nothing for a separator and for a file that
    /// nothing opens.
    std::optional<std::string> appNameForResource(const Resource& resource) const;

private:
    void migrateWorkspaceDescriptions();
    void migrateBookmarksIfNeeded();
    void createDefaultWorkspacesIfNeeded();
    void activateFirstWorkspace();
    void importWorkspacesFrom(const std::string& folder);
    void noteSaved();
    void markRunning(const Uuid& resourceId, const Uuid& workspaceId);
    void markFinished(const Uuid& workspaceId);
    /// Says so in an alert where the desktop doesn't tell which applications run, so that none can
    /// be asked to quit.
    bool saysThatNoneAreSeen();
    void sayThatNoneAreSeen(const DesktopFacts& desktop);
    /// Adds the names that stand for a resource and aren't in the list yet.
    void insertAppNames(const Resource& resource, std::vector<std::string>& names) const;
    std::shared_ptr<ResourceLauncher> makeResourceLauncher() const;
    WorkspaceLayout captureLayout(const Workspace& workspace);
    /// Saves the layout of a running workspace before `what` quits, if the user wants that.
    void autoSaveLayout(const Workspace& workspace, std::string_view what);
    void applyWindowLayouts(const std::vector<WindowLayout>& layouts);
    /// On a later turn of the main queue.
    void showFullscreenLimitationAlert(const WindowLayout& chosen);

    /// Let `change` work on the found record, and save.
    template <typename Change>
    void editResources(const Uuid& workspaceId, Change change);
    template <typename Change>
    void editResource(const Uuid& resourceId, const Uuid& workspaceId, Change change);

    Platform& platform_;
    BookmarkManager& bookmarks_;
    WorkspacePersistence persistence_;
    std::shared_ptr<ResourceLauncher> resourceLauncher_;
};

} // namespace corvane
