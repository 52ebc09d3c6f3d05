#include "linux/LinuxDesktop.h"

#include "linux/files/LinuxBookmarks.h"
#include "linux/files/LinuxFileSystem.h"
#include "linux/files/LinuxUserDefaults.h"
#include "linux/installed/InstalledApplications.h"
#include "linux/installed/LinuxBundles.h"
#include "linux/installed/LinuxFileIcons.h"
#include "linux/installed/LinuxMetadataQuery.h"
#include "linux/running/ApplicationOpener.h"
#include "linux/running/LinuxApplications.h"
#include "linux/running/Quitting.h"
#include "linux/running/RunningApplications.h"
#include "linux/screen/LinuxAccessibility.h"
#include "linux/screen/LinuxDisplays.h"
#include "linux/screen/LinuxWindowList.h"
#include "linux/scripts/LinuxScriptEngine.h"
#include "linux/scripts/LinuxTaskRunner.h"
#include "linux/session/LinuxUserNotifications.h"
#include "linux/system/LinuxBackgroundQueue.h"
#include "linux/system/LinuxClock.h"
#include "linux/windows/RecentWindows.h"
#include "linux/windows/WindowSystems.h"

namespace corvane {

struct LinuxDesktop::Facilities {
    Facilities(MainQueue& mainQueue, EventThread& events) : notifications(mainQueue, events) {}

    InstalledApplications installed;
    const std::unique_ptr<WindowSystem> windows = windowSystemHere();
    RecentWindows recent{*windows};
    RunningApplications running{installed, recent};
    Quitting quitting{*windows, running};
    ApplicationOpener opener{
        installed,
        {.list = [this] { return running.list(); },
         .activate = [this](const auto& application) { return running.activate(application); }}};
    LinuxClock clock;
    LinuxFileSystem files{installed};
    LinuxUserDefaults defaults{files, clock};
    LinuxBundles bundles{installed};
    LinuxFileIcons fileIcons{installed};
    LinuxBookmarks bookmarks{installed};
    LinuxApplications applications{opener, running, quitting};
    LinuxTaskRunner tasks{opener};
    LinuxDisplays displays{recent};
    LinuxWindowList windowList{recent, running};
    LinuxAccessibility accessibility{recent, running};
    LinuxScriptEngine scripts{opener, accessibility};
    LinuxMetadataQuery metadata{installed};
    LinuxUserNotifications notifications;
    NotificationCenter notificationCenter;
    /// Last, so that its work ends before what it uses goes.
    LinuxBackgroundQueue backgroundQueue;
};

LinuxDesktop::LinuxDesktop(MainQueue& mainQueue, EventThread& events)
    : facilities_(std::make_unique<Facilities>(mainQueue, events)) {}

LinuxDesktop::~LinuxDesktop() = default;

void LinuxDesktop::activateOwnWindow(std::uint64_t number, const std::string& title) {
    facilities_->running.activateOwn(number, title);
}

Machine LinuxDesktop::machine() {
    auto& facilities = *facilities_;
    return {.backgroundQueue = facilities.backgroundQueue,
            .clock = facilities.clock,
            .fileSystem = facilities.files,
            .userDefaults = facilities.defaults,
            .bundles = facilities.bundles,
            .applications = facilities.applications,
            .tasks = facilities.tasks,
            .scripts = facilities.scripts,
            .metadataQuery = facilities.metadata,
            .displays = facilities.displays,
            .windowList = facilities.windowList,
            .accessibility = facilities.accessibility,
            .notificationCenter = facilities.notificationCenter,
            .userNotifications = facilities.notifications,
            .bookmarks = facilities.bookmarks,
            .fileIcons = facilities.fileIcons};
}

} // namespace corvane
