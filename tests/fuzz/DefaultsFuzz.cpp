#include "core/BookmarkManager.h"
#include "core/WorkspaceStore.h"
#include "simulated/SimulatedDesktop.h"

#include <cstddef>
#include <cstdint>
#include <string_view>

using namespace corvane;

/// Whatever a defaults file holds: it is written again as it was read, and a start leaves every
/// preference in its proper form.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const auto list = PropertyList::parse({reinterpret_cast<const char*>(data), size});
    const auto* values = list ? list->as<PropertyList::Dictionary>() : nullptr;
    if (!values) return 0;
    const auto written = PropertyList::parse(list->toBinary());
    if (!written || PropertyList::parse(written->toBinary())->toBinary() != written->toBinary())
        __builtin_trap();

    SimulatedDesktop desktop;
    for (const auto& [key, value] : *values)
        desktop.defaults.emplace(key, value);
    auto platform = desktop.platform();
    BookmarkManager bookmarks(desktop.files, desktop.bookmarks, desktop.queue, desktop.queue,
                              desktop.queue);
    const WorkspaceStore store(platform, bookmarks);
    const std::pair<const char*, const Preference<bool>&> flags[]{
        {"CorvaneFocusMode", store.focusMode},
        {"CorvaneAutoSaveLayouts", store.autoSaveLayouts},
        {"CorvaneHasShownFullscreenAlert", store.hasShownFullscreenLimitationAlert},
        {"CorvaneEnableAccessibilityFeatures", store.enableAccessibilityFeatures},
        {"CorvaneShowLayoutSavedAlert", store.showLayoutSavedAlert},
        {"CorvaneShowWorkspaceClosedAlert", store.showWorkspaceClosedAlert},
        {"CorvaneShowLayoutsDisabledAlert", store.showLayoutsDisabledAlert},
        {"CorvaneShowApplicationsClosedAlert", store.showApplicationsClosedAlert}};
    for (const auto& [key, flag] : flags) {
        if (desktop.defaults.find(key)->second != PropertyList{flag.get()}) __builtin_trap();
    }
    return 0;
}
