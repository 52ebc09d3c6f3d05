#include "Display.h"
#include "linux/system/ProcessFacts.h"

#include <chrono>

using namespace corvane;
using namespace corvane::machine;

namespace {

struct QuittingTest : DisplayTest {
    RunningApplication listed(pid_t process) {
        std::vector<RunningApplication> found;
        EXPECT_TRUE(comesTrue([&] {
            found = running_.list();
            std::erase_if(found, [&](const auto& it) { return it.processIdentifier != process; });
            return !found.empty();
        })) << process;
        return found.empty() ? RunningApplication() : found.front();
    }
    /// Whether it is neither asked nor ended by force, though both are wanted.
    bool isSpared(const RunningApplication& application) {
        const bool asked = quitting_.terminate(application);
        return !quitting_.forceTerminate(application) && !asked;
    }
};

/// It takes its reaction, and the type of its second window if it shall have one.
Program client(const auto&... words) {
    return Program({TEST_CLIENT, words...});
}

TEST_F(QuittingTest, eachProcessIsAskedInItsOwnWay) {
    auto closing = client("close");
    auto ignoring = client("ignore");
    auto hiding = client("hide");
    auto bystander = client("close");
    ASSERT_TRUE(windowsBecome(8));
    const auto [c, i, h] =
        std::tuple(listed(closing.id()), listed(ignoring.id()), listed(hiding.id()));
    EXPECT_EQ(c.activationPolicy, 0);
    for (const auto& application : {c, i, h})
        EXPECT_TRUE(quitting_.terminate(application));
    EXPECT_TRUE(closing.ends());
    EXPECT_TRUE(windowsBecome(4)) << "one ignores it, one wasn't asked";
    EXPECT_TRUE(isSpared(c)) << "it isn't there any more";

    EXPECT_TRUE(quitting_.terminate(h)) << "it is on its way";
    EXPECT_FALSE(quitting_.forceTerminate(h)) << "it may be saving still";
    EXPECT_TRUE(hiding.isRunning() && quitting_.forceTerminate(i) && ignoring.ends());
    EXPECT_TRUE(bystander.isRunning());
}

TEST_F(QuittingTest, aProcessThatIsntTheListedOneAndTheSessionStay) {
    auto process = client("close");
    Program unconnected({"sleep", "60"});
    probe_->show(probe_->make());
    ASSERT_TRUE(windowsBecome(3));
    const auto listedOne = listed(process.id());
    auto later = listedOne;
    ++later.startTime;
    auto unknown = listedOne;
    unknown.startTime = 0;
    std::vector<RunningApplication> staying{later, unknown, {}};
    for (const pid_t id : {unconnected.id(), getpid(), manager_->id(), server_->id()})
        staying.push_back({.processIdentifier = id, .startTime = *startTimeOf(id)});
    for (const auto& application : staying)
        EXPECT_TRUE(isSpared(application)) << application.processIdentifier;
    EXPECT_FALSE(sendSignal(process.id(), later.startTime, SIGKILL) || sendSignal(-1, 0, SIGKILL));
    EXPECT_TRUE(process.isRunning() && unconnected.isRunning());
    EXPECT_TRUE(manager_->isRunning() && server_->isRunning());
    EXPECT_EQ(probe_->managed().size(), 3u);

    kill(process.id(), SIGKILL);
    ASSERT_TRUE(windowsBecome(1));
    EXPECT_TRUE(startTimeOf(process.id())) << "it has ended, but nobody has taken note";
    EXPECT_TRUE(isSpared(listedOne));
}

/// A window manager can have windows like anyone's, and one that has gone leaves its word behind.
TEST_F(QuittingTest, theWindowManagerIsNoApplication) {
    manager_.reset();
    const auto window = probe_->make();
    const auto check = probe_->make();
    probe_->set(probe_->root(), "_NET_CLIENT_LIST", window);
    probe_->set(probe_->root(), "_NET_CLIENT_LIST_STACKING", window);
    probe_->set(probe_->root(), "_NET_SUPPORTING_WM_CHECK", check);
    probe_->show(window);
    EXPECT_TRUE(comesTrue([&] { return running_.list().at(0).activationPolicy == 0; }));
    probe_->set(check, "_NET_SUPPORTING_WM_CHECK", check);
    probe_->show(window);
    EXPECT_TRUE(comesTrue([&] { return running_.list().at(0).activationPolicy == 1; }));
}

TEST_F(QuittingTest, whatAClientSaysOfItselfMisleadsNoOne) {
    auto victim = client("close");
    ASSERT_TRUE(windowsBecome(2));
    const auto liar = probe_->make();
    probe_->set(liar, "_NET_WM_PID", static_cast<std::uint32_t>(victim.id()));
    char machine[256] = {};
    gethostname(machine, sizeof machine - 1);
    probe_->set(liar, "WM_CLIENT_MACHINE", machine);
    probe_->set(liar, "WM_CLASS", std::string("\xff\0\xfe", 3));
    probe_->show(liar);
    ASSERT_TRUE(windowsBecome(3));
    EXPECT_TRUE(quitting_.terminate(listed(victim.id())) && victim.ends() && windowsBecome(1));
}

TEST_F(QuittingTest, withoutAWindowManagerTheClientIsAskedItself) {
    auto process = client("close");
    ASSERT_TRUE(windowsBecome(2));
    const auto application = listed(process.id());
    manager_.reset();
    EXPECT_TRUE(quitting_.terminate(application) && process.ends());
}

TEST_F(QuittingTest, nothingIsWaitedForLong) {
    using Clock = std::chrono::steady_clock;
    auto process = client("close");
    ASSERT_TRUE(windowsBecome(2));
    const auto application = listed(process.id());
    kill(process.id(), SIGSTOP);
    kill(server_->id(), SIGSTOP);
    auto start = Clock::now();
    for (int i = 0; i < 5; ++i)
        EXPECT_TRUE(isSpared(application)) << "who is who can't be told";
    EXPECT_LT(Clock::now() - start, std::chrono::seconds(1)) << "one wait for all";
    start = Clock::now();
    x11::X11WindowSystem fresh;
    EXPECT_FALSE(fresh.isReady(halfASecondFromNow()));
    EXPECT_LT(Clock::now() - start, std::chrono::seconds(1));
    kill(server_->id(), SIGCONT);
    ASSERT_TRUE(comesTrue([&] { return !running_.list().empty(); }));
    EXPECT_TRUE(comesTrue([&] { return fresh.isReady(halfASecondFromNow()); }));
    EXPECT_FALSE(quitting_.forceTerminate(application)) << "it was never asked";
    EXPECT_TRUE(comesTrue([&] { return quitting_.terminate(application); }));
    EXPECT_TRUE(quitting_.forceTerminate(application)) << "it was, and stays";
    EXPECT_TRUE(process.ends());
}

} // namespace
