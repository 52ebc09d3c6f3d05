#pragma once

#include "core/Records.h"
#include "foundation/Url.h"
#include "launch/ApplicationLookup.h"
#include "launch/Browsers.h"
#include "launch/LaunchAlerts.h"

#include <functional>
#include <memory>
#include <optional>
#include <string>

namespace corvane {

class Applications;
class BackgroundQueue;
class BookmarkManager;
class FileSystem;
class MainQueue;
class ScriptEngine;
class TaskRunner;

/// Opens one resource. Every operation returns once the work is started or
/// scheduled, and a failure reaches only the user, as an alert. Scheduled work keeps its launcher;
/// what is handed over here outlives both. Main thread.
class ResourceLauncher : public std::enable_shared_from_this<ResourceLauncher> {
public:
    ResourceLauncher(BookmarkManager& bookmarks, const FileSystem& fileSystem,
                     Applications& applications, ApplicationLookup lookup, TaskRunner& tasks,
                     ScriptEngine& scripts, Alerts& alerts, MainQueue& mainQueue,
                     BackgroundQueue& backgroundQueue);

    /// The way that the resource itself says: its default handler, and each of its associated
    /// applications.
    void launchResource(const Resource& resource);
    /// With one named application. Web addresses and commands don't heed the name.
    void launchResourceWithApp(const Resource& resource, const std::string& appName);

    // Files, folders and applications.

    void launchFileResource(const Resource& resource);
    void launchFileResourceWithApp(const Resource& resource, const std::string& appName);

    // Web addresses.

    /// In the default browser, and in each associated one.
    void launchURLResource(const Resource& resource);
    void launchURLResourceWithApp(const Resource& resource, const std::string& browserName);

    // Commands.

    /// Runs the command of "{directory}|{command}" or "{command}" in Terminal.
    void launchTerminalResource(const Resource& resource);

    // Alerts, as LaunchAlerts shows them.

    /// What is launched from now on is another start.
    void beginStart() { alerts_->beginStart(); }
    void showLaunchAlert(std::string title, std::string message);
    /// The handler takes the response, 1000 for the first button and 1001 for the second.
    void showLaunchAlertWithAction(std::string title, std::string message, std::string firstButton,
                                   std::string secondButton,
                                   std::function<void(int response)> handler);

private:
    void openInDefaultHandler(const Resource& resource, const Url& url);
    void openFileWithApplication(const Resource& resource, const Url& url,
                                 const Url& applicationUrl, const std::string& appName);
    void openWithWorkspaceFallback(const Resource& resource, const Url& url,
                                   const Url& applicationUrl, const std::string& appName);
    void openWithSystemDefault(const Resource& resource, const Url& url);
    void runOpenCommand(const Resource& resource, const Url& url,
                        const std::optional<Url>& applicationUrl, const std::string& appName);
    void openURLInDefaultBrowser(const Url& url);
    void openURLWithApplication(const Url& url, const Url& applicationUrl,
                                const std::string& browserName);
    void runTerminalScript(const std::string& source, const std::string& command);

    BookmarkManager& bookmarks_;
    const FileSystem& fileSystem_;
    Applications& applications_;
    ApplicationLookup lookup_;
    TaskRunner& tasks_;
    ScriptEngine& scripts_;
    Browsers browsers_;
    const std::shared_ptr<LaunchAlerts> alerts_;
    MainQueue& mainQueue_;
    BackgroundQueue& backgroundQueue_;
};

} // namespace corvane
