#include "ui/SettingsSheet.h"

#include "core/WorkspaceStore.h"
#include "foundation/Url.h"
#include "platform/Platform.h"

namespace corvane {

SettingsSheet::SettingsSheet(WorkspaceStore& store, const Platform& platform)
    : store_(store), platform_(platform),
      storeChanges_(store.objectWillChange.subscribe([this] { objectWillChange.fire(); })) {}

std::string_view SettingsSheet::autoSaveSubtitle() const {
    return store_.enableAccessibilityFeatures
               ? "Automatically save window layouts when quitting workspaces"
               : "Enable Window Layout Features to use auto-save";
}

std::string SettingsSheet::versionLine() const {
    const auto& bundles = platform_.bundles;
    return "Version " + bundles.mainBundleInfo("CFBundleShortVersionString").value_or("1.0.0") +
           " (Build " + bundles.mainBundleInfo("CFBundleVersion").value_or("1") + ")";
}

std::string SettingsSheet::supportMailUrl() const {
    const auto& bundles = platform_.bundles;
    const auto version = bundles.mainBundleInfo("CFBundleShortVersionString").value_or("Unknown");
    const auto build = bundles.mainBundleInfo("CFBundleVersion").value_or("Unknown");
    const auto body = "App Version: " + version + "\nBuild: " + build +
                      "\nmacOS Version: " + bundles.operatingSystemVersion() +
                      "\n\nPlease describe your issue:\n";
    return "mailto:" + std::string(supportAddress) +
           "?subject=" + percentEncodedQuery("Corvane Support Request") +
           "&body=" + percentEncodedQuery(body);
}

void SettingsSheet::setAccessibilityFeatures(bool enabled) {
    store_.enableAccessibilityFeatures = enabled;
    store_.accessibilityFeaturesToggled(enabled);
}

void SettingsSheet::contactSupport() {
    if (const auto url = Url::parse(supportMailUrl())) platform_.applications.openUrl(*url);
}

void SettingsSheet::resetPreferences() {
    platform_.mainQueue.async([&store = store_] { store.resetPreferences(); });
}

} // namespace corvane
