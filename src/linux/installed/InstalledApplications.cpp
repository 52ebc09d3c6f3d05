#include "linux/installed/InstalledApplications.h"

#include "foundation/Diagnostics.h"
#include "foundation/Text.h"
#include "foundation/Url.h"
#include "linux/installed/EntryFiles.h"
#include "linux/system/Gio.h"
#include "linux/system/UserFolders.h"

#include <algorithm>
#include <chrono>
#include <set>
#include <tuple>

namespace corvane {
namespace {

constexpr std::string_view applicationsFolder = "/Applications/";
constexpr std::string_view bundleSuffix = ".app";

/// Nothing for an entry that is deleted, broken, no application, or whose program is missing.
std::optional<InstalledApplication> readEntry(const std::string& id, const std::string& file) {
    const gio::Ref<GDesktopAppInfo> entry(g_desktop_app_info_new_from_filename(file.c_str()));
    if (!entry)
        diagnostic(
            {"Passed over ", file, ": it is broken or no application's, or names no program"});
    if (!entry || g_desktop_app_info_get_is_hidden(entry.get())) return std::nullopt;
    GAppInfo* info = G_APP_INFO(entry.get());
    const auto value = [&](const char* key) {
        return gio::take(g_desktop_app_info_get_string(entry.get(), key));
    };
    InstalledApplication found;
    found.desktopId = id;
    found.bundleIdentifier = id.substr(0, id.size() - entrySuffix.size());
    found.desktopFile = file;
    found.name = value("Name");
    if (found.name.empty()) found.name = found.bundleIdentifier;
    found.displayName = gio::text(g_app_info_get_name(info));
    if (found.displayName.empty()) found.displayName = found.name;
    found.startupWmClass = value("StartupWMClass");
    found.exec = value("Exec");
    found.executable = gio::text(g_app_info_get_executable(info));
    found.tryExec = value("TryExec");
    found.icon = value("Icon");
    found.isShown = g_app_info_should_show(info);
    found.dbusActivatable = g_desktop_app_info_get_boolean(entry.get(), "DBusActivatable");
    found.needsTerminal = g_desktop_app_info_get_boolean(entry.get(), "Terminal");
    found.takesToken =
        !found.needsTerminal && g_desktop_app_info_get_boolean(entry.get(), "StartupNotify");
    const auto categories =
        text::split(gio::text(g_desktop_app_info_get_categories(entry.get())), ';');
    found.isTerminalEmulator = std::ranges::count(categories, "TerminalEmulator") > 0;
    found.terminalOption = value("TerminalArgExec");
    if (found.terminalOption.empty()) found.terminalOption = value("X-TerminalArgExec");
    return found;
}

std::string fileNameOf(const InstalledApplication& application) {
    return text::replacingAll(application.name, "/", ":");
}

std::string bracketedPathOf(const InstalledApplication& application) {
    return std::string(applicationsFolder) + fileNameOf(application) + " [" +
           application.bundleIdentifier + "]" + std::string(bundleSuffix);
}

std::string plainPathOf(const InstalledApplication& application) {
    return std::string(applicationsFolder) + fileNameOf(application) + std::string(bundleSuffix);
}

/// A hidden entry never takes the plain path from a shown one.
void nameBundles(std::vector<InstalledApplication>& applications) {
    std::map<std::string, int> shownOnes;
    std::map<std::string, int> allOnes;
    for (const auto& application : applications) {
        ++allOnes[fileNameOf(application)];
        if (application.isShown) ++shownOnes[fileNameOf(application)];
    }
    for (auto& application : applications) {
        const auto& others = application.isShown ? shownOnes : allOnes;
        application.bundlePath = others.at(fileNameOf(application)) > 1
                                     ? bracketedPathOf(application)
                                     : plainPathOf(application);
    }
}

/// A name of before fits where nothing else is called so; among what is hidden it does only where
/// nothing at all is.
void giveFormerNames(std::vector<InstalledApplication>& applications) {
    struct Bearers {
        std::set<const InstalledApplication*> shown, all;
    };
    std::map<std::string, Bearers> bearers;
    for (const auto& application : applications) {
        for (const auto& name : {application.storedName(), application.name,
                                 application.displayName, fileNameOf(application)}) {
            if (application.isShown) bearers[name].shown.insert(&application);
            bearers[name].all.insert(&application);
        }
    }
    for (auto& application : applications) {
        application.formerNames.clear();
        const auto stored = application.storedName();
        for (const auto& name :
             {application.displayName, application.name, fileNameOf(application)}) {
            const auto& [shown, all] = bearers.at(name);
            const bool isOnlyOne = (application.isShown ? shown : all).size() == 1;
            if (isOnlyOne && name != stored &&
                std::ranges::count(application.formerNames, name) == 0) {
                application.formerNames.push_back(name);
            }
        }
    }
}

template <typename Predicate>
std::optional<InstalledApplication> first(const std::vector<InstalledApplication>& applications,
                                          Predicate&& matches) {
    const auto found = std::ranges::find_if(applications, matches);
    if (found == applications.end()) return std::nullopt;
    return *found;
}

} // namespace

struct InstalledApplications::Snapshot {
    EntryFiles files;
    /// By name, then id.
    std::vector<InstalledApplication> applications;
};

/// The last look at every file, and what tells cheaply that another one isn't due.
struct InstalledApplications::Look {
    FolderTimes folders;
    std::chrono::system_clock::time_point moment;

    bool isStillGood() const {
        using namespace std::chrono;
        // A file edited in place or a program that comes later changes no folder.
        constexpr seconds longest(1);
        // Changes closer together than the file system's clock ticks share a time.
        constexpr milliseconds tick(20);
        const auto age = system_clock::now() - moment;
        if (age < seconds(0) || age > longest) return false;
        const auto safe = duration_cast<nanoseconds>((moment - tick).time_since_epoch()).count();
        return std::ranges::all_of(folders, [&](const auto& folder) {
            const auto& [path, changed] = folder;
            return changeTimeOf(path) == changed && (!changed || *changed < safe);
        });
    }
};

InstalledApplications::InstalledApplications() {
    roots_.push_back(userFolders::data() + "/applications");
    for (const char* const* folder = g_get_system_data_dirs(); *folder; ++folder) {
        roots_.push_back(gio::text(*folder) + "/applications");
    }
}

InstalledApplications::~InstalledApplications() = default;

std::shared_ptr<const InstalledApplications::Snapshot> InstalledApplications::snapshot() const {
    const std::lock_guard lock(mutex_);
    if (look_ && look_->isStillGood()) return latest_;
    auto look = std::make_unique<Look>();
    look->moment = std::chrono::system_clock::now();
    auto now = std::make_unique<Snapshot>();
    for (const auto& root : roots_)
        collectEntries(root, now->files, look->folders);
    latest_ = read(std::move(now));
    look_ = std::move(look);
    return latest_;
}

std::shared_ptr<const InstalledApplications::Snapshot>
InstalledApplications::read(std::unique_ptr<Snapshot> next) const {
    bool changed = !latest_ || latest_->files != next->files;
    std::map<std::string_view, const InstalledApplication*> known;
    if (latest_) {
        for (const auto& application : latest_->applications) {
            known.emplace(application.desktopId, &application);
        }
    }
    for (const auto& [id, file] : next->files) {
        const auto before = known.find(id);
        if (before != known.end() && latest_->files.at(id) == file) {
            next->applications.push_back(*before->second);
        } else if (auto application = readEntry(id, file.path)) {
            next->applications.push_back(std::move(*application));
            changed = true;
        }
    }
    if (!changed) return latest_;
    std::ranges::sort(next->applications, {}, [](const InstalledApplication& application) {
        return std::tie(application.name, application.desktopId);
    });
    nameBundles(next->applications);
    giveFormerNames(next->applications);
    return next;
}

std::vector<InstalledApplication> InstalledApplications::all() const {
    return snapshot()->applications;
}

std::vector<InstalledApplication> InstalledApplications::shown() const {
    auto applications = all();
    std::erase_if(applications, [](const auto& application) { return !application.isShown; });
    return applications;
}

std::vector<InstalledApplication> InstalledApplications::visible() const {
    auto applications = shown();
    for (auto& standing : {terminal(), finder()}) {
        if (standing && std::ranges::count(applications, standing->desktopId,
                                           &InstalledApplication::desktopId) == 0) {
            applications.insert(applications.begin(), *standing);
        }
    }
    return applications;
}

std::optional<InstalledApplication>
InstalledApplications::byBundlePath(std::string_view path) const {
    while (path.size() > 1 && path.ends_with('/'))
        path.remove_suffix(1);
    if (path == finderPath) return finder();
    if (path == terminalPath) return terminal();
    if (!path.starts_with(applicationsFolder) || !path.ends_with(bundleSuffix)) return std::nullopt;
    const auto present = snapshot();
    const auto& applications = present->applications;
    if (auto found = first(applications, [&](const auto& a) { return a.bundlePath == path; })) {
        return found;
    }
    if (auto found = first(applications, [&](const auto& a) { return bracketedPathOf(a) == path; }))
        return found;
    if (auto found = first(applications,
                           [&](const auto& a) { return a.isShown && plainPathOf(a) == path; })) {
        return found;
    }
    return path == browserPath ? browser() : std::nullopt;
}

std::optional<InstalledApplication>
InstalledApplications::byBundleIdentifier(std::string_view identifier) const {
    if (identifier.empty()) return std::nullopt;
    if (text::equalsIgnoringCase(identifier, finderIdentifier)) return finder();
    if (text::equalsIgnoringCase(identifier, terminalIdentifier)) return terminal();
    if (text::equalsIgnoringCase(identifier, browserIdentifier)) return browser();
    const auto present = snapshot();
    if (auto found = first(present->applications, [&](const InstalledApplication& a) {
            return a.bundleIdentifier == identifier;
        })) {
        return found;
    }
    return first(present->applications, [&](const InstalledApplication& a) {
        return text::equalsIgnoringCase(a.bundleIdentifier, identifier);
    });
}

std::optional<InstalledApplication>
InstalledApplications::byDesktopId(std::string_view desktopId) const {
    return first(snapshot()->applications,
                 [&](const auto& application) { return application.desktopId == desktopId; });
}

std::optional<InstalledApplication>
InstalledApplications::byEntryFile(const std::string& file) const {
    const auto stamp = entryStampOf(file);
    if (!file.ends_with(entrySuffix) || !stamp) return std::nullopt;
    const auto present = snapshot();
    const auto& files = present->files;
    auto own = first(present->applications,
                     [&](const auto& a) { return files.at(a.desktopId).stamp == *stamp; });
    if (own) return own;
    const auto described = readEntry(path::lastComponent(file), file);
    if (!described) return std::nullopt;
    return first(present->applications, [&](const InstalledApplication& a) {
        return a.name == described->name && a.executable == described->executable;
    });
}

std::optional<InstalledApplication>
InstalledApplications::defaultHandler(const std::string& contentType) const {
    const gio::Ref<GAppInfo> handler(
        g_app_info_get_default_for_type(contentType.c_str(), /*must_support_uris=*/FALSE));
    return handler ? byDesktopId(gio::text(g_app_info_get_id(handler.get()))) : std::nullopt;
}

std::optional<InstalledApplication> InstalledApplications::finder() const {
    return defaultHandler("inode/directory");
}

std::optional<InstalledApplication> InstalledApplications::browser() const {
    return defaultHandler("x-scheme-handler/http");
}

std::optional<terminalEmulator::TerminalCommand> InstalledApplications::terminalCommand() const {
    return terminalEmulator::preferred(snapshot()->applications);
}

std::optional<InstalledApplication> InstalledApplications::terminal() const {
    const auto command = terminalCommand();
    if (!command) return std::nullopt;
    if (command->entry) return command->entry;
    InstalledApplication emulator;
    emulator.exec = emulator.executable = command->prefix.front();
    emulator.bundleIdentifier = terminalIdentifier;
    emulator.bundlePath = terminalPath;
    emulator.name = emulator.displayName = "Terminal";
    emulator.isShown = emulator.isTerminalEmulator = true;
    return emulator;
}

InstalledApplications::Roles InstalledApplications::roles() const {
    const auto idOf = [](const auto& application) {
        return application ? application->desktopId : std::string();
    };
    return {idOf(finder()), idOf(terminal()), idOf(browser())};
}

std::vector<OtherName> otherNames(const InstalledApplication& application,
                                  const InstalledApplications::Roles& roles) {
    std::vector<OtherName> names;
    const auto add = [&](const std::string& id, std::string_view path,
                         std::string_view identifier) {
        if (id.empty() || id != application.desktopId) return;
        names.push_back({path::stem(path), std::string(identifier), std::string(path)});
    };
    add(roles.finder, finderPath, finderIdentifier);
    add(roles.terminal, terminalPath, terminalIdentifier);
    add(roles.browser, browserPath, browserIdentifier);
    for (const auto& name : application.formerNames)
        names.push_back({.name = name});
    return names;
}

} // namespace corvane
