#include "Windows.h"
#include "foundation/Text.h"
#include "linux/scripts/LinuxScriptEngine.h"

#include <csignal>
#include <limits>
#include <list>
#include <thread>

using namespace corvane;
using namespace corvane::machine;

namespace {

using Clock = std::chrono::steady_clock;
/// Half a second, and what a busy machine adds to it.
constexpr auto bound = std::chrono::milliseconds(800);

class AccessibilityTest : public WindowsTest {
protected:
    /// A window of this process with limits and steps of its size, by ICCCM's numbers.
    struct Limits {
        std::uint32_t gravity = 1;
        x11::Frame least = {0, 0, 1, 1};
        x11::Frame step = {0, 0, 1, 1};
    };
    AccessibilityWindow makeOwn(const x11::Frame& frame, const Limits& limits) {
        constexpr std::uint32_t positionLeastStepBaseGravity =
            1 | 1 << 4 | 1 << 6 | 1 << 8 | 1 << 9;
        const auto number = [](int value) { return static_cast<std::uint32_t>(value); };
        const auto window = probe_->make(frame);
        probe_->setList(window, "WM_NORMAL_HINTS",
                        {positionLeastStepBaseGravity, 0, 0, 0, 0, number(limits.least.width),
                         number(limits.least.height), 0, 0, number(limits.step.width),
                         number(limits.step.height), 0, 0, 0, 0, number(limits.least.width),
                         number(limits.least.height), limits.gravity},
                        XCB_ATOM_WM_SIZE_HINTS);
        show(window);
        return {getpid(), window};
    }
    static std::string idOf(const AccessibilityWindow& window) {
        return std::to_string(window.identifier);
    }
    /// One that was just started may still move itself, and some changes come in steps.
    void waitUntilItStands(const AccessibilityWindow& window) {
        std::string before;
        comesTrue([&] {
            std::this_thread::sleep_for(std::chrono::milliseconds(20));
            return std::exchange(before, frameOf(window)) == frameOf(window);
        });
    }
    /// Whether that takes no longer than any operation may.
    template <typename Operation>
    static bool isQuick(Operation&& operation) {
        const auto start = Clock::now();
        operation();
        return Clock::now() - start < bound;
    }
};

/// On the chosen window manager, and on one more that counts.
class WindowManagerTest : public AccessibilityTest,
                          public testing::WithParamInterface<const char*> {
protected:
    void SetUp() override {
        const std::string which = GetParam();
        start(which == "chosen" ? windowManager() : std::vector{which});
    }
};

INSTANTIATE_TEST_SUITE_P(On, WindowManagerTest, testing::Values("chosen", "xfwm4"),
                         [](const auto& manager) { return std::string(manager.param); });

TEST_P(WindowManagerTest, givesBackWhatAPersonChanged) {
    std::list<Program> programs;
    std::vector<std::pair<std::string, AccessibilityWindow>> windows;
    const auto start = [&](const std::string& name, const std::vector<std::string>& command) {
        const auto& program = programs.emplace_back(command);
        windows.emplace_back(name, firstWindowOf(program.id()));
    };
    start("steps", {"xterm", "-e", "cat"});
    start("plain", {"xeyes"});
    start("server side", {"mousepad", "--disable-server"});
    start("client side", {"env", "GTK_CSD=1", "mousepad", "--disable-server"});
    constexpr std::uint32_t staticGravity = 10;
    windows.emplace_back("static", makeOwn({200, 200, 300, 200}, {.gravity = staticGravity}));

    const std::vector<std::string> changes{
        "-e 0,333,222,-1,-1",    "-e 0,40,60,700,500", "-b add,maximized_vert,maximized_horz",
        "-b add,maximized_vert", "-b add,shaded",      "minimize"};
    for (const auto& [name, window] : windows) {
        waitUntilItStands(window);
        // Its own size, at a place where it is whole.
        const auto size = accessibility_.size(window).value();
        const x11::Frame frame{120, 90, int(size.width), int(size.height)};
        const auto wanted = frameText(frame.x, frame.y, frame.width, frame.height);
        ASSERT_EQ(placed(window, frame), wanted) << name;
        for (const auto& change : changes) {
            const auto id = static_cast<xcb_window_t>(window.identifier);
            const auto old = geometryOf(id);
            const bool hasTitleBar = old->decorations.top > 0;
            if (change == "-b add,shaded" && !hasTitleBar) continue;
            ASSERT_TRUE(runs(change == "minimize" ? "xdotool windowminimize " + idOf(window)
                                                  : "wmctrl -i -r " + idOf(window) + " " + change));
            // Some window managers don't do all of this to all of these.
            const auto patience = Clock::now() + std::chrono::seconds(1);
            comesTrue([&] {
                const auto now = geometryOf(id);
                return now->states != old->states || now->visible() != old->visible() ||
                       Clock::now() > patience;
            });
            waitUntilItStands(window);
            EXPECT_EQ(placed(window, frame), wanted) << name << " after " << change;
            if (change == "minimize") {
                ASSERT_TRUE(runs("wmctrl -i -a " + idOf(window)));
            }
            SCOPED_TRACE(name + " after " + change);
            comesToShow(wanted, [&] { return listed(id); });
        }
    }
}

TEST_P(WindowManagerTest, fillsTheScreenAndComesBack) {
    const auto window = makeOwn({300, 200, 400, 300}, {});
    const auto before = frameOf(window);
    EXPECT_EQ(accessibility_.isFullscreen(window), false);
    EXPECT_EQ(accessibility_.setFullscreen(window, true), Accessibility::success);
    EXPECT_EQ(accessibility_.isFullscreen(window), true);
    comesToShow("0,0 1440x900", [&] { return frameOf(window); });
    EXPECT_EQ(accessibility_.setFullscreen(window, true), Accessibility::success);
    // It is there already, so nothing has to move.
    EXPECT_EQ(placed(window, {0, 0, 1440, 900}), "0,0 1440x900");
    EXPECT_EQ(accessibility_.isFullscreen(window), true);
    EXPECT_EQ(accessibility_.setFullscreen(window, false), Accessibility::success);
    comesToShow(before, [&] { return frameOf(window); });
    EXPECT_EQ(accessibility_.setFullscreen(window, true), Accessibility::success);
    EXPECT_TRUE(comesTrue([&] { return frameOf(window) == "0,0 1440x900"; }));
    EXPECT_EQ(placed(window, {10, 10, 500, 400}), "-25204 -25204 0,0 1440x900");
    EXPECT_EQ(accessibility_.isFullscreen(window), true);
}

TEST_P(WindowManagerTest, waitsForNoOneLongerThanHalfASecond) {
    const Program editor({"env", "GTK_CSD=1", "mousepad", "--disable-server"});
    const auto window = firstWindowOf(editor.id());
    int result = 1;
    const auto change = [&](Point position, Size size, bool fullscreen, int expected) {
        for (const auto& operation : std::vector<std::function<int()>>{
                 [&] { return accessibility_.setPosition(window, position); },
                 [&] { return accessibility_.setSize(window, size); },
                 [&] { return accessibility_.setFullscreen(window, fullscreen); }}) {
            EXPECT_TRUE(isQuick([&] { result = operation(); }));
            EXPECT_EQ(result, expected);
        }
    };
    placed(window, {100, 100, 700, 500});
    ASSERT_TRUE(runs("wmctrl -i -r " + idOf(window) + " -b add,maximized_vert,maximized_horz"));
    ASSERT_TRUE(comesTrue([&] { return accessibility_.size(window)->height > 800; }));
    kill(editor.id(), SIGSTOP);
    change({140, 150}, {600, 450}, true, Accessibility::success);
    EXPECT_EQ(accessibility_.setFullscreen(window, false), Accessibility::success);
    EXPECT_TRUE(isQuick([&] { EXPECT_EQ(listed(window.identifier), "140,150 600x450"); }));
    EXPECT_TRUE(isQuick([&] { EXPECT_EQ(accessibility_.windows(editor.id())->size(), 1); }));
    EXPECT_TRUE(isQuick([&] { EXPECT_EQ(frameOf(window), "140,150 600x450"); }));
    kill(editor.id(), SIGCONT);

    kill(manager_->id(), SIGSTOP);
    change({300, 300}, {500, 400}, true, Accessibility::cannotComplete);
    EXPECT_EQ(frameOf(window), "140,150 600x450") << "reading needs no manager";
    kill(manager_->id(), SIGCONT);
    EXPECT_TRUE(comesTrue([&] { return accessibility_.isFullscreen(window) == true; }));
    EXPECT_EQ(accessibility_.zoom(window), Accessibility::success);
    EXPECT_EQ(accessibility_.isFullscreen(window), true) << "it was only late";

    kill(server_->id(), SIGSTOP);
    EXPECT_TRUE(isQuick([&] { result = accessibility_.setPosition(window, {300, 300}); }));
    EXPECT_EQ(result, Accessibility::cannotComplete);
    EXPECT_TRUE(isQuick([&] { EXPECT_FALSE(accessibility_.windows(editor.id())); }));
    EXPECT_TRUE(isQuick([&] { EXPECT_FALSE(accessibility_.position(window)); }));
    EXPECT_FALSE(accessibility_.isProcessTrusted());
    kill(server_->id(), SIGCONT);
    EXPECT_TRUE(comesTrue([&] { return accessibility_.isProcessTrusted(); }));
}

TEST_F(AccessibilityTest, goesAsFarAsAWindowsLimits) {
    const auto window =
        makeOwn({300, 200, 410, 340}, {.least = {0, 0, 210, 140}, .step = {0, 0, 20, 40}});
    const auto client = [&] { return geometryOf(window.identifier)->client; };
    const auto outer = geometryOf(window.identifier)->visible();
    const int extraWidth = outer.width - client().width;
    const int extraHeight = outer.height - client().height;
    struct Case {
        x11::Frame asked;
        x11::Frame expected;
    };
    const std::vector<Case> cases{
        {{50, 60, 410, 340}, {50, 60, 410, 340}},     {{51, 61, 429, 379}, {51, 61, 410, 340}},
        {{90, 80, 1, 1}, {90, 80, 210, 140}},         {{90, 80, 211, 141}, {90, 80, 210, 140}},
        {{-70, 600, 430, 380}, {-70, 600, 430, 380}},
    };
    for (auto [asked, expected] : cases) {
        for (auto* frame : {&asked, &expected}) {
            frame->width += extraWidth;
            frame->height += extraHeight;
        }
        EXPECT_EQ(placed(window, asked),
                  frameText(expected.x, expected.y, expected.width, expected.height));
    }
    // Openbox takes no request for the place where the inside of the frame is now.
    placed(window, {100, 100, 410 + extraWidth, 340 + extraHeight});
    const auto inside = client();
    EXPECT_EQ(accessibility_.setPosition(window, {double(inside.x), double(inside.y)}), 0);
    EXPECT_EQ(accessibility_.position(window), (Point{double(inside.x), double(inside.y)}));
    for (const double nonsense :
         {std::numeric_limits<double>::quiet_NaN(), std::numeric_limits<double>::infinity()}) {
        EXPECT_EQ(accessibility_.setPosition(window, {0, nonsense}), Accessibility::cannotComplete);
        EXPECT_EQ(accessibility_.setSize(window, {nonsense, 0}), Accessibility::cannotComplete);
    }
    EXPECT_EQ(accessibility_.position(window), (Point{double(inside.x), double(inside.y)}));
}

TEST_F(AccessibilityTest, knowsWhoseWindowsTheyAre) {
    EXPECT_EQ(accessibility_.windows(getpid()), std::vector<AccessibilityWindow>{});
    const auto back = makeOwn({0, 0, 100, 100}, {});
    const auto iconified = makeOwn({0, 0, 100, 100}, {});
    const auto front = makeOwn({0, 0, 100, 100}, {});
    const auto palette = makeOwn({0, 0, 100, 100}, {});
    for (const auto& [window, type] :
         {std::pair{palette, "_NET_WM_WINDOW_TYPE_UTILITY"}, {front, "_NET_WM_WINDOW_TYPE_DIALOG"}})
        probe_->setAtom(static_cast<xcb_window_t>(window.identifier), "_NET_WM_WINDOW_TYPE", type);
    ASSERT_TRUE(runs("xdotool windowminimize " + idOf(iconified)));
    const std::vector<AccessibilityWindow> expected{front, back, iconified};
    EXPECT_TRUE(comesTrue([&] { return accessibility_.windows(getpid()) == expected; }));
    EXPECT_EQ(accessibility_.windows(server_->id()), std::vector<AccessibilityWindow>{});

    const auto isInvalid = [&](const AccessibilityWindow& window) {
        EXPECT_FALSE(accessibility_.position(window));
        EXPECT_FALSE(accessibility_.size(window));
        EXPECT_FALSE(accessibility_.isFullscreen(window));
        EXPECT_EQ(accessibility_.setPosition(window, {10, 10}), Accessibility::invalidElement);
        EXPECT_EQ(accessibility_.setSize(window, {10, 10}), Accessibility::invalidElement);
        EXPECT_EQ(accessibility_.setFullscreen(window, true), Accessibility::invalidElement);
    };
    const auto before = frameOf(front);
    isInvalid({manager_->id(), front.identifier});
    EXPECT_EQ(frameOf(front), before);
    probe_->close(static_cast<xcb_window_t>(front.identifier));
    ASSERT_TRUE(windowsBecome(3));
    isInvalid(front);

    EXPECT_TRUE(accessibility_.isProcessTrusted());
    manager_.reset();
    EXPECT_TRUE(comesTrue([&] { return !accessibility_.isProcessTrusted(); }))
        << "only the name of the window manager is left";
    const ScopedVariable none("DISPLAY", "");
    x11::X11WindowSystem nowhere;
    EXPECT_FALSE(LinuxAccessibility(nowhere, running_).isProcessTrusted());
}

TEST_F(AccessibilityTest, aScriptFillsTheScreen) {
    LinuxScriptEngine engine(opener_, accessibility_);
    const Program eyes({"xeyes"});
    const auto window = firstWindowOf(eyes.id());
    const auto name = running_.list().at(0).localizedName.value();
    for (const std::string command :
         {"click button 2 of window 1", "keystroke \"f\" using {control down, command down}"}) {
        for (const bool expected : {true, false}) {
            const auto outcome =
                engine.execute("tell application \"" + name +
                               "\"\nactivate\ntell application \"System Events\"\ntell process \"" +
                               name + "\"\n" + command + "\nend tell\nend tell\nend tell");
            EXPECT_FALSE(outcome->error) << outcome->error->description;
            EXPECT_EQ(accessibility_.isFullscreen(window), expected) << command;
        }
    }
}

} // namespace
