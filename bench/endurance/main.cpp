// Starts and finishes a workspace of five programs again and again, in one process of Corvane, and
// looks at what that process holds. Fails where it holds more at the end than after the first
// rounds.

#include "desktop/harness/Desktop.h"
#include "desktop/harness/Scene.h"
#include "desktop/harness/TrayHost.h"
#include "foundation/PropertyList.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <exception>
#include <filesystem>
#include <fstream>
#include <stdexcept>

#include <xcb/res.h>

using namespace corvane::desktop;

namespace {

constexpr const char* programs[]{"xclock", "xcalc", "xlogo", "xeyes", "xload"};
constexpr int roundsToFillCaches = 50;
constexpr long allowedGrowthInKiB = 4096;

/// What the display server keeps for a process: the first argument's, printed. Runs on the desktop.
int printDisplayResources(unsigned process) {
    auto* display = xcb_connect(nullptr, nullptr);
    const xcb_res_client_id_spec_t all{0, XCB_RES_CLIENT_ID_MASK_LOCAL_CLIENT_PID};
    auto* ids = xcb_res_query_client_ids_reply(display, xcb_res_query_client_ids(display, 1, &all),
                                               nullptr);
    unsigned long count = 0;
    for (auto id = xcb_res_query_client_ids_ids_iterator(ids); id.rem;
         xcb_res_client_id_value_next(&id)) {
        if (*xcb_res_client_id_value_value(id.data) != process) continue;
        auto* held = xcb_res_query_client_resources_reply(
            display, xcb_res_query_client_resources(display, id.data->spec.client), nullptr);
        for (auto type = xcb_res_query_client_resources_types_iterator(held); type.rem;
             xcb_res_type_next(&type))
            count += type.data->count;
        std::free(held);
    }
    std::free(ids);
    xcb_disconnect(display);
    std::printf("%lu\n", count);
    return 0;
}

struct Holdings {
    long memoryInKiB = 0;
    long files = 0;
    long children = 0;
    long displayResources = 0;
};

Holdings holdings(const Desktop& desktop, pid_t process) {
    const auto folder = "/proc/" + std::to_string(process);
    Holdings held;
    std::ifstream status(folder + "/status");
    for (std::string line; std::getline(status, line);) {
        if (line.starts_with("VmRSS:")) held.memoryInKiB = std::atol(line.c_str() + 6);
    }
    held.files = std::distance(std::filesystem::directory_iterator(folder + "/fd"), {});
    held.children = long(descendants(process).size());
    held.displayResources =
        std::stol(desktop.run({"/proc/self/exe", "resources", std::to_string(process)}));
    return held;
}

void expect(bool isTrue, const std::string& what) {
    if (!isTrue) throw std::runtime_error(what);
}

void endure(int rounds) {
    Desktop desktop;
    std::vector<SceneResource> resources;
    for (const std::string program : programs) {
        desktop.install(program, program, program);
        resources.push_back({program, "application", "/Applications/" + program + ".app"});
    }
    writeFile(desktop.preferencesFile(),
              PropertyList{PropertyList::Dictionary{{"HasCompletedOnboarding", {true}},
                                                    {"CorvaneEnableAccessibilityFeatures", {true}},
                                                    {"CorvaneAutoSaveLayouts", {true}},
                                                    {"CorvaneShowWorkspaceClosedAlert", {false}}}}
                  .toBinary());
    writeFile(desktop.workspacesFile(), workspacesJson({{"Work", "", "star", resources}}));
    const TrayHost tray(desktop.busAddress());
    const auto process = desktop.startCorvane().pid();
    const auto areOpen = [&] { return desktop.windows().size() == 1 + std::size(programs); };
    const auto areGone = [&] {
        return std::ranges::all_of(
            programs, [&](const auto* program) { return desktop.processes(program).empty(); });
    };
    const int firstRounds = std::min(roundsToFillCaches, rounds / 2);
    expect(comesTrue([&] { return tray.arrivals() > 0; }, 30), "no status item");
    Holdings first;
    std::printf("%8s %12s %8s %10s %12s\n", "rounds", "memory KiB", "files", "children",
                "X resources");
    for (int round = 1; round <= rounds; ++round) {
        expect(tray.press("Work     ▶") && comesTrue(areOpen, 30),
               "a start opens not everything:\n" + tray.shownMenu() + desktop.log());
        expect(tray.press("Work     ⏹") && comesTrue(areGone, 30),
               "a finish leaves something:\n" + desktop.log());
        if (round != firstRounds && round != rounds && round % 100 != 0) continue;
        const auto held = holdings(desktop, process);
        std::printf("%8d %12ld %8ld %10ld %12ld\n", round, held.memoryInKiB, held.files,
                    held.children, held.displayResources);
        std::fflush(stdout);
        if (round == firstRounds) first = held;
        if (round < rounds) continue;
        expect(held.files <= first.files, "open files are left");
        expect(held.children <= first.children, "child processes are left");
        expect(held.displayResources <= first.displayResources, "X resources are left");
        expect(held.memoryInKiB <= first.memoryInKiB + allowedGrowthInKiB, "memory is left");
    }
}

} // namespace

int main(int argc, char** argv) {
    if (argc == 3) return printDisplayResources(unsigned(std::atoi(argv[2])));
    try {
        endure(argc > 1 ? std::atoi(argv[1]) : 1000);
        return 0;
    } catch (const std::exception& error) {
        std::fprintf(stderr, "%s\n", error.what());
        return 1;
    }
}
