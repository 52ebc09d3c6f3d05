#include "linux/running/RunningApplications.h"

#include "foundation/Diagnostics.h"
#include "foundation/Text.h"
#include "foundation/Url.h"
#include "linux/installed/InstalledApplications.h"
#include "linux/installed/LinuxBundles.h"
#include "linux/installed/TerminalEmulator.h"
#include "linux/running/ApplicationIdentity.h"
#include "linux/system/ProcessFacts.h"

#include <algorithm>
#include <csignal>
#include <map>
#include <ranges>
#include <tuple>

#include <unistd.h>

namespace corvane {
namespace {

using x11::Clients;
using x11::ClientWindow;
using x11::halfASecondFromNow;
using x11::WindowKind;
using Windows = std::vector<ClientWindow>;

/// What the identity of every process is compared with, looked up once for a list.
struct Known {
    std::vector<InstalledApplication> installed;
    InstalledApplications::Roles roles;
    std::optional<InstalledApplication> terminal;
    /// The preferred emulator's name, empty where there is none.
    std::string emulator;
};

Known lookUp(const InstalledApplications& installed) {
    const auto emulator = installed.terminalCommand();
    return {installed.all(), installed.roles(), installed.terminal(),
            emulator ? terminalEmulator::nameOf(emulator->executable) : ""};
}

/// A process that runs and all of its windows, bottom to top.
struct Running {
    ProcessFacts process;
    Windows windows;
};

/// A dialog that another process shows for an application, as file choosers are, makes its process
/// no application of its own.
bool isMain(const ClientWindow& window, const Windows& all) {
    if (window.kind != WindowKind::ordinary || window.skipsTaskbar) return false;
    if (window.transientFor == XCB_NONE) return true;
    return std::ranges::none_of(all, [&](const ClientWindow& other) {
        return other.window == window.transientFor &&
               other.processIdentifier != window.processIdentifier;
    });
}

std::vector<Running> processesOf(const Windows& all) {
    std::map<pid_t, Windows> byProcess;
    for (const auto& window : all)
        byProcess[window.processIdentifier].push_back(window);
    std::vector<Running> found;
    for (auto& [identifier, windows] : byProcess) {
        if (auto process = processFacts(identifier)) {
            found.push_back({std::move(*process), std::move(windows)});
        }
    }
    std::ranges::sort(found, {}, [](const Running& running) {
        return std::tie(running.process.startTime, running.process.processIdentifier);
    });
    return found;
}

/// The main windows' word counts more than that of panels and dialogs.
const InstalledApplication* applicationOf(const Running& running, const Windows& all,
                                          const Known& known) {
    for (const bool main : {true, false}) {
        for (const auto& window : running.windows) {
            if (isMain(window, all) != main) continue;
            if (const auto* found = applicationOf(window, running.process, known.installed)) {
                return found;
            }
        }
    }
    return nullptr;
}

/// A program that an emulator was started for doesn't make it another application, unless the
/// emulator's window says so by its class.
bool isTerminal(const InstalledApplication* application, const ProcessFacts& process,
                const Known& known) {
    const auto& terminalId = known.roles.terminal;
    if (application && !terminalId.empty() && application->desktopId == terminalId) return true;
    if (known.emulator.empty()) return false;
    if (application && !application->isTerminalEmulator && !application->needsTerminal) {
        return false;
    }
    return terminalEmulator::nameOf(process.executable) == known.emulator;
}

std::string nameWithoutEntry(const Running& running) {
    for (const auto& window : running.windows) {
        for (const auto& name : {window.className, window.instanceName}) {
            if (!name.empty()) return text::replacingInvalidUtf8(name);
        }
    }
    return text::replacingInvalidUtf8(running.process.commandName);
}

void setIdentity(RunningApplication& result, const Running& running,
                 const InstalledApplication* application, const Known& known) {
    if (known.terminal && isTerminal(application, running.process, known))
        application = &*known.terminal;
    if (application) {
        result.localizedName = application->storedName();
        result.bundleIdentifier = application->bundleIdentifier;
        result.bundleURL = Url::fromPath(application->bundlePath);
        result.otherNames = otherNames(*application, known.roles);
    } else if (const auto name = nameWithoutEntry(running); !name.empty()) {
        result.localizedName = name;
    }
    // Also when it runs from a place where it isn't installed.
    if (result.processIdentifier == ::getpid()) result.bundleIdentifier = mainBundleIdentifier;
}

bool contains(const Windows& windows, WindowKind kind) {
    return std::ranges::any_of(windows, [&](const auto& window) { return window.kind == kind; });
}

RunningApplication described(const Running& running, const Clients& clients, const Known& known) {
    const auto& all = clients.windows;
    RunningApplication result;
    result.processIdentifier = running.process.processIdentifier;
    result.startTime = running.process.startTime;
    setIdentity(result, running, applicationOf(running, all, known), known);
    const std::string& executable = running.process.executable;
    if (executable.starts_with('/')) result.executableURL = Url::fromPath(executable);

    Windows counting;
    std::ranges::copy_if(running.windows, std::back_inserter(counting),
                         [&](const ClientWindow& window) { return isMain(window, all); });
    constexpr int regular = 0;
    constexpr int accessory = 1;
    const bool belongsToSession = contains(running.windows, WindowKind::dock) ||
                                  result.processIdentifier == clients.windowManager;
    result.activationPolicy = counting.empty() || belongsToSession ? accessory : regular;
    if (counting.empty()) counting = running.windows;
    result.isHidden = std::ranges::all_of(counting, &ClientWindow::isIconified);
    return result;
}

/// What of the display a running application is.
struct Target {
    /// Without a desktop that it draws; bottom to top.
    Windows windows;
    bool drawsDesktop = false;
    /// By the server's word, where it can tell.
    bool isConnected = false;
};

/// Nothing for what is never asked to quit, and for a process that isn't the one that was listed.
std::optional<Target> targetOf(const RunningApplication& application, const Clients& clients) {
    const pid_t process = application.processIdentifier;
    if (process == ::getpid() || process == clients.windowManager || process == clients.server ||
        startTimeOf(process) != application.startTime) {
        return std::nullopt;
    }
    Target target;
    std::ranges::copy_if(
        clients.windows, std::back_inserter(target.windows),
        [&](const ClientWindow& window) { return window.processIdentifier == process; });
    if (contains(target.windows, WindowKind::dock)) return std::nullopt;
    target.drawsDesktop = std::erase_if(target.windows, [](const ClientWindow& window) {
                              return window.kind == WindowKind::desktop;
                          }) > 0;
    target.isConnected = clients.processes.empty() ||
                         std::ranges::any_of(clients.processes, [&](const auto& client) {
                             return client.second == process;
                         });
    return target;
}

constexpr std::uint32_t fromUser = 2;

/// The window manager treats it as the user's own wish.
void requestActivation(x11::Server& server, xcb_window_t window) {
    // A window manager maps an iconified window again on this, whatever it makes of the message.
    xcb_map_window(server.get(), window);
    server.sendMessage(x11::Server::Recipient::windowManager, window,
                       server.atoms().netActiveWindow, {fromUser});
    xcb_flush(server.get());
}

void requestClosing(x11::Server& server, xcb_window_t window, bool hasWindowManager) {
    const auto& atoms = server.atoms();
    if (hasWindowManager) {
        server.sendMessage(x11::Server::Recipient::windowManager, window, atoms.netCloseWindow,
                           {XCB_CURRENT_TIME, fromUser});
    } else {
        server.sendMessage(x11::Server::Recipient::client, window, atoms.wmProtocols,
                           {atoms.wmDeleteWindow});
    }
}

} // namespace

std::optional<Clients> RunningApplications::clients(x11::Deadline deadline) {
    auto found = connection_.answer(
        deadline, [&](x11::Server& server) { return x11::clients(server, deadline); });
    wasAnswered_ = found.has_value();
    if (!found) diagnostic({"The X display doesn't tell its windows"});
    return found;
}

std::vector<RunningApplication> RunningApplications::list() {
    const auto found = [&] {
        const std::lock_guard lock(mutex_);
        return clients(halfASecondFromNow());
    }();
    if (!found || found->windows.empty()) return {};
    const Known known = lookUp(installed_);
    std::vector<RunningApplication> applications;
    for (const auto& running : processesOf(found->windows))
        applications.push_back(described(running, *found, known));
    return applications;
}

bool RunningApplications::activate(std::int32_t processIdentifier) {
    const std::lock_guard lock(mutex_);
    const auto deadline = halfASecondFromNow();
    const auto found = clients(deadline);
    if (!found) return false;
    const auto& all = found->windows;
    const ClientWindow* uppermost = nullptr;
    for (const auto& window : all) {
        if (window.processIdentifier != processIdentifier) continue;
        if (!uppermost || isMain(window, all) || !isMain(*uppermost, all)) uppermost = &window;
    }
    auto* server = uppermost ? connection_.server(deadline) : nullptr;
    if (!server) return false;
    requestActivation(*server, uppermost->window);
    return !server->failed();
}

bool RunningApplications::terminate(const RunningApplication& application) {
    const std::lock_guard lock(mutex_);
    const auto deadline = halfASecondFromNow();
    const auto found = clients(deadline);
    const auto target = found ? targetOf(application, *found) : std::nullopt;
    if (!target) return false;
    if (target->windows.empty()) {
        return !target->drawsDesktop && target->isConnected &&
               sendSignal(application.processIdentifier, application.startTime, SIGTERM);
    }
    wasAnswered_ = false;
    auto* server = connection_.server(deadline);
    if (!server) return false;
    // A question is above the window that it belongs to. Closed first, it is asked again; the other
    // way round it would go and leave its window with no answer.
    for (const auto& window : target->windows | std::views::reverse)
        requestClosing(*server, window.window, found->hasWindowManager);
    wasAnswered_ = server->finish(deadline);
    return wasAnswered_;
}

bool RunningApplications::forceTerminate(const RunningApplication& application) {
    const std::lock_guard lock(mutex_);
    if (!wasAnswered_) return false;
    const auto found = clients(halfASecondFromNow());
    const auto target = found ? targetOf(application, *found) : std::nullopt;
    return target && !target->drawsDesktop && target->isConnected &&
           sendSignal(application.processIdentifier, application.startTime, SIGKILL);
}

} // namespace corvane
