#pragma once

#include "platform/Accessibility.h"
#include "platform/Alerts.h"
#include "platform/Appearance.h"
#include "platform/ApplicationObject.h"
#include "platform/Applications.h"
#include "platform/Bookmarks.h"
#include "platform/Bundles.h"
#include "platform/Displays.h"
#include "platform/FileIcons.h"
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

/// What a user-interface toolkit provides.
struct Toolkit {
    MainQueue& mainQueue;
    Alerts& alerts;
    ApplicationObject& application;
    StatusBar& statusBar;
    Images& images;
    Appearance& appearance;
    Panels& panels;
};

/// What the machine under it provides.
struct Machine {
    BackgroundQueue& backgroundQueue;
    DiskQueue& diskQueue;
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
    NotificationCenter& notificationCenter;
    UserNotifications& userNotifications;
    Bookmarks& bookmarks;
    FileIcons& fileIcons;
};

/// Every facility of one desktop, handed to the composition root. The facilities outlive whoever
/// uses them.
struct Platform : Toolkit, Machine {};

} // namespace corvane
