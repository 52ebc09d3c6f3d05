#include "linux/running/ApplicationOpener.h"
#include "linux/scripts/LinuxTaskRunner.h"
#include "linux/system/DetachedProcess.h"
#include "linux/system/LinuxBackgroundQueue.h"
#include "linux/system/LinuxDiskQueue.h"
#include "linux/system/ProcessFacts.h"
#include "machine/Program.h"

#include <atomic>
#include <csignal>
#include <future>
#include <latch>

#include <fcntl.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

using namespace corvane;
using namespace corvane::machine;

namespace {

TEST(DetachedProcess, livesOnItsOwn) {
    const std::string out = place("detached/out");
    fs::remove(out);
    const int leaked = ::open("/dev/zero", 0);
    const auto process =
        startDetached({"sh", "-c",
                       "{ set -- $(cat /proc/$$/stat); echo \"$$ session $6\"; ls -l /proc/$$/fd; "
                       "echo $GIO_LAUNCHED_DESKTOP_FILE $GIO_LAUNCHED_DESKTOP_FILE_PID; pwd; } > " +
                           out + ".part 2>&1; mv " + out + ".part " + out},
                      {.workingDirectory = place("detached"), .desktopFile = "/x/y.desktop"});
    ASSERT_TRUE(process) << process.error().localizedDescription;
    EXPECT_TRUE(comesTrue([&] { return fs::exists(out); }));
    const auto seen = read(out);
    ::close(leaked);
    const auto pid = std::to_string(*process);
    EXPECT_TRUE(seen.starts_with(pid + " session " + pid + "\n")) << seen;
    EXPECT_NE(seen.find("/x/y.desktop " + pid + "\n"), std::string::npos) << seen;
    EXPECT_TRUE(seen.ends_with(place("detached") + "\n")) << seen;
    EXPECT_EQ(seen.find("/dev/zero"), std::string::npos) << seen;
    EXPECT_NE(seen.find("0 -> /dev/null"), std::string::npos) << seen;
}

TEST(DetachedProcess, tellsWhyAProgramDoesNotStart) {
    write(place("detached/plain"), "text");
    write(makeProgram("detached/badInterpreter", ""), "#!/no/such/interpreter\n");
    const std::vector<std::vector<std::string>> commands{{},
                                                         {""},
                                                         {"no-such-program"},
                                                         {place("detached/plain")},
                                                         {place("detached/badInterpreter")},
                                                         {"sh", std::string("a\0b", 3)}};
    for (const auto& command : commands) {
        const auto process = startDetached(command);
        EXPECT_FALSE(process || process.error().localizedDescription.empty());
    }
}

TEST(ProcessFactsTest, aScriptIsItsOwnProgram) {
    write(place("bin/odd) name"), "kill -STOP $$\n");
    const Program script({"/bin/bash", "--norc", place("bin/odd) name"), "argument"});
    ASSERT_TRUE(comesTrue([&] {
        const auto process = processFacts(script.id());
        return process && process->commandName == "odd) name";
    }));
    const auto process = processFacts(script.id());
    EXPECT_EQ(process->executable, place("bin/odd) name"));
    EXPECT_GE(process->startTime, processFacts(getpid())->startTime);
    EXPECT_FALSE(processFacts(0) || processFacts(-1) || processFacts(1 << 30));
}

/// What stands in a process's own root is that process's to choose.
TEST(ProcessFactsTest, aStrangersFileHoldsNobodyUp) {
    const auto jail = place("jail/x").substr(0, place("jail").size());
    const auto info = jail + "/.flatpak-info";
    int ends[2];
    ASSERT_EQ(::pipe2(ends, O_CLOEXEC), 0);
    const pid_t child = ::fork();
    if (child == 0) {
        const bool isIn = ::chroot(jail.c_str()) == 0;
        [[maybe_unused]] const auto told = ::write(ends[1], &isIn, 1);
        ::pause();
        ::_exit(0);
    }
    bool isIn = false;
    ASSERT_EQ(::read(ends[0], &isIn, 1), 1);
    const auto sandbox = [&](auto&& make) {
        fs::remove(info);
        make();
        const auto facts = processFacts(child);
        return facts ? facts->sandboxIdentifier : "no process";
    };
    if (isIn) {
        EXPECT_EQ(sandbox([&] { write(info, "[Application]\nname=org.x\n"); }), "org.x");
        EXPECT_EQ(sandbox([&] { ::mkfifo(info.c_str(), 0600); }), "");
        EXPECT_EQ(sandbox([&] { fs::create_symlink("/dev/zero", info); }), "");
        EXPECT_EQ(sandbox([&] { fs::create_symlink(".flatpak-info", info); }), "");
        EXPECT_EQ(sandbox([&] { write(info, std::string(1 << 20, '\n') + "name=org.x\n"); }), "");
    }
    ::kill(child, SIGKILL);
    ::waitpid(child, nullptr, 0);
    EXPECT_FALSE(processFacts(child));
    for (const int end : ends)
        ::close(end);
    if (!isIn) GTEST_SKIP() << "this user may not give a process a root of its own";
}

TEST(LinuxTaskRunner, runsItsOwnToolsAndNoProgram) {
    const InstalledApplications installed;
    const ApplicationOpener opener(installed, {});
    LinuxTaskRunner tasks(opener);
    for (const char* program : {"/bin/sh", "/no/such/program", ""})
        EXPECT_FALSE(tasks.run(program, {"-c", "exit 0"})) << program;
    EXPECT_EQ(tasks.run("/usr/bin/open", {"-a", "Viewer"})->status, 0);
    EXPECT_EQ(tasks.run("/usr/bin/mdfind", {"-a", "Viewer"})->status, 1);
}

TEST(LinuxDiskQueue, waitsForNoneLongAndHasDoneAllInOrderAtItsEnd) {
    std::promise<void> slow;
    const auto over = slow.get_future().share();
    std::string done;
    {
        LinuxDiskQueue queue;
        EXPECT_TRUE(queue.run([&] { done += 'a'; }));
        EXPECT_FALSE(queue.run([&] { over.wait(); }));
        for (const char name : {'b', 'c'})
            EXPECT_FALSE(queue.run([&, name] { done += name; }));
        EXPECT_EQ(done, "a");
        slow.set_value();
    }
    EXPECT_EQ(done, "abc");
}

TEST(LinuxBackgroundQueue, runsPiecesAtTheSameTimeAndWaitsForThemAtItsEnd) {
    std::latch met(4);
    std::atomic<int> done = 0;
    {
        LinuxBackgroundQueue queue;
        for (int i = 0; i < 4; ++i)
            queue.async([&] {
                met.count_down();
                if (comesTrue([&] { return met.try_wait(); })) ++done;
            });
    }
    EXPECT_EQ(done, 4);
}

} // namespace
