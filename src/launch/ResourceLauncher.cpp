#include "launch/ResourceLauncher.h"

#include "foundation/Diagnostics.h"
#include "platform/MainQueue.h"

#include <utility>

namespace corvane {

ResourceLauncher::ResourceLauncher(BookmarkManager& bookmarks, const FileSystem& fileSystem,
                                   Applications& applications, ApplicationLookup lookup,
                                   TaskRunner& tasks, ScriptEngine& scripts, Alerts& alerts,
                                   MainQueue& mainQueue, BackgroundQueue& backgroundQueue)
    : bookmarks_(bookmarks), fileSystem_(fileSystem), applications_(applications), lookup_(lookup),
      tasks_(tasks), scripts_(scripts), browsers_(tasks, scripts),
      alerts_(std::make_shared<LaunchAlerts>(alerts, mainQueue)), mainQueue_(mainQueue),
      backgroundQueue_(backgroundQueue) {}

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

void ResourceLauncher::showLaunchAlert(std::string title, std::string message) {
    alerts_->show({.title = std::move(title), .message = std::move(message), .buttons = {"OK"}},
                  [](int) {});
}

void ResourceLauncher::showLaunchAlertWithAction(std::string title, std::string message,
                                                 std::string firstButton, std::string secondButton,
                                                 std::function<void(int response)> handler) {
    alerts_->show({.title = std::move(title),
                   .message = std::move(message),
                   .buttons = {std::move(firstButton), std::move(secondButton)}},
                  std::move(handler));
}

} // namespace corvane
