#pragma once

#include "platform/Applications.h"

namespace corvane {

class ApplicationOpener;

/// NSWorkspace over the installed desktop entries.
class LinuxApplications final : public Applications {
public:
    explicit LinuxApplications(const ApplicationOpener& opener) : opener_(opener) {}

    bool openUrl(const Url& url) override;
    void openUrl(const Url& url, const Url& applicationUrl, OpenCompletion completion) override;
    void activateFileViewerSelecting(const Url& url) override;
    std::optional<Url> urlForApplicationToOpen(const Url& url) const override;
    std::optional<Url> urlForApplication(const std::string& bundleIdentifier) const override;
    std::vector<Url> urlsForApplications(const std::string& bundleIdentifier) const override;
    std::vector<RunningApplication> runningApplications() const override;

private:
    const ApplicationOpener& opener_;
};

} // namespace corvane
