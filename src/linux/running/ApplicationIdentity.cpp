#include "linux/running/ApplicationIdentity.h"

#include "foundation/Text.h"
#include "foundation/Url.h"

#include <algorithm>
#include <array>

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

} // namespace

const InstalledApplication* applicationOf(const x11::ClientWindow& window,
                                          const ProcessFacts& process, const Installed& installed) {
    const auto byInstanceThenClass = [&](auto&& look) {
        const auto* found = look(installed, window.instanceName);
        return found ? found : look(installed, window.className);
    };
    if (const auto* found = byId(installed, process.sandboxIdentifier)) return found;
    if (const auto* found = byFile(installed, window.desktopFileHint)) return found;
    if (const auto* found = byInstanceThenClass(byStartupClass)) return found;
    if (const auto* found = byId(installed, window.gtkApplicationId)) return found;
    if (const auto* found = byInstanceThenClass(byClassAsId)) return found;
    if (const auto* found = byFile(installed, process.launchedDesktopFile)) return found;
    if (const auto* found = byProgram(installed, process.executable)) return found;
    return byProgram(installed, process.commandName);
}

} // namespace corvane
