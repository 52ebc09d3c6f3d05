#include "StoreOnDisk.h"
#include "core/StoreScene.h"
#include "machine/Machine.h"

#include <algorithm>
#include <csignal>
#include <filesystem>
#include <functional>
#include <optional>
#include <random>

#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

using namespace corvane;
using namespace corvane::machine;
namespace fs = std::filesystem;

namespace {

constexpr std::size_t edits = 300;
constexpr int kills = 300;

Uuid identifier(std::size_t number) {
    Uuid id;
    id.bytes[0] = static_cast<std::uint8_t>(number);
    id.bytes[1] = static_cast<std::uint8_t>(number >> 8);
    return id;
}

Workspace workspace(std::size_t number) {
    auto made = makeWorkspace("Workspace " + std::to_string(number), "", "folder", {});
    made.id = identifier(number);
    // Of very different sizes, so that a mixture of two files can't look whole.
    made.description = std::string(number * 7919 % 6'000, 'x');
    Resource resource;
    resource.id = identifier(number);
    made.resources.push_back(resource);
    return made;
}

/// One of a row of edits, the same in every run.
void edit(WorkspaceStore& store, std::size_t number) {
    const Uuid id = identifier(number - number % 4);
    switch (number % 4) {
    case 0:
        return store.addWorkspace(workspace(number));
    case 1:
        return store.renameResource(id, "Renamed " + std::to_string(number), id);
    case 2:
        return store.addAssociatedApp(id, "App " + std::to_string(number), id);
    default:
        // Some stay, so that the file grows.
        if (number % 5 != 0)
            store.deleteWorkspace(id);
        else
            store.removeResource(id, id);
    }
}

/// Stands for a content: all of them would make the process too big to fork fast.
std::size_t digest(const std::string& content) {
    return std::hash<std::string>()(content);
}

std::string firstContent() {
    return encodeWorkspaces({workspace(edits)});
}

/// What the file holds after each edit.
std::vector<std::size_t> digestsOfAllStates() {
    StoreScene scene;
    auto& store = scene.start({workspace(edits)});
    std::vector<std::size_t> states{digest(firstContent())};
    for (std::size_t number = 0; number < edits; ++number) {
        edit(store, number);
        states.push_back(digest(encodeWorkspaces(store.workspaces)));
    }
    return states;
}

/// Makes one edit after the other, and reports how many are done before each.
[[noreturn]] void editUntilKilled(std::size_t done, int report) {
    StoreOnDisk disk;
    for (;;) {
        if (write(report, &done, sizeof done) != sizeof done) _exit(1);
        if (done < edits)
            edit(disk.store, done++);
        else
            pause();
    }
}

/// What another program does after an edit began, and how many more may begin then.
struct Meanwhile {
    std::function<void()> act;
    int edits;
};

/// The last report of a process that is killed some time after one of its first edits began. How
/// many it makes so doesn't hang on what else the machine does.
std::size_t editAndKill(std::size_t from, int edit, useconds_t after,
                        const std::optional<Meanwhile>& meanwhile = {}) {
    int ends[2];
    EXPECT_EQ(pipe(ends), 0);
    const pid_t child = fork();
    if (child == 0) editUntilKilled(from, ends[1]);
    close(ends[1]);
    std::size_t last = 0;
    const auto await = [&](int reports) {
        for (int i = 0; i < reports; ++i)
            EXPECT_EQ(read(ends[0], &last, sizeof last), static_cast<ssize_t>(sizeof last));
    };
    await(edit + 1);
    if (meanwhile) {
        meanwhile->act();
        await(meanwhile->edits);
    }
    usleep(after);
    EXPECT_EQ(kill(child, SIGKILL), 0);
    int status = 0;
    EXPECT_EQ(waitpid(child, &status, 0), child);
    EXPECT_TRUE(WIFSIGNALED(status) && WTERMSIG(status) == SIGKILL) << status;
    while (read(ends[0], &last, sizeof last) > 0) {
    }
    close(ends[0]);
    return last;
}

class KilledStore : public testing::Test {
protected:
    void TearDown() override { fs::remove_all(folder); }

    const std::string folder = place("killed");
    const ScopedVariable variable{"XDG_DATA_HOME", folder};
    const std::string file = folder + "/Corvane/corvane_workspaces.json";
    const std::vector<std::size_t> states = digestsOfAllStates();
    std::mt19937 random{static_cast<unsigned>(testing::UnitTest::GetInstance()->random_seed())};
    std::uniform_int_distribution<int> edit{0, 2};
    std::uniform_int_distribution<useconds_t> moment{0, 10'000};
};

TEST_F(KilledStore, leavesTheFileOfItsLastEditOrOfTheOneUnderWay) {
    std::size_t state = edits;
    std::size_t editsMade = 0;
    for (int round = 0; round < kills; ++round) {
        if (state + 50 > edits) {
            fs::remove_all(folder);
            machine::write(file, firstContent());
            state = 0;
        }
        const auto last = editAndKill(state, edit(random), moment(random));
        const auto found = digest(machine::read(file));
        const auto now = found == states[last] ? last : last + 1;
        ASSERT_EQ(found, states.at(now)) << "killed during edit " << last;
        editsMade += now - state;
        state = now;
    }
    EXPECT_GT(editsMade, 50u) << "the kills came too soon to mean anything";
    for (const auto& name : namesIn(folder + "/Corvane")) {
        EXPECT_TRUE(name == "corvane_workspaces.json" || name == "Copies" ||
                    name.starts_with(".corvane"))
            << name;
    }
    RecordProperty("edits", static_cast<int>(editsMade));
}

/// Another program puts its file in the place while edits are saved, shortly before the kill.
TEST_F(KilledStore, leavesAWholeFileAndTheOneOfAnotherProgram) {
    std::size_t filesKept = 0;
    for (int round = 0; round < 60; ++round) {
        fs::remove_all(folder);
        machine::write(file, firstContent());
        const auto theirs = "theirs " + std::to_string(round);
        machine::write(folder + "/new", theirs);
        const auto change = [&] {
            usleep(moment(random));
            fs::rename(folder + "/new", file);
        };
        editAndKill(0, edit(random), moment(random), Meanwhile{change, edit(random)});
        std::size_t found = 0;
        for (const auto& name : namesIn(folder + "/Corvane"))
            found += machine::read(folder + "/Corvane/" + name) == theirs ? 1 : 0;
        ASSERT_GT(found, 0u) << "round " << round;
        const auto content = machine::read(file);
        ASSERT_TRUE(content == theirs || std::ranges::count(states, digest(content)) > 0) << round;
        filesKept += content == theirs ? 0 : 1;
    }
    EXPECT_GT(filesKept, 5u) << "the kills came too soon to mean anything";
}

} // namespace
