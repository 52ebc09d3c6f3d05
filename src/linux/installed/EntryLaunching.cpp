#include "linux/installed/EntryLaunching.h"

#include "foundation/Url.h"
#include "linux/installed/ExecLine.h"
#include "linux/installed/InstalledApplications.h"
#include "linux/system/DetachedProcess.h"
#include "linux/system/Gio.h"
#include "linux/system/SessionBus.h"

#include <chrono>
#include <filesystem>

namespace corvane {
namespace {

Error cannotOpen(const InstalledApplication& application, const std::string& reason) {
    return {application.displayName + " could not be opened: " + reason};
}

/// The entry's object path: "/org/example/Viewer" for org.example.Viewer.
std::string objectPathOf(std::string identifier) {
    for (char& c : identifier) {
        if (c == '.') c = '/';
        if (c == '-') c = '_';
    }
    return "/" + identifier;
}

/// An application may take as long as it likes to show its window; asked it is by then.
constexpr std::chrono::milliseconds longestWait(500);

Result<void> launchOnBus(const InstalledApplication& application,
                         const std::vector<std::string>& uris,
                         const std::vector<std::string>& arguments, const std::string& token) {
    if (!application.dbusActivatable) return cannotOpen(application, "its entry names no program.");
    if (!arguments.empty())
        return cannotOpen(application, "it is started over the session bus, with no arguments.");
    const auto bus = sessionBus();
    if (!bus) return cannotOpen(application, "there is no session bus to start it on.");
    const auto& identifier = application.bundleIdentifier;
    GVariantBuilder items;
    g_variant_builder_init(&items, G_VARIANT_TYPE("as"));
    for (const auto& uri : uris)
        g_variant_builder_add(&items, "s", uri.c_str());
    GVariantBuilder told;
    g_variant_builder_init(&told, G_VARIANT_TYPE_VARDICT);
    for (const char* key : {"desktop-startup-id", "activation-token"}) {
        if (token.empty()) continue;
        g_variant_builder_add(&told, "{sv}", key, g_variant_new_string(token.c_str()));
    }
    GVariant* parameters =
        uris.empty() ? g_variant_new("(a{sv})", &told) : g_variant_new("(asa{sv})", &items, &told);
    if (uris.empty()) g_variant_builder_clear(&items);
    return callOnBus(bus.get(),
                     {.name = identifier,
                      .path = objectPathOf(identifier),
                      .interface = "org.freedesktop.Application",
                      .method = uris.empty() ? "Activate" : "Open"},
                     parameters, longestWait);
}

/// The entry's own, where it names one.
std::string folderOf(const InstalledApplication& application) {
    const gio::Ref<GDesktopAppInfo> entry(
        g_desktop_app_info_new_from_filename(application.desktopFile.c_str()));
    return entry ? gio::take(g_desktop_app_info_get_string(entry.get(), "Path")) : std::string();
}

Result<pid_t> start(const InstalledApplication& application, const Command& command,
                    const std::string& folder, const std::string& token) {
    const DetachedOptions options{
        .workingDirectory = folder, .desktopFile = application.desktopFile, .token = token};
    const auto started = startDetached(command, options);
    if (!started) return cannotOpen(application, started.error().localizedDescription);
    return started;
}

/// An emulator would take a folder for a program: it is where the shell starts.
Result<std::vector<pid_t>> openTerminalIn(const InstalledApplication& application,
                                          const std::vector<std::string>& uris,
                                          const std::vector<std::string>& arguments,
                                          const std::string& token) {
    const auto command = execCommands(application, {}, arguments);
    if (!command) return command.error();
    std::vector<pid_t> processes;
    for (const auto& uri : uris) {
        const auto url = Url::parse(uri);
        std::error_code failure;
        if (!url || !url->isFile() || !std::filesystem::is_directory(url->path(), failure))
            return cannotOpen(application, "it opens only folders, not " + uri + ".");
        const auto started = start(application, command->front(), url->path(), token);
        if (!started) return started.error();
        processes.push_back(*started);
    }
    return processes;
}

} // namespace

Result<std::vector<pid_t>>
launchEntry(const InstalledApplication& application, const std::vector<std::string>& uris,
            const std::vector<std::string>& arguments,
            const std::optional<terminalEmulator::TerminalCommand>& terminal,
            const std::string& token) {
    if (const auto items = areOpenable(uris); !items) return items.error();
    std::vector<pid_t> processes;
    if (application.exec.empty()) {
        const auto asked = launchOnBus(application, uris, arguments, token);
        return asked ? processes : Result<std::vector<pid_t>>(asked.error());
    }
    if (application.isTerminalEmulator && !takesItems(application) && !uris.empty())
        return openTerminalIn(application, uris, arguments, token);
    const auto commands = execCommands(application, uris, arguments);
    if (!commands) return commands.error();
    if (application.needsTerminal && !terminal)
        return cannotOpen(application, "it runs in a terminal, and none is installed.");
    const auto folder = folderOf(application);
    for (auto command : *commands) {
        if (application.needsTerminal)
            command.insert(command.begin(), terminal->prefix.begin(), terminal->prefix.end());
        const auto started = start(application, command, folder, token);
        if (!started) return started.error();
        processes.push_back(*started);
    }
    return processes;
}

} // namespace corvane
