#pragma once

#include "foundation/Result.h"
#include "foundation/Url.h"

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace corvane {

/// What an application is known by besides its own name, identifier and bundle path; each may be
/// empty. Whoever looks an application up counts it, a person reads the own name alone.
struct OtherName {
    std::string name;
    std::string bundleIdentifier = {};
    std::string bundlePath = {};

    bool operator==(const OtherName&) const = default;
};

/// NSRunningApplication, as it was when it was listed.
struct RunningApplication {
    std::int32_t processIdentifier = 0;
    /// When the process began, in a unit of the desktop's own. With the identifier it names one
    /// process for good, as identifiers are used again.
    std::uint64_t startTime = 0;
    std::optional<std::string> localizedName = {};
    std::optional<std::string> bundleIdentifier = {};
    std::optional<Url> bundleURL = {};
    std::optional<Url> executableURL = {};
    std::vector<OtherName> otherNames = {};
    /// 0 is regular: an application with windows of its own that the user switches to.
    int activationPolicy = 0;
    bool isHidden = false;

    bool isRegular() const { return activationPolicy == 0; }
};

/// NSWorkspace: opening, and the system's view of applications. Opening is for the main thread; the
/// look-ups are for any thread. An application's URL is the file URL of its bundle.
class Applications {
public:
    virtual ~Applications() = default;

    /// openURL: opens a file, folder, bundle or web address with its default handler. False on
    /// failure.
    virtual bool openUrl(const Url& url) = 0;

    using OpenCompletion = std::function<void(Result<void>)>;
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

    /// terminate: asks the application to quit, as the user would, and doesn't wait for it. True
    /// where it was asked, though it may ask the user back and stay; false where it has ended, is
    /// this program or belongs to the session, and where asking it failed. Main thread.
    virtual bool terminate(const RunningApplication& application) = 0;
    /// forceTerminate: ends the process that was listed, and no other one that has its identifier
    /// now. What it hasn't saved is lost. False where it can't, as above. Main thread.
    virtual bool forceTerminate(const RunningApplication& application) = 0;
};

} // namespace corvane
