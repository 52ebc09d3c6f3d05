#pragma once

#include "foundation/Result.h"
#include "foundation/Url.h"

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace corvane {

/// NSRunningApplication, as it was when it was listed.
struct RunningApplication {
    std::int32_t processIdentifier = 0;
    std::optional<std::string> localizedName;
    std::optional<std::string> bundleIdentifier;
    std::optional<Url> bundleURL;
    std::optional<Url> executableURL;
    /// 0 is regular: an application with windows of its own that the user switches to.
    int activationPolicy = 0;
    bool isHidden = false;
};

/// NSWorkspace: opening, and the system's view of applications. Opening is for the main thread; the
/// look-ups are for any thread. An application's URL is the file URL of its bundle.
class Applications {
public:
    virtual ~Applications() = default;

    /// openURL: opens a file, folder, bundle or web address with its default handler. False on
    /// failure.
    virtual bool openUrl(const Url& url) = 0;

    using OpenCompletion = std::function<void(std::optional<Error>)>;
    /// openURLs:withApplicationAtURL:configuration:completionHandler: with one URL and a default
    /// configuration. The handler is called once, on any thread.
    virtual void openUrl(const Url& url, const Url& applicationUrl, OpenCompletion completion) = 0;

    /// activateFileViewerSelectingURLs: shows the item selected in the file manager.
    virtual void activateFileViewerSelecting(const Url& url) = 0;

    /// URLForApplicationToOpenURL:
    virtual std::optional<Url> urlForApplicationToOpen(const Url& url) const = 0;
    /// URLForApplicationWithBundleIdentifier:
    virtual std::optional<Url> urlForApplication(const std::string& bundleIdentifier) const = 0;
    /// URLsForApplicationsWithBundleIdentifier: every application for the empty text.
    virtual std::vector<Url> urlsForApplications(const std::string& bundleIdentifier) const = 0;

    /// runningApplications, in the order in which they were started.
    virtual std::vector<RunningApplication> runningApplications() const = 0;
};

} // namespace corvane
