#include "Growth.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <stdexcept>

#include <xcb/res.h>

namespace corvane::endurance {
namespace {

constexpr long allowedGrowthInKiB = 4096;

Holdings holdings(const desktop::Desktop& desktop, pid_t process) {
    const auto folder = "/proc/" + std::to_string(process);
    Holdings held;
    std::ifstream status(folder + "/status");
    for (std::string line; std::getline(status, line);) {
        if (line.starts_with("VmRSS:")) held.memoryInKiB = std::atol(line.c_str() + 6);
    }
    held.files = std::distance(std::filesystem::directory_iterator(folder + "/fd"), {});
    held.children = long(desktop::descendants(process).size());
    held.displayResources =
        std::stol(desktop.run({"/proc/self/exe", "resources", std::to_string(process)}));
    return held;
}

} // namespace

Growth::Growth(desktop::Desktop& desktop, int rounds, int firstRounds, int step)
    : desktop_(desktop), rounds_(rounds), firstRounds_(std::min(firstRounds, rounds / 2)),
      step_(step) {
    std::printf("%8s %12s %8s %10s %12s\n", "rounds", "memory KiB", "files", "children",
                "X resources");
}

void Growth::after(int round) {
    if (round != firstRounds_ && round != rounds_ && round % step_ != 0) return;
    const auto held = holdings(desktop_, desktop_.corvane().pid());
    std::printf("%8d %12ld %8ld %10ld %12ld\n", round, held.memoryInKiB, held.files, held.children,
                held.displayResources);
    std::fflush(stdout);
    if (round == firstRounds_) first_ = held;
    if (round < rounds_) return;
    expect(held.files <= first_.files, "open files are left");
    expect(held.children <= first_.children, "child processes are left");
    expect(held.displayResources <= first_.displayResources, "X resources are left");
    expect(held.memoryInKiB <= first_.memoryInKiB + allowedGrowthInKiB, "memory is left");
}

void expect(bool isTrue, const std::string& what) {
    if (!isTrue) throw std::runtime_error(what);
}

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

} // namespace corvane::endurance
