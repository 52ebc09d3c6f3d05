#include "launch/ResourceLauncher.h"

#include "foundation/Diagnostics.h"

#include <utility>

namespace corvane {

ResourceLauncher::ResourceLauncher(Platform& platform, BookmarkManager& bookmarks)
    : platform_(platform), bookmarks_(bookmarks),
      lookup_(platform.applications, platform.bundles, platform.tasks, platform.metadataQuery),
      browsers_(platform.tasks, platform.scripts) {}

void ResourceLauncher::launchResource(const Resource& resource) {
    diagnostic({"Launching resource: ", resource.name, " at ", resource.path});
    switch (resource.type) {
    case ResourceType::file:
    case ResourceType::folder:
    case ResourceType::application:
        return launchFileResource(resource);
    case ResourceType::url:
        return launchURLResource(resource);
    case ResourceType::terminal:
        return launchTerminalResource(resource);
    case ResourceType::separator:
        return;
    }
}

void ResourceLauncher::launchResourceWithApp(const Resource& resource, const std::string& appName) {
    diagnostic({"Launching resource: ", resource.name, " with ", appName});
    switch (resource.type) {
    case ResourceType::file:
    case ResourceType::folder:
    case ResourceType::application:
        return launchFileResourceWithApp(resource, appName);
    case ResourceType::url:
        return launchURLResource(resource);
    case ResourceType::terminal:
        return launchTerminalResource(resource);
    case ResourceType::separator:
        return;
    }
}

void ResourceLauncher::showAlert(Alert alert, std::function<void(int response)> handler) {
    platform_.mainQueue.async(
        [&alerts = platform_.alerts, alert = std::move(alert), handler = std::move(handler)] {
            const auto answered = [handler](AlertResponse response) { handler(response.button); };
            if (!alerts.beginSheet(alert, answered)) answered(alerts.runModal(alert));
        });
}

void ResourceLauncher::showLaunchAlert(std::string title, std::string message) {
    showAlert({.title = std::move(title), .message = std::move(message), .buttons = {"OK"}},
              [](int) {});
}

void ResourceLauncher::showLaunchAlertWithAction(std::string title, std::string message,
                                                 std::string firstButton, std::string secondButton,
                                                 std::function<void(int response)> handler) {
    showAlert({.title = std::move(title),
               .message = std::move(message),
               .buttons = {std::move(firstButton), std::move(secondButton)}},
              std::move(handler));
}

} // namespace corvane
