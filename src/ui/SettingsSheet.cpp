#include "ui/SettingsSheet.h"

#include "core/WorkspaceStore.h"
#include "foundation/Url.h"
#include "platform/Accessibility.h"
#include "platform/Applications.h"
#include "platform/Bundles.h"
#include "platform/MainQueue.h"

namespace corvane {

SettingsSheet::SettingsSheet(WorkspaceStore& store, const Bundles& bundles,
                             Applications& applications, Accessibility& accessibility,
                             MainQueue& mainQueue)
    : store_(store), bundles_(bundles), applications_(applications), accessibility_(accessibility),
      mainQueue_(mainQueue),
      storeChanges_(store.objectWillChange.subscribe([this] { objectWillChange.fire(); })) {}

void SettingsSheet::lookAtDesktop() {
    const auto facts = accessibility_.desktop();
    const auto word = [](bool can) { return can ? "yes" : "no"; };
    auto line = facts.name + " · windows: " + word(facts.tellsWindows) +
                " · layouts: " + word(facts.placesWindows);
    if (!facts.whatToDoFirst.empty()) line += '\n' + facts.whatToDoFirst;
    desktopLine = std::move(line);
}

std::string_view SettingsSheet::autoSaveSubtitle() const {
    return store_.enableAccessibilityFeatures
               ? "Automatically save window layouts when quitting workspaces"
               : "Enable Window Layout Features to use auto-save";
}

std::string SettingsSheet::versionLine() const {
    return "Version " + bundles_.mainBundleInfo("CFBundleShortVersionString").value_or("1.0.0") +
           " (Build " + bundles_.mainBundleInfo("CFBundleVersion").value_or("1") + ")";
}

std::string SettingsSheet::supportMailUrl() const {
    const auto version = bundles_.mainBundleInfo("CFBundleShortVersionString").value_or("Unknown");
    const auto build = bundles_.mainBundleInfo("CFBundleVersion").value_or("Unknown");
    const auto body = "App Version: " + version + "\nBuild: " + build +
                      "\nmacOS Version: " + bundles_.operatingSystemVersion() +
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
    if (const auto url = Url::parse(supportMailUrl())) applications_.openUrl(*url);
}

void SettingsSheet::resetPreferences() {
    mainQueue_.async([&store = store_] { store.resetPreferences(); });
}

} // namespace corvane
