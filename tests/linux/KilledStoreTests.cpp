#include "StoreOnDisk.h"
#include "core/StoreScene.h"
#include "machine/Machine.h"

#include <csignal>
#include <random>

#include <sys/wait.h>
#include <unistd.h>

using namespace corvane;
using namespace corvane::machine;

namespace {

constexpr std::size_t edits = 300;

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

void edit(WorkspaceStore& store, std::size_t number) {
    const Uuid id = identifier(number - number % 4);
    const auto name = std::to_string(number);
    if (number % 4 == 0) return store.addWorkspace(workspace(number));
    if (number % 4 == 1) return store.renameResource(id, name, id);
    if (number % 4 == 2) return store.addAssociatedApp(id, name, id);
    // Some stay, so that the file grows.
    number % 5 != 0 ? store.deleteWorkspace(id) : store.removeResource(id, id);
}

/// Stands for a content: all of them would make the process too big to fork fast.
constexpr std::hash<std::string> digest{};

std::string firstContent() {
    return encodeWorkspaces({workspace(edits)});
}

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

[[noreturn]] void editUntilKilled(std::size_t done, int report) {
    StoreOnDisk disk;
    for (;; edit(disk.store, done++)) {
        if (write(report, &done, sizeof done) != sizeof done) _exit(1);
        if (done == edits) pause();
    }
}

/// The last report of a process that is killed some time after one of its first edits, and of more
/// behind what another program does, began. So their number doesn't hang on the machine.
std::size_t editAndKill(
    std::size_t from, int edit, useconds_t after, const std::function<void()>& meanwhile = [] {},
    int more = 0) {
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
    meanwhile();
    await(more);
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

struct KilledStore : testing::Test {
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
    for (int round = 0; round < 300; ++round) {
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
    for (const auto& name : namesIn(folder + "/Corvane"))
        EXPECT_TRUE(name == "corvane_workspaces.json" || name == "Copies" ||
                    name.starts_with(".corvane"))
            << name;
}

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
        editAndKill(0, edit(random), moment(random), change, edit(random));
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
