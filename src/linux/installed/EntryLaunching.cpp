#include "linux/installed/EntryLaunching.h"

#include "linux/installed/ExecLine.h"
#include "linux/installed/InstalledApplications.h"
#include "linux/system/DetachedProcess.h"
#include "linux/system/Gio.h"
#include "linux/system/SessionBus.h"

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

std::string entryIdentifier(const InstalledApplication& application) {
    return application.desktopId.substr(0, application.desktopId.rfind(".desktop"));
}

std::optional<Error> launchOnBus(const InstalledApplication& application,
                                 const std::vector<std::string>& uris) {
    const auto bus = sessionBus();
    if (!bus) return cannotOpen(application, "there is no session bus to start it on.");
    const std::string identifier = entryIdentifier(application);
    GVariantBuilder items;
    g_variant_builder_init(&items, G_VARIANT_TYPE("as"));
    for (const auto& uri : uris)
        g_variant_builder_add(&items, "s", uri.c_str());
    GVariant* parameters = uris.empty() ? g_variant_new("(a{sv})", nullptr)
                                        : g_variant_new("(asa{sv})", &items, nullptr);
    if (uris.empty()) g_variant_builder_clear(&items);
    return callOnBus(bus.get(),
                     {.name = identifier,
                      .path = objectPathOf(identifier),
                      .interface = "org.freedesktop.Application",
                      .method = uris.empty() ? "Activate" : "Open"},
                     parameters);
}

std::optional<Error> start(const InstalledApplication& application, const Command& command) {
    const gio::Ref<GDesktopAppInfo> entry(
        g_desktop_app_info_new_from_filename(application.desktopFile.c_str()));
    DetachedOptions options{.desktopFile = application.desktopFile};
    if (entry) {
        options.workingDirectory = gio::take(g_desktop_app_info_get_string(entry.get(), "Path"));
    }
    const auto started = startDetached(command, options);
    if (!started) return cannotOpen(application, started.error().localizedDescription);
    return std::nullopt;
}

} // namespace

std::optional<Error> launchEntry(const InstalledApplication& application,
                                 const std::vector<std::string>& uris,
                                 const std::vector<std::string>& arguments) {
    if (application.exec.empty()) return launchOnBus(application, uris);
    const auto commands = execCommands(application, uris, arguments);
    if (!commands) return commands.error();
    for (const auto& command : *commands) {
        if (auto error = start(application, command)) return error;
    }
    return std::nullopt;
}

} // namespace corvane
