#include "fuzz/Fuzz.h"
#include "linux/installed/ExecLine.h"
#include "linux/installed/InstalledApplications.h"

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <random>

using namespace corvane;
namespace fs = std::filesystem;

namespace {

/// A machine with one entry, which nobody else uses.
struct Machine {
    Machine() {
        fs::create_directories(folder / "applications");
        ::setenv("XDG_DATA_HOME", folder.c_str(), 1);
        ::setenv("XDG_DATA_DIRS", (folder / "none").c_str(), 1);
        ::setenv("XDG_CONFIG_HOME", folder.c_str(), 1);
        ::setenv("XDG_CONFIG_DIRS", (folder / "none").c_str(), 1);
    }
    ~Machine() { fs::remove_all(folder); }

    const fs::path folder =
        fs::temp_directory_path() / ("corvane-entries-" + std::to_string(std::random_device()()));
    const fs::path entry = folder / "applications/test.entry.desktop";
};

} // namespace

/// What a stranger writes as a desktop entry is an application that is found again by all its
/// names, or none.
void feed(std::string_view text) {
    static const Machine machine;
    static const InstalledApplications installed;
    // Another file each time, so that it counts as changed.
    fs::remove(machine.entry);
    std::ofstream(machine.entry) << "[Desktop Entry]\nType=Application\nName=A\nExec=/bin/true\n"
                                 << text;
    for (const auto& application : installed.all()) {
        const auto sameIn = [&](const std::optional<InstalledApplication>& found) {
            return found && found->desktopId == application.desktopId;
        };
        expect(sameIn(installed.byBundlePath(application.bundlePath)));
        expect(sameIn(installed.byDesktopId(application.desktopId)));
        expect(application.bundlePath.rfind('/') < std::string_view("/Applications/").size());
        const auto commands = execCommands(application, {"file:///a$(b).txt"}, {});
        expect(commands || !commands.error().localizedDescription.empty());
    }
    (void)installed.terminalCommand();
}
