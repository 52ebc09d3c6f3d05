#include "linux/LinuxDesktop.h"

#include "foundation/Text.h"
#include "linux/files/LinuxBookmarks.h"
#include "linux/files/LinuxFileSystem.h"
#include "linux/files/LinuxUserDefaults.h"
#include "linux/installed/InstalledApplications.h"
#include "linux/installed/LinuxBundles.h"
#include "linux/installed/LinuxFileIcons.h"
#include "linux/installed/LinuxMetadataQuery.h"
#include "linux/running/ApplicationOpener.h"
#include "linux/running/LaunchedApplications.h"
#include "linux/running/LinuxApplications.h"
#include "linux/running/Quitting.h"
#include "linux/running/RunningApplications.h"
#include "linux/screen/LinuxAccessibility.h"
#include "linux/screen/LinuxDisplays.h"
#include "linux/screen/LinuxWindowList.h"
#include "linux/screen/SystemSettings.h"
#include "linux/scripts/LinuxScriptEngine.h"
#include "linux/scripts/LinuxTaskRunner.h"
#include "linux/session/LinuxUserNotifications.h"
#include "linux/system/EventThread.h"
#include "linux/system/LinuxBackgroundQueue.h"
#include "linux/system/LinuxClock.h"
#include "linux/system/LinuxDiskQueue.h"
#include "linux/windows/RecentWindows.h"
#include "linux/windows/WindowSystems.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include <malloc.h>

namespace corvane {

namespace {

/// The place on the nearest monitor that is nearest to that one, within what panels leave there, as
/// far as the frame fits.
PixelPoint nearestInside(const std::vector<Monitor>& monitors, const PixelRect& frame) {
    const auto inside = [](double from, double length, double start, double room) {
        return std::max(start, std::min(from, start + room - length));
    };
    PixelPoint nearest = frame.origin;
    double least = std::numeric_limits<double>::max();
    for (const auto& [whole, area] : monitors) {
        const PixelPoint there{
            inside(frame.origin.x, frame.size.width, area.origin.x, area.size.width),
            inside(frame.origin.y, frame.size.height, area.origin.y, area.size.height)};
        const double way = std::hypot(there.x - frame.origin.x, there.y - frame.origin.y);
        if (way >= least) continue;
        least = way;
        nearest = there;
    }
    return nearest;
}

/// The question that a terminal emulator of the kind lacks, in its place.
Quitting::AskAboutJobs askingAboutJobs(MainQueue& mainQueue, Alerts& alerts) {
    return [&](const std::vector<std::string>& names, std::function<void()> terminate) {
        const Alert question{.title = "Do you want to terminate running processes in this window?",
                             .message = text::joined(names, ", "),
                             .buttons = {"Terminate", "Cancel"},
                             .firstButtonIsDestructive = true};
        mainQueue.async([&alerts, question, terminate = std::move(terminate)] {
            if (alerts.runModal(question).button == AlertResponse::firstButton) terminate();
        });
    };
}

} // namespace

struct LinuxDesktop::Facilities {
    Facilities(MainQueue& mainQueue, Alerts& alerts, EventThread& events)
        : quitting{*windows, running, askingAboutJobs(mainQueue, alerts)},
          defaults{files, clock, mainQueue, diskQueue}, settings{recent, alerts},
          notifications(mainQueue, events), eventThread(events) {}

    bool openHere(const Url& url) {
        const bool isMine = SystemSettings::areMeantBy(url);
        if (isMine) settings.open();
        return isMine;
    }

    /// Some programs say that they have started only with a window that never comes.
    std::string beginLaunch(const InstalledApplication& application) {
        constexpr std::chrono::seconds longest(15);
        const auto token = windows->beginLaunch({application.displayName, application.desktopId},
                                                halfASecondFromNow());
        if (!token.empty())
            eventThread.after(longest, [windows = windows, token] {
                windows->endLaunch(token, halfASecondFromNow());
            });
        return token;
    }

    InstalledApplications installed;
    /// Held by what is still to be told of launches, too.
    const std::shared_ptr<WindowSystem> windows = windowSystemHere();
    RecentWindows recent{*windows};
    LaunchedApplications launched;
    RunningApplications running{installed, recent, launched};
    Quitting quitting;
    ApplicationOpener opener{
        installed,
        {.list = [this] { return running.list(); },
         .activate = [this](const auto& application) { return running.activate(application); },
         .launched = [this](const auto& application,
                            const auto& processes) { launched.add(application, processes); },
         .beginLaunch = [this](const auto& application) { return beginLaunch(application); },
         .endLaunch =
             [this](const auto& token) { windows->endLaunch(token, halfASecondFromNow()); }}};
    LinuxClock clock;
    LinuxFileSystem files{installed};
    /// Behind what its work uses, before those that give it work.
    LinuxDiskQueue diskQueue;
    LinuxUserDefaults defaults;
    LinuxBundles bundles{installed};
    LinuxFileIcons fileIcons{installed};
    LinuxBookmarks bookmarks{installed};
    SystemSettings settings;
    LinuxApplications applications{opener, running, quitting,
                                   [this](const Url& url) { return openHere(url); }};
    LinuxTaskRunner tasks{opener};
    LinuxDisplays displays{recent};
    LinuxWindowList windowList{recent, running};
    LinuxAccessibility accessibility{recent, running};
    LinuxScriptEngine scripts{opener, accessibility};
    LinuxMetadataQuery metadata{installed};
    LinuxUserNotifications notifications;
    EventThread& eventThread;
    NotificationCenter notificationCenter;
    /// Last, so that its work ends before what it uses goes.
    LinuxBackgroundQueue backgroundQueue;
};

LinuxDesktop::LinuxDesktop(MainQueue& mainQueue, Alerts& alerts, EventThread& events)
    : facilities_(std::make_unique<Facilities>(mainQueue, alerts, events)) {
    // A start takes more memory than what it leaves behind.
    constexpr double started = 2;
    mainQueue.after(started, [] { ::malloc_trim(0); });
}

LinuxDesktop::~LinuxDesktop() = default;

void LinuxDesktop::activateOwnWindow(std::uint64_t number, const std::string& title) {
    auto& facilities = *facilities_;
    const auto window = facilities.running.ownWindow(number, title);
    if (window) facilities.recent.activate(window->window, halfASecondFromNow());
}

bool LinuxDesktop::isOwnWindowAway(std::uint64_t number, const std::string& title) {
    const auto window = facilities_->running.ownWindow(number, title);
    // One that has just been made isn't anywhere yet.
    return window && !window->isOnScreen && (window->isMinimized || !window->workspace.empty());
}

std::optional<Point> LinuxDesktop::cornerOfOwnWindow(std::uint64_t number,
                                                     const std::string& title) {
    const auto window = facilities_->running.ownWindow(number, title);
    if (!window) return std::nullopt;
    return Point{window->frame.origin.x, window->frame.origin.y};
}

bool LinuxDesktop::moveOwnWindow(std::uint64_t number, const std::string& title,
                                 const Point& corner) {
    auto& facilities = *facilities_;
    const auto window = facilities.running.ownWindow(number, title);
    if (!window) return false;
    FrameWish wish{.origin = PixelPoint{corner.x, corner.y}};
    if (const auto monitors = facilities.recent.monitors(halfASecondFromNow()))
        wish.origin = nearestInside(*monitors, {*wish.origin, window->frame.size});
    const auto answer = facilities.recent.place(window->window, wish, halfASecondFromNow());
    return answer == WindowAnswer::done || answer == WindowAnswer::refused;
}

void LinuxDesktop::endLaunch(const std::string& token) {
    if (!token.empty()) facilities_->windows->endLaunch(token, halfASecondFromNow());
}

Machine LinuxDesktop::machine() {
    auto& facilities = *facilities_;
    return {.backgroundQueue = facilities.backgroundQueue,
            .diskQueue = facilities.diskQueue,
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
