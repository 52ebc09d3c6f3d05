#include "linux/running/ApplicationIdentity.h"

#include "foundation/Text.h"
#include "foundation/Url.h"

#include <algorithm>
#include <array>
#include <map>
#include <string>
#include <utility>

namespace corvane {
namespace {

using Installed = std::vector<InstalledApplication>;

template <typename Fits>
const InstalledApplication* firstThat(const Installed& installed, Fits&& fits) {
    const InstalledApplication* hidden = nullptr;
    for (const auto& application : installed) {
        if (!fits(application)) continue;
        if (application.isShown) return &application;
        if (!hidden) hidden = &application;
    }
    return hidden;
}

/// With or without ".desktop".
const InstalledApplication* byId(const Installed& installed, std::string_view id) {
    if (id.empty()) return nullptr;
    return firstThat(installed, [&](const InstalledApplication& application) {
        return application.desktopId == id || application.bundleIdentifier == id;
    });
}

/// An entry's path, or its id.
const InstalledApplication* byFile(const Installed& installed, const std::string& file) {
    if (!file.starts_with('/')) return byId(installed, file);
    return firstThat(installed, [&](const InstalledApplication& application) {
        return application.desktopFile == file;
    });
}

const InstalledApplication* byStartupClass(const Installed& installed, std::string_view name) {
    if (name.empty()) return nullptr;
    return firstThat(installed, [&](const InstalledApplication& application) {
        return application.startupWmClass == name;
    });
}

const InstalledApplication* byClassAsId(const Installed& installed, const std::string& name) {
    if (name.empty()) return nullptr;
    constexpr std::array<std::string_view, 5> vendors{"", "gnome-", "fedora-", "mozilla-",
                                                      "debian-"};
    const auto lower = text::replacingAll(text::lowercased(name), " ", "-");
    for (const auto& candidate : {name, lower}) {
        for (const auto vendor : vendors) {
            if (const auto* found = byId(installed, std::string(vendor) + candidate)) return found;
        }
    }
    return nullptr;
}

bool runs(const std::string& entryProgram, const std::string& program) {
    if (entryProgram.empty() || program.empty()) return false;
    const bool isPath = entryProgram.starts_with('/') && program.starts_with('/');
    return isPath ? entryProgram == program
                  : path::lastComponent(entryProgram) == path::lastComponent(program);
}

const InstalledApplication* byProgram(const Installed& installed, const std::string& program) {
    if (isInterpreter(path::lastComponent(program))) return nullptr;
    return firstThat(installed, [&](const InstalledApplication& application) {
        return runs(application.executable, program) || runs(application.tryExec, program);
    });
}

/// The sandbox's entries have its identifier with more behind it: "org.x.Office.writer" of
/// "org.x.Office", "office_writer" and "office_calc" of one snap.
bool isInSandbox(const InstalledApplication& found, const std::string& sandbox) {
    if (sandbox.empty()) return true;
    const auto& id = found.bundleIdentifier;
    const auto snap = sandbox.find('_');
    return id == sandbox || id.starts_with(sandbox + ".") || id.starts_with(sandbox + "_") ||
           (snap != std::string::npos && id.starts_with(sandbox.substr(0, snap + 1)));
}

const InstalledApplication* namedByHints(const ApplicationHints& hints,
                                         const Installed& installed) {
    const auto byInstanceThenClass = [&](auto&& look) {
        const auto* found = look(installed, hints.instanceName);
        return found ? found : look(installed, hints.className);
    };
    if (const auto* found = byFile(installed, hints.desktopFile)) return found;
    if (const auto* found = byInstanceThenClass(byStartupClass)) return found;
    if (const auto* found = byId(installed, hints.applicationId)) return found;
    if (const auto* found = byStartupClass(installed, hints.applicationId)) return found;
    if (const auto* found = byInstanceThenClass(byClassAsId)) return found;
    return byClassAsId(installed, hints.applicationId);
}

/// Main windows by age, then the others.
std::vector<const ManagedWindow*> oldestFirst(const std::vector<ManagedWindow>& windows) {
    std::vector<const ManagedWindow*> ordered;
    for (const auto& window : windows)
        ordered.push_back(&window);
    std::ranges::sort(ordered, {}, [&](const ManagedWindow* window) {
        return std::pair(!isMain(*window, windows), window->window.number);
    });
    return ordered;
}

} // namespace

const InstalledApplication* applicationNamedBy(const ApplicationHints& hints,
                                               const ProcessFacts& process,
                                               const Installed& installed) {
    const auto& sandbox =
        process.sandboxIdentifier.empty() ? hints.sandboxId : process.sandboxIdentifier;
    const auto* found = namedByHints(hints, installed);
    if (found && isInSandbox(*found, sandbox)) return found;
    return byId(installed, sandbox);
}

const InstalledApplication* applicationStartedAs(const ProcessFacts& process,
                                                 const Installed& installed) {
    if (const auto* found = byFile(installed, process.launchedDesktopFile)) return found;
    if (const auto* found = byProgram(installed, process.executable)) return found;
    return byProgram(installed, process.commandName);
}

const InstalledApplication* onlyApplicationOf(const std::string& program,
                                              const Installed& installed) {
    const auto* found = byProgram(installed, program);
    const bool isOnly = found && std::ranges::all_of(installed, [&](const auto& application) {
                            return &application == found || !application.isShown ||
                                   !runs(application.executable, program);
                        });
    return isOnly ? found : nullptr;
}

bool isMain(const ManagedWindow& window, const std::vector<ManagedWindow>& all) {
    if (window.kind != WindowKind::ordinary || window.skipsTaskbar) return false;
    return std::ranges::none_of(all, [&](const ManagedWindow& other) {
        return window.owner == other.window.number && other.window.process != window.window.process;
    });
}

std::vector<ProcessShare> sharesOf(const ProcessFacts& process,
                                   const std::vector<ManagedWindow>& windows,
                                   const Installed& installed) {
    std::map<std::uint64_t, const InstalledApplication*> named;
    for (const auto& window : windows)
        named[window.window.number] = applicationNamedBy(window.hints, process, installed);
    const auto ordered = oldestFirst(windows);
    const InstalledApplication* first =
        ordered.empty() ? nullptr : named[ordered[0]->window.number];
    if (!first) first = applicationStartedAs(process, installed);
    for (const auto* window : ordered) {
        if (!first) first = named[window->window.number];
    }
    const auto applicationOf = [&](const ManagedWindow& window) {
        if (const auto* own = named[window.window.number]) return own;
        const auto* owners =
            window.owner && named.contains(*window.owner) ? named[*window.owner] : nullptr;
        return owners ? owners : first;
    };
    std::vector<ProcessShare> shares;
    for (const auto* window : ordered) {
        const auto* application = applicationOf(*window);
        if (std::ranges::count(shares, application, &ProcessShare::application) == 0)
            shares.push_back({application, {}});
    }
    for (const auto& window : windows)
        std::ranges::find(shares, applicationOf(window), &ProcessShare::application)
            ->windows.push_back(window);
    return shares;
}

} // namespace corvane
