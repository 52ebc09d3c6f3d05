#include "core/StoreScene.h"
#include "fuzz/Fuzz.h"

using namespace corvane;

/// Whatever a defaults file holds: it is written again as it was read, and a start leaves every
/// preference in its proper form.
void feed(std::string_view text) {
    const auto list = PropertyList::parse(text);
    const auto* values = list ? list->as<PropertyList::Dictionary>() : nullptr;
    if (!values) return;
    const auto written = PropertyList::parse(list->toBinary());
    expect(written && PropertyList::parse(written->toBinary())->toBinary() == written->toBinary());

    StoreScene scene;
    auto& defaults = scene.desktop.defaults;
    defaults.insert(values->begin(), values->end());
    const auto& store = scene.start();
    const std::pair<const char*, const Preference<bool>&> flags[]{
        {"CorvaneFocusMode", store.focusMode},
        {"CorvaneAutoSaveLayouts", store.autoSaveLayouts},
        {"CorvaneHasShownFullscreenAlert", store.hasShownFullscreenLimitationAlert},
        {"CorvaneEnableAccessibilityFeatures", store.enableAccessibilityFeatures},
        {"CorvaneShowLayoutSavedAlert", store.showLayoutSavedAlert},
        {"CorvaneShowWorkspaceClosedAlert", store.showWorkspaceClosedAlert},
        {"CorvaneShowLayoutsDisabledAlert", store.showLayoutsDisabledAlert},
        {"CorvaneShowApplicationsClosedAlert", store.showApplicationsClosedAlert}};
    for (const auto& [key, flag] : flags)
        expect(defaults.at(key) == PropertyList{flag.get()});
}
