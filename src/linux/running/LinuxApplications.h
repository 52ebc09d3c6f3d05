#pragma once

#include "platform/Applications.h"

#include <functional>
#include <utility>

namespace corvane {

class ApplicationOpener;
class Quitting;
class RunningApplications;

/// NSWorkspace over the installed desktop entries and what the display shows.
class LinuxApplications final : public Applications {
public:
    /// Opens what no application does; false for all else.
    using OpenHere = std::function<bool(const Url&)>;
    LinuxApplications(const ApplicationOpener& opener, RunningApplications& running,
                      Quitting& quitting, OpenHere openHere = {})
        : opener_(opener), running_(running), quitting_(quitting), openHere_(std::move(openHere)) {}

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
    const OpenHere openHere_;
};

} // namespace corvane
