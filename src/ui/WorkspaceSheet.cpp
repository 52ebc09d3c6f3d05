#include "ui/WorkspaceSheet.h"

#include "core/WorkspaceStore.h"
#include "platform/MainQueue.h"

namespace corvane {

namespace {

constexpr std::string_view iconsForNew[]{"laptopcomputer",
                                         "desktopcomputer",
                                         "macbook",
                                         "terminal",
                                         "code",
                                         "curlybraces",
                                         "paintbrush",
                                         "photo",
                                         "camera",
                                         "pencil",
                                         "wand.and.stars",
                                         "theatermasks",
                                         "briefcase",
                                         "chart.bar",
                                         "doc",
                                         "folder",
                                         "building",
                                         "medal",
                                         "globe",
                                         "server.rack",
                                         "cloud",
                                         "envelope",
                                         "externaldrive",
                                         "shield",
                                         "iphone",
                                         "ipad",
                                         "phone",
                                         "gamecontroller",
                                         "play",
                                         "music.note",
                                         "gear",
                                         "wrench",
                                         "hammer",
                                         "key",
                                         "lock",
                                         "lightbulb",
                                         "star",
                                         "heart",
                                         "flame",
                                         "rocket",
                                         "target",
                                         "trophy",
                                         "book",
                                         "house",
                                         "car",
                                         "crown",
                                         "diamond",
                                         "sparkles"};

constexpr std::string_view iconsForEdit[]{"folder",
                                          "laptopcomputer",
                                          "paintbrush",
                                          "iphone",
                                          "camera",
                                          "music.note",
                                          "gamecontroller",
                                          "chart.bar",
                                          "gear",
                                          "star",
                                          "heart",
                                          "flame",
                                          "book",
                                          "briefcase",
                                          "building",
                                          "car",
                                          "cart",
                                          "clock",
                                          "cloud",
                                          "crown",
                                          "cube",
                                          "desktopcomputer",
                                          "diamond",
                                          "doc",
                                          "envelope",
                                          "externaldrive",
                                          "eye",
                                          "faceid",
                                          "flag",
                                          "globe",
                                          "hammer",
                                          "headphones",
                                          "house",
                                          "key",
                                          "leaf",
                                          "lightbulb",
                                          "lock",
                                          "macbook",
                                          "map",
                                          "medal",
                                          "megaphone",
                                          "pencil",
                                          "person",
                                          "phone",
                                          "photo",
                                          "play",
                                          "plus",
                                          "questionmark",
                                          "rocket",
                                          "scissors",
                                          "server.rack",
                                          "shield",
                                          "sparkles",
                                          "sun.max",
                                          "target",
                                          "theatermasks",
                                          "trophy",
                                          "wand.and.stars",
                                          "wrench",
                                          "xmark"};

} // namespace

void WorkspaceSheet::commit() {
    if (canCommit()) store_();
}

std::unique_ptr<WorkspaceSheet> newSpaceSheet(WorkspaceStore& store, const Clock& clock) {
    std::unique_ptr<WorkspaceSheet> sheet(new WorkspaceSheet);
    sheet->title_ = "Create New Workspace";
    sheet->commitTitle_ = "Create";
    sheet->availableIcons_ = iconsForNew;
    sheet->selectedIcon = "laptopcomputer";
    sheet->store_ = [&sheet = *sheet, &store, &clock] {
        store.addWorkspace(
            makeWorkspace(sheet.name, sheet.description, sheet.selectedIcon, clock.now()));
    };
    return sheet;
}

std::unique_ptr<WorkspaceSheet> editWorkspaceSheet(const Workspace& workspace,
                                                   WorkspaceStore& store, const Clock& clock) {
    std::unique_ptr<WorkspaceSheet> sheet(new WorkspaceSheet);
    sheet->title_ = "Edit Workspace";
    sheet->commitTitle_ = "Save";
    sheet->availableIcons_ = iconsForEdit;
    sheet->name = workspace.name;
    sheet->description = workspace.description;
    sheet->selectedIcon = workspace.icon;
    sheet->store_ = [&sheet = *sheet, &store, &clock, workspace] {
        auto changed = workspace;
        changed.name = sheet.name;
        changed.description = sheet.description;
        changed.icon = sheet.selectedIcon;
        changed.dateModified = clock.now();
        store.updateWorkspace(std::move(changed));
    };
    return sheet;
}

} // namespace corvane
