#include "linux/LinuxDesktop.h"

#include "linux/ApplicationOpener.h"
#include "linux/Catalogue.h"
#include "linux/LinuxAccessibility.h"
#include "linux/LinuxApplications.h"
#include "linux/LinuxBackgroundQueue.h"
#include "linux/LinuxBookmarks.h"
#include "linux/LinuxBundles.h"
#include "linux/LinuxClock.h"
#include "linux/LinuxDisplays.h"
#include "linux/LinuxFileIcons.h"
#include "linux/LinuxFileSystem.h"
#include "linux/LinuxMetadataQuery.h"
#include "linux/LinuxScriptEngine.h"
#include "linux/LinuxTaskRunner.h"
#include "linux/LinuxUserDefaults.h"
#include "linux/LinuxUserNotifications.h"
#include "linux/LinuxWindowList.h"
#include "linux/RunningApplications.h"

namespace corvane {

struct LinuxDesktop::Facilities {
    Facilities(const Toolkit& given, EventThread& events)
        : toolkit(given), notifications(given.mainQueue, events) {}

    const Toolkit toolkit;
    Catalogue catalogue;
    RunningApplications running{catalogue};
    ApplicationOpener opener{catalogue,
                             {.list = [this] { return running.list(); },
                              .activate = [this](auto pid) { return running.activate(pid); }}};
    LinuxClock clock;
    LinuxFileSystem files{catalogue};
    LinuxUserDefaults defaults{files, clock};
    LinuxBundles bundles{catalogue};
    LinuxFileIcons fileIcons{catalogue};
    LinuxBookmarks bookmarks{catalogue};
    LinuxApplications applications{opener, running};
    LinuxTaskRunner tasks{opener};
    /// Of the main thread.
    x11::Connection display;
    LinuxDisplays displays{display};
    LinuxWindowList windowList{display, running};
    LinuxAccessibility accessibility{display};
    LinuxScriptEngine scripts{opener, accessibility};
    LinuxMetadataQuery metadata{catalogue};
    LinuxUserNotifications notifications;
    NotificationCenter notificationCenter;
    /// Last, so that its work ends before what it uses goes.
    LinuxBackgroundQueue backgroundQueue;
};

LinuxDesktop::LinuxDesktop(const Toolkit& toolkit, EventThread& events)
    : facilities_(std::make_unique<Facilities>(toolkit, events)) {}

LinuxDesktop::~LinuxDesktop() = default;

Platform LinuxDesktop::platform() {
    auto& facilities = *facilities_;
    return {.mainQueue = facilities.toolkit.mainQueue,
            .backgroundQueue = facilities.backgroundQueue,
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
            .alerts = facilities.toolkit.alerts,
            .notificationCenter = facilities.notificationCenter,
            .userNotifications = facilities.notifications,
            .statusBar = facilities.toolkit.statusBar,
            .images = facilities.toolkit.images,
            .application = facilities.toolkit.application,
            .appearance = facilities.toolkit.appearance,
            .bookmarks = facilities.bookmarks,
            .panels = facilities.toolkit.panels,
            .fileIcons = facilities.fileIcons};
}

} // namespace corvane
