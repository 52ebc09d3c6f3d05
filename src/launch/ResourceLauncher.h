#pragma once

#include "core/Records.h"
#include "foundation/Url.h"
#include "launch/ApplicationLookup.h"
#include "launch/Browsers.h"
#include "platform/Platform.h"

#include <functional>
#include <optional>
#include <string>

namespace corvane {

class BookmarkManager;

/// Opens one resource. Holds no state; every operation returns once the work is started or
/// scheduled, and a failure reaches only the user, as an alert. Main thread.
class ResourceLauncher {
public:
    ResourceLauncher(Platform& platform, BookmarkManager& bookmarks);

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

    // Alerts, each on a later turn of the main queue: a sheet where there is a main window.

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
    void showAlert(Alert alert, std::function<void(int response)> handler);

    Platform& platform_;
    BookmarkManager& bookmarks_;
    ApplicationLookup lookup_;
    Browsers browsers_;
};

} // namespace corvane
