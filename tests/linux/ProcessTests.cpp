#include "Machine.h"
#include "linux/running/ApplicationOpener.h"
#include "linux/scripts/LinuxTaskRunner.h"
#include "linux/system/DetachedProcess.h"
#include "linux/system/LinuxBackgroundQueue.h"

#include <atomic>
#include <chrono>
#include <condition_variable>
#include <filesystem>
#include <mutex>

#include <fcntl.h>
#include <gtest/gtest.h>
#include <unistd.h>

using namespace corvane;
using namespace corvane::machine;

namespace {

TEST(DetachedProcess, livesOnItsOwn) {
    const std::string out = place("detached/out");
    std::filesystem::remove(out);
    const int leaked = ::open("/dev/zero", 0);
    const auto process =
        startDetached({"sh", "-c",
                       "{ set -- $(cat /proc/$$/stat); echo \"$$ session $6\"; ls -l /proc/$$/fd; "
                       "echo $GIO_LAUNCHED_DESKTOP_FILE $GIO_LAUNCHED_DESKTOP_FILE_PID; pwd; } > " +
                           out + ".part 2>&1; mv " + out + ".part " + out},
                      {.workingDirectory = place("detached"), .desktopFile = "/x/y.desktop"});
    ASSERT_TRUE(process) << process.error().localizedDescription;
    EXPECT_TRUE(comesTrue([&] { return std::filesystem::exists(out); }));
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
    write(place("detached/badInterpreter"), "#!/no/such/interpreter\n");
    std::filesystem::permissions(place("detached/badInterpreter"),
                                 std::filesystem::perms::owner_all);
    const std::vector<std::vector<std::string>> commands{
        {},
        {""},
        {"no-such-program"},
        {place("detached/plain")},
        {place("detached/badInterpreter")},
        {"sh", std::string("a\0b", 3)},
    };
    for (const auto& command : commands) {
        const auto process = startDetached(command);
        EXPECT_FALSE(process);
        EXPECT_FALSE(process.error().localizedDescription.empty());
    }
}

TEST(LinuxTaskRunner, runsItsOwnToolsAndNoProgram) {
    const InstalledApplications installed;
    const ApplicationOpener opener(installed, {});
    LinuxTaskRunner tasks(opener);
    for (const char* program : {"/bin/sh", "/no/such/program", ""})
        EXPECT_FALSE(tasks.run(program, {"-c", "exit 0"})) << program;
    EXPECT_EQ(tasks.run("/usr/bin/open", {"-a", "nobody"})->status, 1);
    EXPECT_EQ(tasks
                  .run("/usr/bin/mdfind",
                       {"kMDItemKind == 'Application' && kMDItemDisplayName == 'Viewer'"})
                  ->output,
              "/Applications/Viewer.app\n");
}

TEST(LinuxBackgroundQueue, runsPiecesAtTheSameTimeAndWaitsForThemAtItsEnd) {
    std::mutex mutex;
    std::condition_variable met;
    int inside = 0;
    std::atomic<int> done = 0;
    {
        LinuxBackgroundQueue queue;
        for (int i = 0; i < 4; ++i) {
            queue.async([&] {
                std::unique_lock lock(mutex);
                ++inside;
                met.notify_all();
                if (met.wait_for(lock, std::chrono::seconds(10), [&] { return inside == 4; })) {
                    ++done;
                }
            });
        }
    }
    EXPECT_EQ(done, 4);
}

} // namespace
