#pragma once

#include "platform/Applications.h"

namespace corvane {

class ApplicationOpener;
class Quitting;
class RunningApplications;

/// NSWorkspace over the installed desktop entries and what the display shows.
class LinuxApplications final : public Applications {
public:
    LinuxApplications(const ApplicationOpener& opener, RunningApplications& running,
                      Quitting& quitting)
        : opener_(opener), running_(running), quitting_(quitting) {}

    bool openUrl(const Url& url) override;
    void openUrl(const Url& url, const Url& applicationUrl, OpenCompletion completion) override;
    void activateFileViewerSelecting(const Url& url) override;
    std::optional<Url> urlForApplicationToOpen(const Url& url) const override;
    std::optional<Url> urlForApplication(const std::string& bundleIdentifier) const override;
    std::vector<Url> urlsForApplications(const std::string& bundleIdentifier) const override;
    std::vector<RunningApplication> runningApplications() const override;
    bool terminate(const RunningApplication& application) override;
    bool forceTerminate(const RunningApplication& application) override;

private:
    const ApplicationOpener& opener_;
    RunningApplications& running_;
    Quitting& quitting_;
};

} // namespace corvane
