#include "StoreOnDisk.h"
#include "machine/Machine.h"

#include <csignal>
#include <random>

#include <sys/wait.h>
#include <unistd.h>

using namespace corvane;
using namespace corvane::machine;

namespace {

/// What one edit after the other makes of the only workspace: of very different sizes, so that a
/// mixture of two files can't look whole.
Workspace afterEdits(std::size_t number) {
    auto made = makeWorkspace(std::to_string(number), "", "folder", {});
    made.id = {};
    made.description = std::string(number * 7919 % 60'000, 'x');
    return made;
}

std::string contentAfter(std::size_t number) {
    return encodeWorkspaces({afterEdits(number)});
}

[[noreturn]] void editUntilKilled(std::size_t done, int report) {
    StoreOnDisk disk;
    for (;; disk.store.updateWorkspace(afterEdits(++done)))
        if (write(report, &done, sizeof done) != sizeof done) _exit(1);
}

struct KilledStore : testing::Test {
    void TearDown() override { fs::remove_all(folder); }

    /// The number of edits that a process has reported when it is killed. Others' deeds come after
    /// some of its first ones, so that how many there are doesn't hang on the machine.
    std::size_t editAndKill(std::size_t from, const std::function<void()>& meanwhile = [] {}) {
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
        await(1 + some(random));
        meanwhile();
        await(some(random));
        usleep(moment(random));
        EXPECT_EQ(kill(child, SIGKILL), 0);
        int status = 0;
        EXPECT_EQ(waitpid(child, &status, 0), child);
        EXPECT_TRUE(WIFSIGNALED(status) && WTERMSIG(status) == SIGKILL) << status;
        while (read(ends[0], &last, sizeof last) > 0) {
        }
        close(ends[0]);
        return last;
    }

    const std::string folder = place("killed");
    const ScopedVariable variable{"XDG_DATA_HOME", folder};
    const std::string file = folder + "/Corvane/corvane_workspaces.json";
    std::mt19937 random{static_cast<unsigned>(testing::UnitTest::GetInstance()->random_seed())};
    std::uniform_int_distribution<int> some{0, 2};
    std::uniform_int_distribution<useconds_t> moment{0, 10'000};
};

TEST_F(KilledStore, leavesTheFileOfItsLastEditOrOfTheOneUnderWay) {
    std::size_t edits = 0;
    machine::write(file, contentAfter(edits));
    for (int round = 0; round < 300; ++round) {
        const auto last = editAndKill(edits);
        const auto found = machine::read(file);
        edits = found == contentAfter(last) ? last : last + 1;
        ASSERT_TRUE(found == contentAfter(edits)) << "killed during edit " << last;
    }
    EXPECT_GT(edits, 50u) << "the kills came too soon to mean anything";
    for (const auto& name : namesIn(folder + "/Corvane"))
        EXPECT_TRUE(name == "corvane_workspaces.json" || name == "Copies" ||
                    name.starts_with(".corvane"))
            << name;
}

TEST_F(KilledStore, leavesAWholeFileAndTheOneOfAnotherProgram) {
    std::size_t filesKept = 0;
    for (int round = 0; round < 60; ++round) {
        fs::remove_all(folder);
        machine::write(file, contentAfter(0));
        const auto theirs = "theirs " + std::to_string(round);
        machine::write(folder + "/new", theirs);
        const auto last = editAndKill(0, [&] {
            usleep(moment(random));
            fs::rename(folder + "/new", file);
        });
        const auto isTheirs = [&](const std::string& name) {
            return machine::read(folder + "/Corvane/" + name) == theirs;
        };
        ASSERT_TRUE(std::ranges::any_of(namesIn(folder + "/Corvane"), isTheirs)) << round;
        const auto content = machine::read(file);
        if (content == theirs) continue;
        ASSERT_TRUE(content == contentAfter(last) || content == contentAfter(last + 1)) << round;
        ++filesKept;
    }
    EXPECT_GT(filesKept, 5u) << "the kills came too soon to mean anything";
}

} // namespace
