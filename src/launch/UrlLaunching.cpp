#include "foundation/Diagnostics.h"
#include "foundation/Text.h"
#include "launch/ResourceLauncher.h"
#include "platform/Applications.h"
#include "platform/MainQueue.h"

namespace corvane {

void ResourceLauncher::launchURLResource(const Resource& resource) {
    const auto url = Url::parse(resource.path);
    if (!url) {
        diagnostic({"Invalid URL: ", resource.path});
        return showLaunchAlert(
            "Invalid URL",
            "The URL '" + resource.path +
                "' is not valid.\n\nPlease check the URL format. Examples:\n• https://www.example.com\n• http://localhost:3000\n• file:///path/to/file");
    }
    if (!url->hasScheme()) {
        diagnostic({"URL missing scheme: ", resource.path});
        return showLaunchAlert(
            "Invalid URL Format",
            "The URL '" + resource.path +
                "' is missing a scheme (http://, https://, etc.).\n\nPlease add a proper scheme to the URL.");
    }
    if (!resource.associatedApps.empty()) {
        diagnostic({"Opening URL in ", std::to_string(resource.associatedApps.size()),
                    " associated apps: ", text::joined(resource.associatedApps, ", ")});
    }
    for (const auto& browserName : resource.associatedApps)
        launchURLResourceWithApp(resource, browserName);
    mainQueue_.async(
        [this, self = shared_from_this(), url = *url] { openURLInDefaultBrowser(url); });
}

void ResourceLauncher::launchURLResourceWithApp(const Resource& resource,
                                                const std::string& browserName) {
    const auto url = Url::parse(resource.path);
    if (!url || browsers_.openURLInNewTab(*url, browserName)) return;
    const auto applicationUrl = lookup_.findApplication(browserName);
    if (!applicationUrl) {
        diagnostic({"Could not find browser '", browserName, "', using system default"});
        mainQueue_.async(
            [this, self = shared_from_this(), url = *url] { openURLInDefaultBrowser(url); });
        return;
    }
    mainQueue_.async([this, self = shared_from_this(), url = *url, application = *applicationUrl,
                      browserName] { openURLWithApplication(url, application, browserName); });
}

void ResourceLauncher::openURLWithApplication(const Url& url, const Url& applicationUrl,
                                              const std::string& browserName) {
    applications_.openUrl(
        url, applicationUrl,
        [this, self = shared_from_this(), browserName](const Result<void>& opened) {
            if (opened) {
                diagnostic({"Successfully opened URL with ", browserName, " (new window)"});
                return;
            }
            diagnostic({"Failed to open URL with ", browserName, ": ",
                        opened.error().localizedDescription});
            showLaunchAlert("Browser Launch Failed",
                            "Failed to open URL with " + browserName +
                                ".\n\nError: " + opened.error().localizedDescription);
        });
}

void ResourceLauncher::openURLInDefaultBrowser(const Url& url) {
    std::optional<std::string> browserName;
    if (const auto browser = applications_.urlForApplicationToOpen(*Url::parse("http://"))) {
        browserName = text::replacingAll(browser->lastPathComponent(), ".app", "");
    }
    if (browsers_.openURLInNewTab(url, browserName)) return;
    if (applications_.openUrl(url)) return;
    showLaunchAlert(
        "URL Launch Failed",
        "Failed to open the URL '" + url.absoluteString() +
            "' in your default browser. This could be due to:\n\n• No default browser is set\n• The URL is malformed\n• Network connectivity issues\n• Browser permissions");
}

} // namespace corvane
