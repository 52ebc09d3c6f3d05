#include "linux/running/ApplicationOpener.h"

#include "foundation/Text.h"
#include "linux/installed/EntryLaunching.h"
#include "linux/installed/ExecLine.h"
#include "linux/installed/FileManagerReveal.h"
#include "linux/system/DetachedProcess.h"
#include "linux/system/Gio.h"

#include <sys/stat.h>
#include <unistd.h>

namespace corvane {
namespace {

/// Empty where the file can't be looked at.
std::string contentTypeOf(const std::string& path) {
    const gio::Ref<GFile> file(g_file_new_for_path(path.c_str()));
    const gio::Ref<GFileInfo> info(g_file_query_info(file.get(),
                                                     G_FILE_ATTRIBUTE_STANDARD_CONTENT_TYPE,
                                                     G_FILE_QUERY_INFO_NONE, nullptr, nullptr));
    return info ? gio::text(g_file_info_get_content_type(info.get())) : "";
}

/// What a file manager would run where no application opens it: AppImages, scripts, own builds.
bool isExecutable(const Url& url) {
    struct stat info{};
    return url.isFile() && ::stat(url.path().c_str(), &info) == 0 && S_ISREG(info.st_mode) &&
           ::access(url.path().c_str(), X_OK) == 0 &&
           g_content_type_can_be_executable(contentTypeOf(url.path()).c_str());
}

Result<void> run(const std::string& program) {
    const auto started = startDetached({program}, {.workingDirectory = path::parent(program)});
    return started ? Result<void>() : started.error();
}

} // namespace

std::optional<InstalledApplication> ApplicationOpener::handlerOf(const Url& url) const {
    if (!areOpenable({url.absoluteString()})) return std::nullopt;
    if (!url.isFile()) {
        return installed_.defaultHandler("x-scheme-handler/" + text::lowercased(url.scheme()));
    }
    if (auto bundle = installed_.byBundlePath(url.path())) return bundle;
    const auto type = contentTypeOf(url.path());
    return type.empty() ? std::nullopt : installed_.defaultHandler(type);
}

Result<void> ApplicationOpener::open(const Url& url) const {
    if (url.isFile()) {
        if (const auto bundle = installed_.byBundlePath(url.path())) {
            return openApplication(*bundle);
        }
    }
    if (const auto item = areOpenable({url.absoluteString()}); !item) return item;
    const auto handler = handlerOf(url);
    if (!handler && isExecutable(url)) return run(url.path());
    if (!handler) return Error{"No application opens " + url.absoluteString() + "."};
    return launch(*handler, {url.absoluteString()});
}

Result<void> ApplicationOpener::open(const Url& url,
                                     const InstalledApplication& application) const {
    if (url.isFile() && installed_.byBundlePath(url.path())) return launch(application);
    return launch(application, {url.absoluteString()});
}

Result<void> ApplicationOpener::openApplication(const InstalledApplication& application) const {
    if (activate(application)) return {};
    return launch(application);
}

bool ApplicationOpener::activate(const InstalledApplication& application) const {
    for (const auto& running : running_.list()) {
        if (!running.bundleIdentifier) continue;
        // Finder and Terminal run under their entries' identifiers or under their own.
        const auto installed = installed_.byBundleIdentifier(*running.bundleIdentifier);
        if (installed && installed->desktopId == application.desktopId &&
            running_.activate(running)) {
            return true;
        }
    }
    return false;
}

std::optional<terminalEmulator::TerminalCommand>
ApplicationOpener::terminalFor(const InstalledApplication& application) const {
    return application.needsTerminal ? installed_.terminalCommand() : std::nullopt;
}

Result<void> ApplicationOpener::launch(const InstalledApplication& application,
                                       const std::vector<std::string>& uris,
                                       const std::vector<std::string>& arguments) const {
    const auto token = application.takesToken ? running_.beginLaunch(application) : std::string();
    const auto processes =
        launchEntry(application, uris, arguments, terminalFor(application), token);
    if (!processes && !token.empty()) running_.endLaunch(token);
    if (!processes) return processes.error();
    running_.launched(application, *processes);
    return {};
}

void ApplicationOpener::reveal(const Url& url) const {
    // A bundle has no place on disk, but its entry has.
    const auto bundle = installed_.byBundlePath(url.path());
    const Url item = bundle ? Url::fromPath(bundle->desktopFile) : url;
    const auto finder = installed_.finder();
    const auto terminal = finder ? terminalFor(*finder) : std::nullopt;
    revealInFileManager(item, [finder, terminal](const Url& folder) -> Result<void> {
        if (!finder) return Error{"No application opens folders."};
        const auto processes = launchEntry(*finder, {folder.absoluteString()}, {}, terminal);
        return processes ? Result<void>() : processes.error();
    });
}

} // namespace corvane
