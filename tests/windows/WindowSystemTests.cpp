#include "windows/WindowSystemTest.h"

#include <limits>

using namespace corvane;

namespace {

INSTANTIATE_TEST_SUITE_P(On, WindowSystemTest, testing::ValuesIn(sessionsOfThisMachine()),
                         [](const auto& kind) { return kind.param.name; });

TEST_P(WindowSystemTest, tellsWhatIsThere) {
    EXPECT_TRUE(system_.isReady(soon()));
    const auto can = system_.abilities(soon());
    EXPECT_TRUE(can.placesWindows && can.tellsProcesses) << can.whatToDoFirst;
    comesToShow("", [this] { return all(); });
    const auto one = shown({.title = "one"});
    const auto two = shown({.title = "tw\xc3\xb6 \"2\" $(x)\\", .dialog = "question"});
    // Which of the two a manager gives the keyboard depends on what it has heard first.
    const auto inOrder = [this] { return text::replacingAll(all(), " active", ""); };
    comesToShow("one; tw\xc3\xb6 \"2\" $(x)\\; question", inOrder);
    EXPECT_EQ(one.kind, WindowKind::ordinary);
    EXPECT_GT(two.window.number, one.window.number);
    waitUntilStill([this] {
        std::string frames;
        for (const auto& each : now().value_or(WindowsNow()).windows)
            frames += frameText(each.frame);
        return frames;
    });
    const auto windows = now().value();
    for (const auto& each : windows.windows) {
        EXPECT_EQ(session_->seen(each.window), frameText(each.frame)) << *each.title;
        EXPECT_FALSE(windows.session.contains(each.window.process));
        EXPECT_EQ(each.layer, WindowLayer::normal);
        if (windows.connected) {
            EXPECT_TRUE(windows.connected->contains(each.window.process));
        }
        EXPECT_EQ(system_.window(each.window, soon()), each);
    }
    if (session_->has(Feature::owners)) {
        EXPECT_EQ(windows.windows.back().owner, two.window.number);
        EXPECT_FALSE(one.owner);
    }
    if (session_->has(Feature::minimizing)) {
        EXPECT_TRUE(isDone(one, ByHand::minimize));
        comesToShow("one unseen minimized; tw\xc3\xb6 \"2\" $(x)\\; question", inOrder);
    }
}

TEST_P(WindowSystemTest, givesBackWhatAPersonChanged) {
    struct Kind {
        std::string name;
        ManagedWindow window;
    };
    std::vector<Kind> kinds{{"plain client", shown({.title = "client", .size = {400, 300}})}};
    for (const auto& [name, process] : session_->showOthers()) {
        kinds.push_back({name, listed([&, id = process](const ManagedWindow& window) {
                             return window.window.process == id;
                         })});
    }
    for (const auto& [name, window] : kinds) {
        waitUntilItStands(window.window);
        // Its own size, at a place where it is whole.
        const auto size = system_.window(window.window, soon())->frame.size;
        const PixelRect frame{{120, 90}, size};
        const auto wanted = frameText(frame);
        ASSERT_EQ(placed(window.window, frame), wanted) << name;
        for (const auto deed : deeds()) {
            if (!isDone(*system_.window(window.window, soon()), deed)) continue;
            SCOPED_TRACE(name + " after " + std::to_string(static_cast<int>(deed)));
            // One request does it, though a busy client comes late.
            system_.place(window.window, {frame.origin, frame.size}, soon());
            comesToShow(wanted, [&] { return frameOf(window.window); });
            if (deed == ByHand::minimize) system_.activate(window.window, soon());
            comesToShow(wanted, [&] { return session_->seen(window.window); });
        }
    }
}

TEST_P(WindowSystemTest, placesAsFarAsAWindowAllows) {
    const auto plain = shown({.title = "plain"}).window;
    waitUntilItStands(plain);
    EXPECT_EQ(placed(plain, {{400, 300}, {500, 350}}), "400,300 500x350");
    EXPECT_EQ(placed(plain, FrameWish{.origin = PixelPoint{211, 133}}), "211,133 500x350");
    EXPECT_EQ(placed(plain, FrameWish{.size = PixelSize{655, 477}}), "211,133 655x477");
    EXPECT_EQ(placed(plain, FrameWish{}), "211,133 655x477");
    if (session_->has(Feature::overTheEdge)) {
        EXPECT_EQ(placed(plain, {{-70, 600}, {655, 477}}), "-70,600 655x477");
    }
    const auto fractional = placed(plain, {{100, 100}, {655.4, 477}});
    EXPECT_TRUE(fractional.starts_with("100,100 655")) << fractional << ": moved all the same";
    if (session_->has(Feature::secondMonitor)) {
        session_->addSecondMonitor();
        ASSERT_TRUE(comesTrue([&] { return system_.monitors(soon())->size() == 2; }));
        EXPECT_EQ(placed(plain, {{1500, 100}, {655, 477}}), "1500,100 655x477");
        EXPECT_EQ(placed(plain, {{90, 80}, {655, 477}}), "90,80 655x477");
    }
    if (!session_->has(Feature::sizeLimits)) return;
    const auto limited =
        shown({.title = "limited", .size = {410, 340}, .least = {210, 180}, .step = {20, 40}});
    waitUntilItStands(limited.window);
    // What the decorations add to what the client asked for.
    const auto size = system_.window(limited.window, soon())->frame.size;
    const PixelSize extra{size.width - 410, size.height - 340};
    const auto client = [&](const PixelPoint& origin, double width, double height) {
        return PixelRect{origin, {width + extra.width, height + extra.height}};
    };
    EXPECT_EQ(placed(limited.window, client({50, 60}, 430, 380)),
              frameText(client({50, 60}, 430, 380)));
    if (session_->has(Feature::sizeSteps)) {
        EXPECT_EQ(placed(limited.window, client({51, 61}, 429, 379)),
                  frameText(client({51, 61}, 410, 340)));
    }
    EXPECT_EQ(placed(limited.window, client({90, 80}, 1, 1)),
              frameText(client({90, 80}, 210, 180)));
}

TEST_P(WindowSystemTest, fillsTheScreenAndComesBack) {
    const auto window = shown({.title = "one", .size = {400, 300}}).window;
    waitUntilItStands(window);
    ASSERT_EQ(placed(window, {{120, 90}, {420, 330}}), "120,90 420x330");
    const auto fill = [&](bool on) {
        EXPECT_EQ(answerText(system_.setFullscreen(window, on, soon())), "done");
        EXPECT_EQ(system_.window(window, soon())->isFullscreen, on);
    };
    // Where to is the manager's affair: with some clients it forgets its own decorations.
    const auto comesBack = [&] {
        EXPECT_TRUE(comesTrue([&] { return frameOf(window).ends_with(" 420x330"); }))
            << frameOf(window);
    };
    fill(false);
    for (int round = 0; round < 2; ++round) {
        fill(true);
        comesToShow("0,0 1440x900", [&] { return frameOf(window); });
        fill(true);
        EXPECT_EQ(placed(window, {{0, 0}, {1440, 900}}), "0,0 1440x900") << "it is there already";
        EXPECT_EQ(placed(window, {{10, 10}, {500, 400}}), "refused 0,0 1440x900");
        comesToShow("one fullscreen active", [this] { return all(); });
        fill(false);
        comesBack();
    }
    if (!session_->has(Feature::maximizing)) return;
    const PixelRect area = system_.monitors(soon())->front().workArea;
    for (const bool on : {true, true, false, false}) {
        EXPECT_EQ(answerText(system_.setMaximized(window, on, soon())), "done");
        EXPECT_EQ(system_.window(window, soon())->isMaximized, on);
        if (on) comesToShow(frameText(area), [&] { return frameOf(window); });
        if (!on) comesBack();
    }
}

TEST_P(WindowSystemTest, bringsToTheFrontFromEverywhere) {
    const auto one = shown({.title = "one"});
    shown({.title = "two"});
    comesToShow("one; two active", [this] { return all(); });
    const auto comesForward = [&] {
        EXPECT_EQ(answerText(system_.activate(one.window, soon())), "done");
        const bool isTop = session_->has(Feature::order);
        EXPECT_TRUE(comesTrue([&] {
            return isTop ? all().ends_with("one active") : all().starts_with("one active");
        })) << all();
    };
    comesForward();
    if (session_->has(Feature::minimizing)) {
        EXPECT_TRUE(isDone(one, ByHand::minimize));
        comesForward();
    }
    if (session_->has(Feature::workspaces)) {
        EXPECT_TRUE(isDone(one, ByHand::toOtherWorkspace));
        EXPECT_TRUE(comesTrue([&] { return all().find("one unseen") != std::string::npos; }));
        comesForward();
    }
}

TEST_P(WindowSystemTest, hasATiledWindowOnTheWorkspaceThatItIsTold) {
    const auto window = shown({.title = "one"}).window;
    const auto set = [&](const WindowRef& which, const std::string& name) {
        return answerText(system_.setTilingWorkspace(which, name, soon()));
    };
    EXPECT_EQ(set(window, "3: mail"), "refused") << "it isn't tiled";
    if (!session_->has(Feature::tiling)) return;
    const auto told = [&] {
        const auto now = system_.window(window, soon());
        return now ? (now->isTiled ? "tiled on " : "on ") + now->workspace : "gone";
    };
    session_->act(window, ByHand::tile);
    comesToShow("tiled on 1", told);
    for (const auto* name : {"nextcloud", "to do", "numbers", "3: m\xc3\xa4il"}) {
        EXPECT_EQ(set(window, name), "done");
        EXPECT_EQ(told(), std::string("tiled on ") + name);
    }
    EXPECT_EQ(set(window, "3: m\xc3\xa4il"), "done") << "it is there";
    for (const auto* name : {"next", "\"4\"", "4; exec touch x", "4, kill", "--help", " "})
        EXPECT_EQ(set(window, name), "refused") << name;
    EXPECT_EQ(told(), "tiled on 3: m\xc3\xa4il");
    EXPECT_EQ(set({window.number, window.process + 1}, "1"), "gone");
    EXPECT_EQ(set(window, "1"), "done");
    EXPECT_TRUE(comesTrue([&] { return system_.window(window, soon())->isOnScreen; })) << all();
}

TEST_P(WindowSystemTest, asksToCloseAndNoMore) {
    const auto closing = shown({.title = "closing"}).window;
    const auto ignoring = shown({.title = "ignoring", .atClose = AtClose::ignores}).window;
    shown({.title = "bystander"});
    const auto ask = [&](std::vector<WindowRef> windows) {
        return answerText(system_.askToClose(windows, soon()));
    };
    EXPECT_EQ(ask({}), "gone");
    // Another process has the number.
    const WindowRef stranger{closing.number, ignoring.process};
    EXPECT_EQ(ask({stranger}), "gone");
    EXPECT_EQ(ask({ignoring, stranger, closing}), "done");
    EXPECT_TRUE(comesTrue([&] { return now()->windows.size() == 2; }));
    EXPECT_EQ(all(), "ignoring; bystander active");
    EXPECT_EQ(ask({closing}), "gone");
    if (!session_->has(Feature::unaskable)) return;
    const auto unaskable = shown({.title = "deaf", .atClose = AtClose::takesNoRequest}).window;
    EXPECT_EQ(ask({unaskable}), "refused");
    comesToShow("ignoring; bystander; deaf unaskable active", [this] { return all(); });
}

TEST_P(WindowSystemTest, touchesNothingThatIsntTheWindow) {
    const auto window = shown({.title = "one"}).window;
    const auto other = shown({.title = "two"}).window;
    waitUntilItStands(window);
    const auto before = frameOf(window);
    for (const auto& stranger :
         {WindowRef{window.number, other.process}, WindowRef{window.number, 0},
          WindowRef{window.number + 1'000'000, window.process}, WindowRef{}}) {
        const auto by = soon();
        EXPECT_FALSE(system_.window(stranger, by));
        EXPECT_EQ(answerText(system_.place(stranger, {PixelPoint{10, 10}}, by)), "gone");
        EXPECT_EQ(answerText(system_.setFullscreen(stranger, true, by)), "gone");
        EXPECT_EQ(answerText(system_.setMaximized(stranger, true, by)), "gone");
        EXPECT_EQ(answerText(system_.activate(stranger, by)), "gone");
    }
    constexpr double nan = std::numeric_limits<double>::quiet_NaN();
    constexpr double infinite = std::numeric_limits<double>::infinity();
    EXPECT_EQ(placed(window, FrameWish{.origin = PixelPoint{nan, 0}}), "refused " + before);
    EXPECT_EQ(placed(window, FrameWish{.size = PixelSize{10, infinite}}), "refused " + before);
    EXPECT_EQ(all(), "one; two active");
}

TEST_P(WindowSystemTest, tellsMonitorsAndWhatPanelsLeave) {
    const auto all = [&] {
        std::vector<std::string> words;
        const auto monitors = system_.monitors(soon());
        for (const auto& each : monitors.value_or(std::vector<Monitor>()))
            words.push_back(frameText(each.frame) + " (" + frameText(each.workArea) + ")");
        return text::joined(words, "; ");
    };
    if (session_->has(Feature::bareScreen)) {
        EXPECT_EQ(all(), "0,0 1440x900 (0,0 1440x900)");
    }
    if (session_->has(Feature::secondMonitor)) {
        session_->addSecondMonitor();
        comesToShow("0,0 1440x900 (0,0 1440x900); 1440,0 1440x900 (1440,0 1440x900)", all);
    }
    if (!session_->has(Feature::panels)) return;
    session_->addPanel();
    EXPECT_TRUE(comesTrue([&] { return all().starts_with("0,0 1440x900 (0,30 1440x870)"); }))
        << all();
    if (!session_->has(Feature::panelWindows)) return;
    const auto panel = listed([](const ManagedWindow& each) {
        return each.skipsTaskbar || each.kind == WindowKind::dock;
    });
    EXPECT_NE(panel.kind, WindowKind::ordinary);
}

/// Half a second, and what a busy machine adds to it.
constexpr auto bound = std::chrono::milliseconds(800);

TEST_P(WindowSystemTest, waitsForNoOneLongerThanItIsTold) {
    const auto window = shown({.title = "one"}).window;
    waitUntilItStands(window);
    ASSERT_EQ(placed(window, {{100, 100}, {400, 300}}), "100,100 400x300");
    const auto inTime = [&](const std::function<WindowAnswer(Deadline)>& request) {
        const auto start = Clock::now();
        const auto answer = request(halfASecondFromNow());
        EXPECT_LT(Clock::now() - start, bound);
        return answerText(answer);
    };
    const auto place = [&](const PixelRect& frame) {
        return inTime(
            [&](Deadline by) { return system_.place(window, {frame.origin, frame.size}, by); });
    };
    const auto fill = [&](bool on) {
        return inTime([&](Deadline by) { return system_.setFullscreen(window, on, by); });
    };
    session_->stop(Part::client, window);
    EXPECT_EQ(all(), "one active");
    const auto answer = place({{140, 150}, {420, 310}});
    if (session_->has(Feature::placesStoppedClients)) {
        EXPECT_EQ(answer + " " + frameOf(window), "done 140,150 420x310");
    }
    session_->goOn(Part::client, window);
    EXPECT_TRUE(comesTrue([&] { return place({{140, 150}, {420, 310}}) == "done"; }));

    if (session_->has(Feature::manager)) {
        // One that is stopped at work may hold the server.
        waitUntilItStands(window);
        session_->stop(Part::manager, window);
        EXPECT_EQ(place({{300, 300}, {500, 400}}), "unanswered");
        EXPECT_EQ(fill(true), "unanswered");
        EXPECT_EQ(frameOf(window), "140,150 420x310") << "reading needs no manager";
        session_->goOn(Part::manager, window);
        EXPECT_TRUE(comesTrue([&] { return fill(false) == "done"; }));
    }
    session_->stop(Part::server, window);
    EXPECT_EQ(place({{300, 300}, {500, 400}}), "unanswered");
    EXPECT_EQ(fill(true), "unanswered");
    EXPECT_EQ(inTime([&](Deadline by) { return system_.activate(window, by); }), "unanswered");
    EXPECT_EQ(inTime([&](Deadline by) { return system_.askToClose(std::array{window}, by); }),
              "unanswered");
    EXPECT_EQ(inTime([&](Deadline by) {
                  const bool any = system_.isReady(by) || system_.windows(by) ||
                                   system_.window(window, by) || system_.monitors(by);
                  return any ? WindowAnswer::done : WindowAnswer::unanswered;
              }),
              "unanswered");
    session_->goOn(Part::server, window);
    EXPECT_TRUE(comesTrue([&] { return system_.isReady(soon()) && now(); }));
}

TEST_P(WindowSystemTest, isFoundAgainAfterItWentAway) {
    const auto window = shown({.title = "one"}).window;
    session_->end();
    EXPECT_TRUE(comesTrue([&] { return !system_.isReady(soon()); }));
    EXPECT_FALSE(now());
    EXPECT_FALSE(system_.monitors(soon()));
    EXPECT_EQ(answerText(system_.askToClose(std::array{window}, soon())), "unanswered");
    session_->startAgain();
    EXPECT_TRUE(comesTrue([&] { return system_.isReady(soon()); }));
    shown({.title = "two"});
    comesToShow("two active", [this] { return all(); });
}

} // namespace
