#include "linux/windows/WindowSystems.h"
#include "linux/windows/toplevels/ToplevelWindowSystem.h"
#include "machine/Program.h"
#include "windows/ListingCompositor.h"
#include "windows/WindowSystemTest.h"

#include <array>

using namespace corvane;

/// What a compositor tells everybody of its windows. Sway does as well, and is one of those that
/// tell no more where its own socket isn't found.
namespace {

std::vector<SessionKind> listing() {
    std::vector<SessionKind> kinds{{"sway", [] { return startSession("sway"); }}};
    // Debian 12 has none.
    if (machine::runs("command -v labwc"))
        kinds.push_back({"labwc", [] { return startSession("labwc"); }});
    return kinds;
}

class ToplevelTest : public testing::TestWithParam<SessionKind> {
protected:
    WindowRef shown(const ClientWishes& wishes) {
        session_->show(wishes);
        EXPECT_TRUE(comesTrue([&] { return listed(system_, wishes.title).number > 0; }));
        return listed(system_, wishes.title);
    }
    static WindowRef listed(WindowSystem& system, const std::string& title) {
        const auto now = system.windows(soon());
        for (const auto& each : now.value_or(WindowsNow()).windows)
            if (each.title == title) return each.window;
        return {};
    }
    std::string all() { return describedWindows(system_); }
    std::string ask(std::vector<WindowRef> windows, Deadline by = soon()) {
        return answerText(system_.askToClose(windows, by));
    }

    /// Chosen while sway's socket isn't to be found.
    static std::unique_ptr<WindowSystem> chosen() {
        const std::string runtime = std::getenv("XDG_RUNTIME_DIR");
        const machine::ScopedVariable display("WAYLAND_DISPLAY",
                                              runtime + '/' + std::getenv("WAYLAND_DISPLAY"));
        const machine::ScopedVariable folder("XDG_RUNTIME_DIR", runtime + "/elsewhere");
        const machine::ScopedVariable socket("SWAYSOCK", "");
        auto system = windowSystemHere();
        system->windows(soon());
        return system;
    }

    const std::unique_ptr<WindowSession> session_ = GetParam().start();
    const std::unique_ptr<WindowSystem> here_ = chosen();
    WindowSystem& system_ = *here_;
};

INSTANTIATE_TEST_SUITE_P(On, ToplevelTest, testing::ValuesIn(listing()),
                         [](const auto& kind) { return kind.param.name; });

TEST_P(ToplevelTest, tellsWhatItCan) {
    comesToShow("", [this] { return all(); });
    const auto can = system_.abilities(soon());
    EXPECT_TRUE(can.desktop.ends_with(" (Wayland)")) << can.desktop;
    EXPECT_FALSE(can.placesWindows || can.tellsProcesses || can.whatToDoFirst.empty());
    EXPECT_FALSE(system_.isReady(soon()));
    EXPECT_FALSE(system_.monitors(soon()));
    const auto one = shown({.title = "one"});
    shown({.title = "tw\xc3\xb6"});
    comesToShow("one; tw\xc3\xb6 active", [this] { return all(); });
    const auto now = system_.windows(soon()).value();
    EXPECT_FALSE(now.isReady || now.tellsProcesses || now.connected);
    EXPECT_EQ(now.windows[0].hints.applicationId, "window_client");
    // A busy X server doesn't tell in time that it isn't one of its windows.
    EXPECT_TRUE(comesTrue(
        [&] { return system_.window(one, soon()) == system_.windows(soon()).value().windows[0]; }));
    session_->act(listed(session_->system(), "one"), ByHand::fillScreen);
    comesToShow("tw\xc3\xb6; one fullscreen active", [this] { return all(); });
}

TEST_P(ToplevelTest, doesWhatItCan) {
    const auto one = shown({.title = "one"});
    shown({.title = "two"});
    const auto by = [] { return soon(); };
    comesToShow("one; two active", [this] { return all(); });
    EXPECT_EQ(answerText(system_.activate(one, by())), "done");
    const auto other = [this] { return describedWindows(session_->system()); };
    comesToShow("two; one active", other);
    for (const bool on : {true, true, false, false}) {
        EXPECT_EQ(answerText(system_.setFullscreen(one, on, by())), "done");
        comesToShow(on ? "two; one fullscreen active" : "two; one active", other);
    }
    // Sway maximizes nothing.
    if (GetParam().name != "sway") {
        for (const bool on : {true, false}) {
            EXPECT_EQ(answerText(system_.setMaximized(one, on, by())), "done");
            comesToShow(on ? "two; one maximized active" : "two; one active", other);
        }
    }
    EXPECT_EQ(answerText(system_.place(one, {PixelPoint{1, 2}}, by())), "refused");
    for (const auto& stranger : {WindowRef{one.number, 1}, WindowRef{one.number + 1000}}) {
        EXPECT_FALSE(system_.window(stranger, by()));
        EXPECT_EQ(answerText(system_.place(stranger, {PixelPoint{1, 2}}, by())), "gone");
        EXPECT_EQ(answerText(system_.setFullscreen(stranger, true, by())), "gone");
        EXPECT_EQ(answerText(system_.setMaximized(stranger, true, by())), "gone");
        EXPECT_EQ(answerText(system_.activate(stranger, by())), "gone");
    }
    EXPECT_EQ(other(), "two; one active");
}

TEST_P(ToplevelTest, asksToCloseWhatIsntCutOff) {
    const auto closing = shown({.title = "closing"});
    const auto ignoring = shown({.title = "ignoring", .atClose = AtClose::ignores});
    shown({.title = "bystander"});
    EXPECT_EQ(ask({}), "gone");
    // While the X server starts, nobody can tell what is its.
    comesToShow("done", [&] { return ask({ignoring, {closing.number, 1}, closing}); });
    comesToShow("ignoring; bystander active", [this] { return all(); });
    EXPECT_EQ(ask({closing}), "gone");
    const auto deaf = shown({.title = "deaf", .atClose = AtClose::takesNoRequest});
    EXPECT_EQ(ask({deaf}), "refused");
    comesToShow("ignoring; bystander; deaf unaskable active", [this] { return all(); });
    {
        const machine::ScopedVariable elsewhere("DISPLAY", ":99");
        const auto other = chosen();
        comesToShow("bystander unaskable; ignoring unaskable; deaf unaskable active",
                    [&] { return describedWindows(*other); });
        EXPECT_EQ(answerText(other->askToClose(std::array{ignoring}, soon())), "refused")
            << "which are X11's can't be told";
    }
}

TEST_P(ToplevelTest, waitsForNoOneAndIsFoundAgain) {
    const auto one = shown({.title = "one"});
    const auto process = session_->system().windows(halfASecondFromNow())->windows[0].window;
    session_->stop(Part::server, process);
    const auto start = Clock::now();
    EXPECT_FALSE(system_.windows(halfASecondFromNow()));
    EXPECT_EQ(answerText(system_.setFullscreen(one, true, halfASecondFromNow())), "unanswered");
    EXPECT_EQ(ask({one}, halfASecondFromNow()), "unanswered");
    EXPECT_LT(Clock::now() - start, std::chrono::milliseconds(2400));
    session_->goOn(Part::server, process);
    comesToShow("one active", [this] { return all(); });
    session_->end();
    EXPECT_TRUE(comesTrue([this] { return all() == "nothing told"; }));
    session_->startAgain();
    const auto two = shown({.title = "two"});
    EXPECT_GT(two.number, one.number);
    EXPECT_EQ(ask({one}), "gone");
    comesToShow("two active", [this] { return all(); });
}

TEST(ListingTest, knowsWhatIsOpenAndDoesNothingToIt) {
    ListingCompositor compositor({{"one", "org.example.One"}, {"two", "two"}});
    toplevels::ToplevelWindowSystem system(nullptr);
    EXPECT_TRUE(system.isHere(soon()));
    EXPECT_EQ(describedWindows(system), "one unaskable; two unaskable");
    const auto can = system.abilities(soon());
    EXPECT_FALSE(can.placesWindows || can.tellsProcesses || system.isReady(soon()));
    EXPECT_TRUE(can.whatToDoFirst.ends_with(
        "Corvane can start workspaces here, but not close windows, and not save or restore layouts."))
        << can.whatToDoFirst;
    const auto one = system.windows(soon())->windows[0];
    EXPECT_EQ(one.hints.applicationId, "org.example.One");
    const auto answers = [&] {
        return answerText(system.askToClose(std::array{one.window}, soon())) + ' ' +
               answerText(system.activate(one.window, soon())) + ' ' +
               answerText(system.setFullscreen(one.window, true, soon())) + ' ' +
               answerText(system.place(one.window, {PixelPoint{1, 2}}, soon()));
    };
    EXPECT_EQ(answers(), "refused refused refused refused");
    compositor.close("one");
    comesToShow("two unaskable", [&] { return describedWindows(system); });
    EXPECT_EQ(answers(), "gone gone gone gone");
}

} // namespace
