#pragma once

#include "foundation/Result.h"
#include "linux/installed/InstalledApplications.h"
#include "platform/Applications.h"

#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace corvane {

/// The running applications, as the opener needs them.
struct RunningAccess {
    std::function<std::vector<RunningApplication>()> list = [] {
        return std::vector<RunningApplication>();
    };
    /// Brings a window of it forward; false where it has none, or nobody says that it came.
    std::function<bool(const RunningApplication&)> activate = [](const auto&) { return false; };
    /// Is told of each launch and the processes that were started for it.
    std::function<void(const InstalledApplication&, const std::vector<pid_t>&)> launched =
        [](const auto&, const auto&) {};
    /// A token for a program that takes one, as its launch begins; empty where there is none.
    std::function<std::string(const InstalledApplication&)> beginLaunch = [](const auto&) {
        return std::string();
    };
    /// What that token was for hasn't started.
    std::function<void(const std::string& token)> endLaunch = [](const auto&) {};
};

/// Opens things with the installed applications. Failures are told in words. Any thread.
class ApplicationOpener {
public:
    ApplicationOpener(const InstalledApplications& installed, RunningAccess running)
        : installed_(installed), running_(std::move(running)) {}

    /// What opens the URL by default: for a bundle the application itself, for a folder Finder, for
    /// files by content type, else by scheme.
    std::optional<InstalledApplication> handlerOf(const Url& url) const;

    /// Opens with the default handler; brings a bundle's application forward if it runs. An
    /// executable file that nothing opens is run, in its folder.
    Result<void> open(const Url& url) const;
    /// Opens with that application. A bundle's URL only starts the application.
    Result<void> open(const Url& url, const InstalledApplication& application) const;
    /// Brings the application forward, or starts it.
    Result<void> openApplication(const InstalledApplication& application) const;
    /// Starts the application with the URIs to open, and with arguments of its own behind them.
    Result<void> launch(const InstalledApplication& application,
                        const std::vector<std::string>& uris = {},
                        const std::vector<std::string>& arguments = {}) const;
    /// Shows the item selected in the file manager, or else its folder. Returns before that has
    /// happened.
    void reveal(const Url& url) const;

    const InstalledApplications& installed() const { return installed_; }
    const RunningAccess& running() const { return running_; }

private:
    bool activate(const InstalledApplication& application) const;
    std::optional<terminalEmulator::TerminalCommand>
    terminalFor(const InstalledApplication& application) const;

    const InstalledApplications& installed_;
    RunningAccess running_;
};

} // namespace corvane
