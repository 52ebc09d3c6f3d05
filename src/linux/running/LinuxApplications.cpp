#include "linux/running/LinuxApplications.h"

#include "foundation/Diagnostics.h"
#include "linux/running/ApplicationOpener.h"
#include "linux/running/Quitting.h"
#include "linux/running/RunningApplications.h"

namespace corvane {
namespace {

std::optional<Url> bundleUrl(const std::optional<InstalledApplication>& application) {
    if (!application) return std::nullopt;
    return Url::fromPath(application->bundlePath);
}

} // namespace

bool LinuxApplications::openUrl(const Url& url) {
    if (openHere_ && openHere_(url)) return true;
    const auto opened = opener_.open(url);
    if (!opened) diagnostic({"Could not open: ", opened.error().localizedDescription});
    return bool(opened);
}

void LinuxApplications::openUrl(const Url& url, const Url& applicationUrl,
                                OpenCompletion completion) {
    const auto application = opener_.installed().byBundlePath(applicationUrl.path());
    if (application) return completion(opener_.open(url, *application));
    completion(Error{"There is no application at " + applicationUrl.path() + "."});
}

void LinuxApplications::activateFileViewerSelecting(const Url& url) {
    opener_.reveal(url);
}

std::optional<Url> LinuxApplications::urlForApplicationToOpen(const Url& url) const {
    return bundleUrl(opener_.handlerOf(url));
}

std::optional<Url> LinuxApplications::urlForApplication(const std::string& bundleIdentifier) const {
    return bundleUrl(opener_.installed().byBundleIdentifier(bundleIdentifier));
}

std::vector<Url> LinuxApplications::urlsForApplications(const std::string& bundleIdentifier) const {
    if (!bundleIdentifier.empty()) {
        const auto url = urlForApplication(bundleIdentifier);
        return url ? std::vector{*url} : std::vector<Url>{};
    }
    std::vector<Url> urls;
    for (const auto& application : opener_.installed().visible()) {
        urls.push_back(Url::fromPath(application.bundlePath));
    }
    return urls;
}

std::vector<RunningApplication> LinuxApplications::runningApplications() const {
    return running_.list();
}

bool LinuxApplications::terminate(const RunningApplication& application) {
    return quitting_.terminate(application);
}

bool LinuxApplications::forceTerminate(const RunningApplication& application) {
    return quitting_.forceTerminate(application);
}

} // namespace corvane
