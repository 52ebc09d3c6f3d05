#pragma once

#include "platform/Platform.h"
#include "shell/ThemeManager.h"
#include "ui/HeaderState.h"
#include "ui/SettingsSheet.h"
#include "ui/WorkspaceListState.h"

namespace corvane {

/// The root view of one main window: its theme, its header and its list. Store and platform outlive
/// it.
struct ContentState {
    ContentState(WorkspaceStore& store, const Platform& platform)
        : theme(platform.appearance, platform.mainQueue), header(store, theme),
          list(store, platform.mainQueue, platform.alerts),
          settings(store, platform.bundles, platform.applications, platform.mainQueue) {}

    ThemeManager theme;
    HeaderState header;
    WorkspaceListState list;
    SettingsSheet settings;
};

} // namespace corvane
