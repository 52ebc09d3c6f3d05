#pragma once

#include "platform/Platform.h"
#include "shell/ThemeManager.h"
#include "ui/HeaderState.h"
#include "ui/MissingFiles.h"
#include "ui/SettingsSheet.h"
#include "ui/UndoOffer.h"
#include "ui/WorkspaceListState.h"

namespace corvane {

/// The root view of one main window: its theme, its header and its list. Store and platform outlive
/// it.
struct ContentState {
    ContentState(WorkspaceStore& store, const Platform& platform)
        : theme(platform.appearance, platform.mainQueue), header(store, theme),
          undo(platform.mainQueue),
          missing(store, platform.backgroundQueue, platform.mainQueue, platform.fileSystem),
          list(store, platform.mainQueue, platform.alerts, undo, missing),
          settings(store, platform.bundles, platform.applications, platform.accessibility,
                   platform.mainQueue) {}

    ThemeManager theme;
    HeaderState header;
    UndoOffer undo;
    MissingFiles missing;
    WorkspaceListState list;
    SettingsSheet settings;
};

} // namespace corvane
