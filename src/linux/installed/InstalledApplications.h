#pragma once

#include "linux/installed/InstalledApplication.h"
#include "linux/installed/TerminalEmulator.h"
#include "platform/Applications.h"

#include <map>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace corvane {

/// The installed applications: the desktop entries of the XDG data folders, an entry of an earlier
/// folder in place of a later one with its id. Every call looks at the folders, so what comes and
/// goes is seen at once, an edit in place within a second; of those that are applications only the
/// changed ones are read. Any thread.
class InstalledApplications {
public:
    /// Takes the folders from the environment.
    InstalledApplications();
    ~InstalledApplications();
    InstalledApplications(const InstalledApplications&) = delete;
    InstalledApplications& operator=(const InstalledApplications&) = delete;

    /// Those that the desktop shows, by name, then id.
    std::vector<InstalledApplication> shown() const;
    /// Hidden ones too, as a window can belong to one. The same order.
    std::vector<InstalledApplication> all() const;

    /// What a user can pick from, each once: the shown ones, and before them what stands for Finder
    /// and Terminal where that isn't shown.
    std::vector<InstalledApplication> visible() const;

    /// Also Finder's, Terminal's and Safari's path. A path with the id in brackets is found though
    /// the name is unique by now; a plain path that several share by now names the first of them.
    std::optional<InstalledApplication> byBundlePath(std::string_view path) const;
    /// Also Finder's, Terminal's and Safari's. Where none is equal, case is ignored.
    std::optional<InstalledApplication> byBundleIdentifier(std::string_view identifier) const;
    std::optional<InstalledApplication> byDesktopId(std::string_view desktopId) const;
    /// The application that an entry's file describes: its own, or, for a copy like those that lie
    /// on desktops, the one with its name and its program.
    std::optional<InstalledApplication> byEntryFile(const std::string& file) const;

    /// What stands for Finder, the default handler of directories; for Terminal, the emulator that
    /// TerminalEmulator prefers, called so only if it has no entry; for Safari, the default
    /// browser.
    std::optional<InstalledApplication> finder() const;
    std::optional<InstalledApplication> terminal() const;
    std::optional<InstalledApplication> browser() const;
    std::optional<terminalEmulator::TerminalCommand> terminalCommand() const;

    /// Which entries stand for those three, by desktop id; empty where none does.
    struct Roles {
        std::string finder;
        std::string terminal;
        std::string browser;
    };
    Roles roles() const;
    /// The default handler of a content type ("text/plain", "x-scheme-handler/http").
    std::optional<InstalledApplication> defaultHandler(const std::string& contentType) const;

private:
    struct Snapshot;
    struct Look;
    std::shared_ptr<const Snapshot> snapshot() const;
    /// Of `next`, whose files are known.
    std::shared_ptr<const Snapshot> read(std::unique_ptr<Snapshot> next) const;

    std::vector<std::string> roots_;
    mutable std::mutex mutex_;
    mutable std::unique_ptr<const Look> look_;
    mutable std::shared_ptr<const Snapshot> latest_;
};

/// The former names, and those of the roles that it has.
std::vector<OtherName> otherNames(const InstalledApplication& application,
                                  const InstalledApplications::Roles& roles);

} // namespace corvane
