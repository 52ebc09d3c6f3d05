#pragma once

#include "platform/Accessibility.h"
#include "platform/Alerts.h"
#include "platform/Appearance.h"
#include "platform/ApplicationObject.h"
#include "platform/Applications.h"
#include "platform/Bookmarks.h"
#include "platform/Bundles.h"
#include "platform/Displays.h"
#include "platform/FileSystem.h"
#include "platform/Images.h"
#include "platform/MainQueue.h"
#include "platform/MetadataQuery.h"
#include "platform/NotificationCenter.h"
#include "platform/Panels.h"
#include "platform/ScriptEngine.h"
#include "platform/StatusBar.h"
#include "platform/TaskRunner.h"
#include "platform/UserDefaults.h"
#include "platform/UserNotifications.h"
#include "platform/WindowList.h"

namespace corvane {

/// Every facility of one desktop, handed to the composition root. The facilities outlive whoever
/// uses them.
struct Platform {
    MainQueue& mainQueue;
    BackgroundQueue& backgroundQueue;
    Clock& clock;
    FileSystem& fileSystem;
    UserDefaults& userDefaults;
    Bundles& bundles;
    Applications& applications;
    TaskRunner& tasks;
    ScriptEngine& scripts;
    MetadataQuery& metadataQuery;
    Displays& displays;
    WindowList& windowList;
    Accessibility& accessibility;
    Alerts& alerts;
    NotificationCenter& notificationCenter;
    UserNotifications& userNotifications;
    StatusBar& statusBar;
    Images& images;
    ApplicationObject& application;
    Appearance& appearance;
    Bookmarks& bookmarks;
    Panels& panels;
};

} // namespace corvane
