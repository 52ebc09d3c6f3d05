#pragma once

#include "platform/Platform.h"
#include "simulated/SimulatedBookmarks.h"
#include "simulated/SimulatedFiles.h"
#include "simulated/SimulatedPanels.h"
#include "simulated/SimulatedQueue.h"
#include "simulated/SimulatedScreen.h"
#include "simulated/SimulatedStatusBar.h"

#include <map>
#include <memory>
#include <set>
#include <string>
#include <vector>

namespace corvane {

/// One application that is installed on the simulated desktop.
struct SimulatedApplication {
    std::string path;
    std::optional<std::string> bundleIdentifier = {};
    std::optional<std::string> displayName = {};
    std::optional<std::string> bundleName = {};
    /// As FileIcons gives icons.
    std::optional<std::string> icon = {};
    /// A file that stands for it, if there is one.
    std::optional<std::string> launcher = {};
    /// Whether the `mdfind` of the desktop knows it, under its display name.
    bool isIndexed = true;
    /// What opening something with this application ends in; it opens where empty.
    std::optional<Error> openError = {};
};

/// How an application takes it to be asked to quit.
enum class QuitBehaviour {
    /// Goes, with its windows, on a later turn of the main queue.
    quits,
    /// Is asked, asks the user back, and stays.
    asks,
    /// Can't be asked; goes by force.
    refuses,
    /// Can't be asked, nor be ended by force.
    refusesForce,
    /// Has ended by the time it is asked.
    vanishes
};

/// A desktop in memory, with virtual time: the twin of the real one for tests, demonstrations and
/// benchmarks. Its members are plain data that a test fills in, refusals included; what is asked of
/// it stands in `log`, a line each:
///
///     open file:///notes.txt            openUrl(url)
///     open file:///a.txt with /Applications/Pad.app
///     task /usr/bin/open -a Pad /a.txt  a process and its arguments
///     script tell application "Safari"... AppleScript, line breaks as " / "
///     query kMDItemKind ... %@ | Pad    a metadata query and its argument
///     reveal file:///folder/            activateFileViewerSelecting
///     terminate 12 | forceTerminate 12  a running application, by process
///     AXPosition 12/7 10,20             a set of an attribute: process, window, value
///     alert Title | sheet Title         an alert as it is shown
///     panel Title                       a file panel
///     notify Title: text                a notification
///     key 2 | front 2 | deminiaturize 2 a window of the program, by identifier
///
/// and before it "background " where the main thread didn't ask. Single-threaded: background work
/// runs in the same order as if it took no time, after what is running.
class SimulatedDesktop {
public:
    SimulatedDesktop();
    ~SimulatedDesktop();
    SimulatedDesktop(const SimulatedDesktop&) = delete;
    SimulatedDesktop& operator=(const SimulatedDesktop&) = delete;

    /// The facilities; valid while the desktop lives.
    Platform platform();
    /// The same with files that stand elsewhere, on a disk for example.
    Platform platform(FileSystem& elsewhere, Bookmarks& bookmarksElsewhere);

    // The scene.

    /// Adds an application, with its bundle in the file system.
    void install(SimulatedApplication application);

    SimulatedFiles files;
    SimulatedBookmarks bookmarks{files};
    std::map<std::string, PropertyList, std::less<>> defaults;
    /// What was stored before can't be read.
    bool defaultsAreUnreadable = false;
    std::vector<SimulatedApplication> applications;
    std::vector<RunningApplication> running;
    /// By process; others quit when they are asked.
    std::map<std::int32_t, QuitBehaviour> quitBehaviours;
    /// The info dictionary of the program itself.
    std::map<std::string, std::string, std::less<>> mainBundleInfo;
    /// The bundle path of the default handler by file extension, by scheme with ":" ("http:"), and
    /// "/" for folders.
    std::map<std::string, std::string> defaultHandlers;
    /// Metadata items by the query's argument.
    std::map<std::string, std::vector<MetadataItem>> metadata;
    /// URLs that openUrl(url) refuses.
    std::set<std::string> refusedUrls;
    /// What a task ends in, by its words joined with blanks; tasks not named are answered by the
    /// desktop itself.
    std::map<std::string, Result<TaskResult>> taskResults;
    /// What a script ends in, by a part of its source; others succeed. Nothing where no script can
    /// be made of the source.
    std::map<std::string, std::optional<ScriptOutcome>> scriptOutcomes;
    /// With no main window, alerts that would be sheets are modal.
    bool hasMainWindow = true;
    bool systemIsDark = false;
    ChangeSignal screenParametersDidChange;
    bool notificationsAreDenied = false;

    /// Answers for alerts, by title; one that isn't named is answered with its first button.
    std::map<std::string, AlertResponse> alertAnswers;
    /// Every alert that was shown, in order.
    std::vector<Alert> shownAlerts;

    /// What the user chooses in file panels.
    SimulatedPanels panels{log, queue};

    /// Displays, and the windows of all applications.
    SimulatedScreen screen{queue, log};

    /// The windows of the program itself.
    std::vector<ApplicationWindow> windows;
    /// Whether a main window that is asked for comes, at once.
    bool opensMainWindows = false;
    /// What the newest window of the tour tells at its close.
    std::function<void()> windowWillClose;
    /// Whether the program has the keyboard, and whether its main loop has begun.
    bool isActive = false;
    bool isRunning = true;

    /// Status items, and the images that are there.
    SimulatedStatusBar statusBar;

    // What happened.

    /// Every notification, in order.
    std::vector<UserNotification> notifications;
    std::vector<std::string> log;
    void tell(const std::string& line);
    /// The lines of the log that start with `prefix`, joined by line breaks; the whole log for the
    /// empty text.
    std::string logged(std::string_view prefix = {}) const;

    // Time. Nothing moves it but these.

    SimulatedQueue queue;
    /// Runs what is due now.
    void runUntilIdle() { queue.runFor(0); }
    void runFor(double seconds) { queue.runFor(seconds); }

private:
    struct Facilities;
    std::unique_ptr<Facilities> facilities_;
};

} // namespace corvane
