#include "bus/DesktopServices.h"
#include "linux/session/LinuxUserNotifications.h"
#include "linux/session/SessionEnd.h"
#include "linux/session/SingleInstance.h"
#include "linux/session/SystemAppearance.h"
#include "linux/system/EventThread.h"
#include "machine/Machine.h"
#include "simulated/SimulatedQueue.h"

#include <atomic>
#include <chrono>
#include <csignal>
#include <future>
#include <optional>

namespace corvane::machine {
namespace {

struct Session : testing::Test {
    std::string address() const { return bus_.address(); }
    const TestBus bus_;
};

struct Asked {
    std::optional<SystemAppearance> appearance;
    EventThread events;
    SystemAppearance& itself = appearance.emplace(events);
};

TEST_F(Session, thePortalTellsWhetherTheUserPrefersDark) {
    const std::pair<const char*, std::optional<bool>> cases[]{
        {"(<<uint32 1>>,)", true}, {"(<<uint32 2>>,)", false}, {"(<uint32 1>,)", true},
        {"(<<uint32 0>>,)", {}},   {"(<<uint32 9>>,)", {}},    {"(<'dark'>,)", {}}};
    for (const auto& [answer, isDark] : cases) {
        const auto service = settingsPortal(address(), answer);
        EXPECT_EQ(Asked().itself.isDark(), isDark) << answer;
        EXPECT_EQ(service.calls(),
                  std::vector<std::string>{"Read ('org.freedesktop.appearance', 'color-scheme')"});
    }
}

TEST_F(Session, aPortalThatIsLateOrAbsentHoldsNobodyUp) {
    EXPECT_EQ(Asked().itself.isDark(), std::nullopt);
    const auto service =
        settingsPortal(address(), "(<<uint32 2>>,)", std::chrono::milliseconds(300));
    const auto start = std::chrono::steady_clock::now();
    Asked asked;
    EXPECT_EQ(asked.itself.isDark(), std::nullopt);
    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::milliseconds(200));
    std::atomic<int> tellings = 0;
    const auto count = [&] { ++tellings; };
    asked.itself.whenTold(asked.events, count);
    EXPECT_TRUE(comesTrue([&] { return tellings == 1; }));
    EXPECT_EQ(asked.itself.isDark(), false);
    service.emit("SettingChanged",
                 g_variant_new_parsed("('org.freedesktop.appearance', 'contrast', <uint32 2>)"));
    service.emit(
        "SettingChanged",
        g_variant_new_parsed("('org.freedesktop.appearance', 'color-scheme', <uint32 1>)"));
    EXPECT_TRUE(comesTrue([&] { return asked.itself.isDark() == true; }));
    EXPECT_EQ(tellings, 1) << "it is told of the first alone";
    asked.itself.whenTold(asked.events, count);
    EXPECT_TRUE(comesTrue([&] { return tellings == 2; }));
}

TEST_F(Session, notificationsArriveInOrderAsTheServerReadsThem) {
    const auto* xml = "<interface name='org.freedesktop.Notifications'>"
                      "<method name='GetCapabilities'><arg type='as' direction='out'/></method>"
                      "<method name='Notify'><arg type='s' direction='in'/>"
                      "<arg type='u' direction='in'/><arg type='s' direction='in'/>"
                      "<arg type='s' direction='in'/><arg type='s' direction='in'/>"
                      "<arg type='as' direction='in'/><arg type='a{sv}' direction='in'/>"
                      "<arg type='i' direction='in'/><arg type='u' direction='out'/></method>"
                      "</interface>";
    SimulatedQueue queue;
    EventThread events;
    LinuxUserNotifications notifications(queue, events);
    notifications.add({"0", "Lost", "nobody shows it"});
    std::promise<void> nobodyAnswered;
    events.async([&] {
        events.call({"org.freedesktop.Notifications", "/", "a.b", "C"}, nullptr,
                    [&](GVariant*) { nobodyAnswered.set_value(); });
    });
    nobodyAnswered.get_future().wait();
    for (const bool readsMarkup : {false, true}) {
        const BusService server(address(), "org.freedesktop.Notifications",
                                {{"/org/freedesktop/Notifications", xml}},
                                [&](const BusService::Call& call) {
                                    if (call.method == "Notify") return g_variant_new("(u)", 1);
                                    return g_variant_new_parsed(
                                        readsMarkup ? "(['body', 'body-markup'],)" : "(['body'],)");
                                });
        for (const auto* title : {"First", "Second"})
            notifications.add({"1", title, "R&D <new>"});
        const auto shown = [&](const std::string& title, const std::string& body) {
            return "Notify ('Corvane', 0, 'app.corvane.Corvane', '" + title + "', '" + body +
                   "', [], {'desktop-entry': <'app.corvane.Corvane'>, 'suppress-sound': <true>}, "
                   "-1)";
        };
        const std::string body = readsMarkup ? "R&amp;D &lt;new&gt;" : "R&D <new>";
        std::vector<std::string> calls;
        EXPECT_TRUE(comesTrue([&] {
            calls = server.calls();
            std::erase(calls, "GetCapabilities ()");
            return calls.size() == 2;
        }));
        EXPECT_EQ(calls, (std::vector{shown("First", body), shown("Second", body)}));
    }
}

TEST_F(Session, theEndOfTheSessionAndSignalsAskForTheEnd) {
    const ScopedVariable startup("DESKTOP_AUTOSTART_ID", "10ab");
    const auto session = sessionManager(address());
    std::signal(SIGHUP, SIG_IGN);
    std::atomic<int> ends = 0, resumptions = 0;
    std::function<void()> ready;
    std::promise<void> asked;
    const auto startupId = SessionEnd::takeStartupId();
    std::optional<SessionEnd> end;
    EventThread events;
    EXPECT_EQ(std::getenv("DESKTOP_AUTOSTART_ID"), nullptr);
    end.emplace(events, startupId,
                SessionEnd::Calls{.prepare =
                                      [&](const std::function<void()>& given) {
                                          if (!std::exchange(ready, given)) asked.set_value();
                                      },
                                  .goOn = [&] { ++resumptions; },
                                  .terminate = [&] { ++ends; }});
    const std::vector<std::string> registered{"RegisterClient ('app.corvane.Corvane', '10ab')"};
    ASSERT_TRUE(comesTrue([&] { return session.calls() == registered; }));
    // Who has registered doesn't listen at once.
    auto question = asked.get_future();
    ASSERT_TRUE(comesTrue([&] {
        session.emit("QueryEndSession", g_variant_new("(u)", 0));
        return question.wait_for(std::chrono::milliseconds(50)) == std::future_status::ready;
    }));
    EXPECT_EQ(session.calls().size(), 1u) << "it isn't ready";
    ready();
    ASSERT_TRUE(comesTrue([&] { return session.calls().size() == 2; }));
    EXPECT_EQ(session.calls()[1], "EndSessionResponse (true, '')");
    EXPECT_EQ(resumptions, 0);
    session.emit("CancelEndSession", nullptr);
    EXPECT_TRUE(comesTrue([&] { return resumptions == 1; }));
    EXPECT_EQ(ends, 0);
    int expected = 0;
    const auto endsOnceMoreBy = [&](const auto& deed) {
        deed();
        ++expected;
        return comesTrue([&] { return ends == expected; });
    };
    for (const auto* signal : {"EndSession", "Stop"})
        EXPECT_TRUE(endsOnceMoreBy([&] { session.emit(signal, nullptr); })) << signal;
    raise(SIGHUP);
    for (const int signal : {SIGTERM, SIGINT, SIGTERM})
        EXPECT_TRUE(endsOnceMoreBy([&] { raise(signal); })) << signal;
    std::signal(SIGHUP, SIG_DFL);
}

TEST(SingleInstanceTest, oneIsFirstAndOthersBringItForward) {
    using Start = SingleInstance::Start;
    const auto folder = place("single/" + std::string(200, 'x') + "/new");
    std::atomic<int> rings = 0;
    std::optional<SingleInstance> first(folder);
    EXPECT_EQ(first->start(), Start::first);
    EXPECT_EQ(fs::status(folder).permissions(), fs::perms::owner_all);
    const auto begins = [&] {
        return std::async(std::launch::async, [&] { return SingleInstance(folder).start(); });
    };
    auto early = begins();
    {
        EventThread events;
        std::string handed;
        first->serve(events, [&](const std::string& token, const std::function<void()>& done) {
            ++rings;
            handed = token;
            done();
        });
        EXPECT_EQ(early.get(), Start::cameForward);
        EXPECT_EQ(begins().get(), Start::cameForward);
        EXPECT_EQ(rings, 2);
        const std::tuple<std::string, std::string, std::string> cases[]{
            {"", "", ""},
            {"panel-1_TIME7", "", "panel-1_TIME7"},
            {"panel-1_TIME7", "kwin-2", "kwin-2"},
            {"", "two words", ""},
            {"", std::string(257, 'x'), ""}};
        for (const auto& [startupId, token, expected] : cases) {
            const ScopedVariable one("DESKTOP_STARTUP_ID", startupId);
            const ScopedVariable other("XDG_ACTIVATION_TOKEN", token);
            EXPECT_EQ(begins().get(), Start::cameForward);
            EXPECT_EQ(handed, expected);
        }
    }
    auto waiting = begins();
    first.reset();
    EXPECT_EQ(waiting.get(), Start::first);
    write(folder + "/app.corvane.Corvane.socket", "left by a crash");
    EXPECT_EQ(SingleInstance(folder).start(), Start::first);
    EXPECT_EQ(SingleInstance("/proc/no such folder").start(), Start::first);
}

TEST(SingleInstanceTest, aStartOnAnotherDisplayLeavesTheFirstOneWhereItIs) {
    const auto folder = place("displays");
    std::optional<ScopedVariable> x11(std::in_place, "DISPLAY", ":7");
    std::optional<ScopedVariable> wayland(std::in_place, "WAYLAND_DISPLAY", "wayland-0");
    SingleInstance first(folder);
    const std::tuple<const char*, const char*, bool> cases[]{
        {":7", "wayland-0", false}, {":7.0", "", false},
        {":8", "wayland-0", false}, {"", "", false},
        {":8", "", true},           {":8", "wayland-1", true},
        {":70", "", true}};
    EventThread events;
    first.serve(events, [](const std::string&, const std::function<void()>& done) { done(); });
    for (const auto& [one, other, isElsewhere] : cases) {
        x11.emplace("DISPLAY", one);
        wayland.emplace("WAYLAND_DISPLAY", other);
        const auto start = SingleInstance(folder).start();
        EXPECT_EQ(start == SingleInstance::Start::isElsewhere, isElsewhere) << one << other;
    }
}

/// A folder whose lock can't be had is no reason to take the bell of whoever has it.
TEST(SingleInstanceTest, whatCannotBeLockedLeavesTheSocketAlone) {
    const auto folder = place("unlockable");
    const auto socket = folder + "/app.corvane.Corvane.socket";
    write(socket, "another's");
    fs::create_symlink("elsewhere", folder + "/app.corvane.Corvane.lock");
    EXPECT_EQ(SingleInstance(folder).start(), SingleInstance::Start::first);
    EXPECT_EQ(read(socket), "another's");
}

} // namespace
} // namespace corvane::machine
