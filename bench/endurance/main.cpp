// Does what people do all day with one process of Corvane, again and again, and looks at what that
// process holds. Fails where it holds more at the end than after the first rounds.

#include "Growth.h"
#include "desktop/harness/Scene.h"
#include "desktop/harness/TrayHost.h"
#include "foundation/PropertyList.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <exception>
#include <map>

using namespace corvane;
using namespace corvane::desktop;
using endurance::expect;

namespace {

/// Starts and finishes a workspace of five programs, with layouts saved at each finish.
void startAndFinish(int rounds) {
    constexpr const char* programs[]{"xclock", "xcalc", "xlogo", "xeyes", "xload"};
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
    desktop.startCorvane();
    const auto areOpen = [&] { return desktop.windows().size() == 1 + std::size(programs); };
    const auto areGone = [&] {
        return std::ranges::all_of(
            programs, [&](const auto* program) { return desktop.processes(program).empty(); });
    };
    expect(comesTrue([&] { return tray.arrivals() > 0; }, 30), "no status item");
    endurance::Growth growth(desktop, rounds, 50, 100);
    for (int round = 1; round <= rounds; ++round) {
        expect(tray.press("Work     ▶") && comesTrue(areOpen, 30),
               "a start opens not everything:\n" + tray.shownMenu() + desktop.log());
        expect(tray.press("Work     ⏹") && comesTrue(areGone, 30),
               "a finish leaves something:\n" + desktop.log());
        growth.after(round);
    }
}

/// Searches for a workspace, opens its resources, drags one, removes one and takes that back.
void searchAndArrange(int rounds) {
    constexpr int workspaces = 200;
    Desktop desktop;
    desktop.skipIntroduction();
    std::vector<SceneWorkspace> all;
    for (int i = 0; i < workspaces; ++i) {
        const auto name = std::to_string(1000 + i);
        all.push_back({"Task " + name, "", "star", {}});
        for (const std::string letter : {"A", "B", "C", "D"})
            all.back().resources.push_back(
                {letter + name, "url", "https://example.org/" + letter + name});
    }
    writeFile(desktop.workspacesFile(), workspacesJson(all));
    desktop.startCorvane();
    const bool hasHands = desktop.screen().hasHands();
    const auto key = [&](const std::string& keys) { desktop.run({"xdotool", "key", keys}); };
    // Without a keyboard and a pointer as assistive programs do it.
    const auto search = [&](const std::string& text) {
        if (!hasHands) return desktop.write(text);
        key("ctrl+f");
        if (text.empty()) key("Escape");
        desktop.run({"xdotool", "type", text});
        return true;
    };
    const auto move = [&](const std::string& resource, const std::string& place) {
        if (!hasHands) return desktop.act("Increase", "Move", resource);
        const auto from = desktop.middleOf("Move", resource), to = desktop.middleOf("Move", place);
        if (from && to) desktop.drag(*from, *to);
        return from && to;
    };
    // The letters of a workspace's resources in the order of the file.
    const auto stored = [&](const std::string& name) {
        const auto file = readFile(desktop.workspacesFile());
        std::map<std::size_t, char> found;
        for (const char letter : {'A', 'B', 'C', 'D'})
            if (const auto at = file.find('"' + (letter + name) + '"'); at != std::string::npos)
                found[at] = letter;
        std::string order;
        for (const auto& [at, letter] : found)
            order += letter;
        return order;
    };
    expect(comesTrue([&] { return desktop.shows("Task 1000"); }, 30),
           "no window:\n" + desktop.log());
    if (hasHands) desktop.run({"wmctrl", "-F", "-a", "Corvane"});
    endurance::Growth growth(desktop, rounds, 40, 50);
    for (int round = 1; round <= rounds; ++round) {
        const auto name = std::to_string(1000 + round * 37 % workspaces);
        const auto does = [&](bool isTrue, const std::string& what) {
            expect(isTrue, what + " in round " + std::to_string(round) + " with " + name + ": " +
                               stored(name) + "\n" + desktop.log());
        };
        does(search(name), "nothing can be written");
        does(desktop.act("Press", "Resources", "Task " + name), "nothing is found");
        const auto before = stored(name);
        const std::string first = before.substr(0, 1) + name, third = before.substr(2, 1) + name;
        does(move(first, third), "nothing opens");
        does(comesTrue([&] { return stored(name) != before; }), "a drag moves nothing");
        const auto arranged = stored(name);
        does(desktop.act("Press", "Remove", first) &&
                 comesTrue([&] { return stored(name).size() == 3; }),
             "nothing is removed");
        does(desktop.act("Press", "Undo") && comesTrue([&] { return stored(name) == arranged; }),
             "nothing comes back");
        does(desktop.act("Press", "Resources", "Task " + name), "nothing closes");
        search("");
        does(comesTrue([&] { return desktop.shows("Task 1001"); }), "the search stays");
        growth.after(round);
    }
}

} // namespace

int main(int argc, char** argv) {
    const std::string what = argc > 1 ? argv[1] : "";
    const int number = argc > 2 ? std::atoi(argv[2]) : 0;
    if (what == "resources") return endurance::printDisplayResources(unsigned(number));
    try {
        if (what == "starts" && number > 0)
            startAndFinish(number);
        else if (what == "hands" && number > 0)
            searchAndArrange(number);
        else
            throw std::runtime_error("usage: endurance starts|hands ROUNDS");
        return 0;
    } catch (const std::exception& error) {
        std::fprintf(stderr, "%s\n", error.what());
        return 1;
    }
}
