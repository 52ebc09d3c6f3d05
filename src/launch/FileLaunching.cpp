#include "core/BookmarkManager.h"
#include "foundation/Diagnostics.h"
#include "launch/ResourceLauncher.h"
#include "platform/Alerts.h"
#include "platform/Applications.h"
#include "platform/FileSystem.h"
#include "platform/MainQueue.h"
#include "platform/TaskRunner.h"

namespace corvane {

// Every piece of scheduled work holds copies, and the launcher itself.

void ResourceLauncher::launchFileResource(const Resource& resource) {
    const auto url = bookmarks_.resolveResource(resource.path, resource.type);
    if (!url) {
        diagnostic({"Failed to resolve resource: ", resource.name, " at ", resource.path});
        return showLaunchAlert(
            "Access Error",
            "Failed to access '" + resource.name +
                "'.\n\nThe file may have been moved, renamed, or you may not have permission to access it.\n\nPath: " +
                resource.path);
    }
    if (!fileSystem_.exists(url->path())) {
        diagnostic({"Resource not found at path: ", url->path()});
        return showLaunchAlertWithAction(
            "File Not Found",
            "Cannot open '" + resource.name + "' because the file no longer exists at:\n\n" +
                url->path() + "\n\nThe file may have been moved, deleted, or renamed.",
            "OK", "Show in Finder",
            [this, self = shared_from_this(),
             folder = url->deletingLastPathComponent()](int response) {
                if (response == AlertResponse::secondButton) {
                    applications_.activateFileViewerSelecting(folder);
                }
            });
    }
    mainQueue_.async([this, self = shared_from_this(), resource, url = *url] {
        openInDefaultHandler(resource, url);
    });
    for (const auto& appName : resource.associatedApps) {
        const auto applicationUrl = lookup_.findApplication(appName);
        if (!applicationUrl) {
            showLaunchAlert("Application Not Found",
                            "The application '" + appName +
                                "' could not be found. It may have been uninstalled or moved.");
            continue;
        }
        mainQueue_.async(
            [this, self = shared_from_this(), resource, url = *url, application = *applicationUrl,
             appName] { openFileWithApplication(resource, url, application, appName); });
    }
}

void ResourceLauncher::openInDefaultHandler(const Resource& resource, const Url& url) {
    if (applications_.openUrl(url)) {
        diagnostic({"Successfully opened ", resource.name});
        return;
    }
    diagnostic({"Failed to open ", resource.name});
    showLaunchAlertWithAction(
        "Launch Failed",
        "Failed to open '" + resource.name +
            "'. This could be due to:\n\n• The file is corrupted or incompatible\n• No application is associated with this file type\n• Insufficient permissions\n• The application is damaged\n\nFallback: Opening in Finder instead.",
        "Show in Finder", "OK", [this, self = shared_from_this(), url](int response) {
            if (response == AlertResponse::firstButton) {
                applications_.activateFileViewerSelecting(url);
            }
        });
}

void ResourceLauncher::openFileWithApplication(const Resource& resource, const Url& url,
                                               const Url& applicationUrl,
                                               const std::string& appName) {
    applications_.openUrl(
        url, applicationUrl,
        [this, self = shared_from_this(), name = resource.name,
         appName](const Result<void>& opened) {
            if (opened) {
                diagnostic({"Successfully opened ", name, " with ", appName});
                return;
            }
            diagnostic({"Failed to open ", name, " with ", appName, ": ",
                        opened.error().localizedDescription});
            showLaunchAlert("App Launch Failed",
                            "Failed to open '" + name + "' with " + appName +
                                ".\n\nError: " + opened.error().localizedDescription +
                                "\n\nThe app may not support this file type or may be damaged.");
        });
}

void ResourceLauncher::launchFileResourceWithApp(const Resource& resource,
                                                 const std::string& appName) {
    const auto url = bookmarks_.resolveResource(resource.path, resource.type);
    if (!url) {
        diagnostic({"Failed to resolve resource: ", resource.name, " at ", resource.path});
        return showLaunchAlert(
            "Access Error",
            "Failed to access '" + resource.name + "' with " + appName +
                ".\n\nThe file may have been moved, renamed, or you may not have permission to access it.\n\nPath: " +
                resource.path);
    }
    if (!fileSystem_.exists(url->path())) {
        diagnostic({"Resource not found at path: ", url->path()});
        return showLaunchAlert("File Not Found",
                               "Cannot open '" + resource.name + "' with " + appName +
                                   " because the file no longer exists at:\n\n" + url->path());
    }
    runOpenCommand(resource, *url, lookup_.findApplication(appName), appName);
}

void ResourceLauncher::runOpenCommand(const Resource& resource, const Url& url,
                                      const std::optional<Url>& applicationUrl,
                                      const std::string& appName) {
    const std::vector<std::string> arguments{
        "-a", applicationUrl ? applicationUrl->path() : appName, url.path()};
    backgroundQueue_.async([this, self = shared_from_this(), resource, url, applicationUrl, appName,
                            arguments] {
        const auto task = tasks_.run("/usr/bin/open", arguments);
        if (!task) {
            diagnostic({"Failed to launch process", applicationUrl ? " for " + appName : "", ": ",
                        task.error().localizedDescription});
        }
        mainQueue_.async([this, self = shared_from_this(), resource, url, applicationUrl, appName,
                          task] {
            if (task && task->status == 0) {
                diagnostic({"Successfully opened ", resource.name, " with ", appName,
                            applicationUrl ? "" : " (direct)"});
                return;
            }
            if (applicationUrl) {
                if (task) {
                    diagnostic({"Failed to open ", resource.name, " with ", appName, ": exit code ",
                                std::to_string(task->status)});
                }
                openWithWorkspaceFallback(resource, url, *applicationUrl, appName);
            } else {
                if (task)
                    diagnostic({"Could not find or launch '", appName, "', using system default"});
                openWithSystemDefault(resource, url);
            }
        });
    });
}

void ResourceLauncher::openWithWorkspaceFallback(const Resource& resource, const Url& url,
                                                 const Url& applicationUrl,
                                                 const std::string& appName) {
    const auto& name = resource.name;
    applications_.openUrl(
        url, applicationUrl,
        [this, self = shared_from_this(), name, url, appName](const Result<void>& opened) {
            if (opened) {
                diagnostic(
                    {"Successfully opened ", name, " with ", appName, " (NSWorkspace fallback)"});
                return;
            }
            diagnostic({"NSWorkspace fallback failed for ", name, " with ", appName, ": ",
                        opened.error().localizedDescription});
            // The handler runs on any thread; opening belongs to the main one.
            mainQueue_.async([this, self = shared_from_this(), name, url, appName] {
                if (applications_.openUrl(url)) {
                    diagnostic(
                        {"Successfully opened ", name, " with system default (final fallback)"});
                    return;
                }
                showLaunchAlert(
                    "Launch Failed",
                    "Failed to open '" + name + "' with " + appName +
                        ". Tried multiple methods but none worked.\n\nPlease check if:\n• The app is installed\n• The file/folder exists\n• You have permission to access it");
            });
        });
}

void ResourceLauncher::openWithSystemDefault(const Resource& resource, const Url& url) {
    if (applications_.openUrl(url)) {
        diagnostic({"Successfully opened ", resource.name, " with system default"});
        return;
    }
    showLaunchAlert("Launch Failed",
                    "Failed to open '" + resource.name +
                        "'. Please check if the file exists and you have permission to access it.");
}

} // namespace corvane
