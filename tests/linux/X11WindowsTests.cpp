#include "linux/running/LaunchedApplications.h"
#include "linux/running/Quitting.h"
#include "linux/running/RunningApplications.h"
#include "linux/screen/LinuxAccessibility.h"
#include "linux/screen/LinuxDisplays.h"
#include "linux/screen/LinuxWindowList.h"
#include "linux/windows/RecentWindows.h"
#include "linux/windows/x11/X11WindowSystem.h"
#include "machine/XDisplay.h"

#include <chrono>
#include <set>
#include <sstream>

using namespace corvane;
using namespace corvane::machine;

namespace {

/// A display of 1440 by 900 pixels with a window manager, and the seam's view of it.
struct X11Test : testing::Test, XDisplay {
    void SetUp() override { start({"openbox"}); }
    void start(const std::vector<std::string>& manager) {
        startServer("1440x900x24");
        startManager(manager);
    }
    std::optional<x11::WindowGeometry> geometryOf(xcb_window_t window) {
        const auto deadline = halfASecondFromNow();
        auto* server = connection_.server(deadline);
        return x11::readGeometry(*server, x11::requestGeometry(*server, window), deadline);
    }

    /// Another eye than the one that is tested.
    x11::Connection connection_;
    InstalledApplications installed_;
    x11::X11WindowSystem system_;
    RecentWindows recent_{system_};
    LaunchedApplications launched_;
    RunningApplications running_{installed_, recent_, launched_};
    Quitting quitting_{system_, running_, {}};
    LinuxDisplays displays_{recent_};
    LinuxWindowList list_{recent_, running_};
    LinuxAccessibility accessibility_{recent_, running_};
};

std::string frameText(double x, double y, double width, double height) {
    std::ostringstream text;
    text << x << "," << y << " " << width << "x" << height;
    return text.str();
}

struct X11WindowsTest : X11Test {
    /// A shown window of this process whose decorations the window manager leaves out.
    xcb_window_t make(const std::string& title, const x11::Frame& frame) {
        const auto window = probe_->make(frame);
        probe_->set(window, "_NET_WM_NAME", title, 8, probe_->atom("UTF8_STRING"));
        probe_->setList(window, "_MOTIF_WM_HINTS", {2, 0, 0, 0, 0},
                        probe_->atom("_MOTIF_WM_HINTS"));
        std::vector<std::uint32_t> placesItself(18);
        placesItself[0] = 1;
        probe_->setList(window, "WM_NORMAL_HINTS", placesItself, XCB_ATOM_WM_SIZE_HINTS);
        return window;
    }
    std::string all() {
        std::vector<std::string> lines;
        const auto windows = list_.onScreenWindows();
        for (const auto& window : windows.value())
            lines.push_back(window.name.value_or("?") + " " + std::to_string(*window.layer) + " " +
                            frameText(*window.bounds->x, *window.bounds->y, *window.bounds->width,
                                      *window.bounds->height));
        return text::joined(lines, "; ");
    }
    void becomes(const std::string& expected) {
        comesToShow(expected, [this] { return all(); });
    }
};

TEST_F(X11WindowsTest, showsWhatAPersonSeesFrontToBack) {
    const auto desktop = make("desktop", {0, 0, 1440, 900});
    probe_->setAtom(desktop, "_NET_WM_WINDOW_TYPE", "_NET_WM_WINDOW_TYPE_DESKTOP");
    const auto dock = make("dock", {0, 870, 1440, 30});
    probe_->setAtom(dock, "_NET_WM_WINDOW_TYPE", "_NET_WM_WINDOW_TYPE_DOCK");
    const auto below = make("below", {10, 10, 200, 100});
    probe_->setAtom(below, "_NET_WM_STATE", "_NET_WM_STATE_BELOW");
    const auto above = make("above", {20, 20, 200, 100});
    probe_->setAtom(above, "_NET_WM_STATE", "_NET_WM_STATE_ABOVE");
    const auto shadowed = make("shädowed \xff", {30, 30, 200, 100});
    probe_->setList(shadowed, "_GTK_FRAME_EXTENTS", {10, 11, 12, 13});
    const auto mad = make("", {40, 40, 200, 100});
    probe_->setList(mad, "_GTK_FRAME_EXTENTS", {1, 2, 3, 0xFFFFFFFF});
    probe_->remove(mad, "_NET_WM_NAME");
    probe_->set(mad, "WM_NAME", "latin \xe4");
    const auto elsewhere = make("elsewhere", {50, 50, 200, 100});
    probe_->setList(elsewhere, "_NET_WM_DESKTOP", {1});
    const auto everywhere = make("everywhere", {60, 60, 200, 100});
    probe_->setList(everywhere, "_NET_WM_DESKTOP", {0xFFFFFFFF});
    const auto iconified = make("iconified", {70, 70, 200, 100});
    for (const auto each :
         {everywhere, elsewhere, above, shadowed, desktop, iconified, dock, mad, below})
        show(each);
    ASSERT_TRUE(runs("xdotool windowminimize " + std::to_string(iconified)));
    const std::string back = "; everywhere 0 60,60 200x100; below -1 10,10 200x100; desktop "
                             "-2147483623 0,0 1440x900";
    const std::string front = "dock 20 0,870 1440x30; above 3 20,20 200x100; ";
    const std::string shadow = "shädowed \uFFFD 0 40,42 179x75";
    const std::string latin = "latin ä 0 40,40 200x100";
    becomes(front + latin + "; " + shadow + back);
    ASSERT_TRUE(runs("wmctrl -ia " + std::to_string(shadowed)));
    becomes(front + shadow + "; " + latin + back);

    const auto first = list_.onScreenWindows()->front();
    EXPECT_EQ(first.number, dock);
    EXPECT_EQ(first.ownerPID, getpid());
    EXPECT_EQ(first.ownerName, running_.list().at(0).localizedName);
    probe_->close(mad);
    probe_->close(shadowed);
    ASSERT_TRUE(runs("wmctrl -s 1"));
    becomes(
        "elsewhere 0 50,50 200x100; everywhere 0 60,60 200x100; desktop -2147483623 0,0 1440x900");
}

TEST_F(X11WindowsTest, asksTheServerWhereTheWindowManagerIsSilent) {
    for (const auto* title : {"one", "two", "three"})
        show(make(title, {10, 10, 200, 100}));
    const std::string frame = " 0 10,10 200x100";
    const auto vanished = probe_->make();
    const auto windows = probe_->managed();
    manager_.reset();
    // Nobody has managed that one.
    probe_->show(probe_->make());
    probe_->close(vanished);
    ASSERT_TRUE(comesTrue([&] { return !geometryOf(vanished); }));
    probe_->setList(probe_->root(), "_NET_CLIENT_LIST",
                    {windows[2], vanished, windows[0], windows[1]}, XCB_ATOM_WINDOW);
    probe_->remove(probe_->root(), "_NET_CLIENT_LIST_STACKING");
    becomes("three" + frame + "; two" + frame + "; one" + frame);
    ASSERT_TRUE(runs("xdotool windowraise " + std::to_string(windows[1])));
    probe_->remove(probe_->root(), "_NET_CLIENT_LIST");
    becomes("two" + frame + "; three" + frame + "; one" + frame);
    server_.reset();
    EXPECT_TRUE(comesTrue([&] { return !list_.onScreenWindows(); }));
}

TEST_F(X11WindowsTest, areMovedToWhereTheirInsideIs) {
    const auto window = probe_->make({300, 200, 410, 340});
    show(window);
    const WindowRef ref{window, getpid()};
    const auto placed = [&](const PixelPoint& origin) {
        system_.place(ref, {origin, PixelSize{420, 370}}, halfASecondFromNow());
        return system_.window(ref, halfASecondFromNow())->frame;
    };
    placed({100, 100});
    // Openbox takes no request for just that place.
    const auto inside = geometryOf(window)->client;
    ASSERT_NE(inside.y, 100);
    const PixelPoint origin{double(inside.x), double(inside.y)};
    EXPECT_EQ(placed(origin), (PixelRect{origin, {420, 370}}));
}

TEST_F(X11WindowsTest, arentPlacedByAManagerThatLeftOnlyItsName) {
    EXPECT_TRUE(accessibility_.isProcessTrusted());
    manager_.reset();
    EXPECT_TRUE(comesTrue([&] { return !accessibility_.isProcessTrusted(); }));
    EXPECT_TRUE(comesTrue([&] { return !recent_.isReady(halfASecondFromNow()); }));
    const ScopedVariable none("DISPLAY", "");
    x11::X11WindowSystem nowhere;
    EXPECT_FALSE(LinuxAccessibility(nowhere, running_).isProcessTrusted());
}

TEST_F(X11WindowsTest, areNotWaitedForWhereTheServerHasStopped) {
    kill(server_->id(), SIGSTOP);
    x11::X11WindowSystem fresh;
    const auto start = std::chrono::steady_clock::now();
    EXPECT_FALSE(fresh.isReady(halfASecondFromNow()));
    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(1));
    kill(server_->id(), SIGCONT);
    EXPECT_TRUE(comesTrue([&] { return fresh.isReady(halfASecondFromNow()); }));
}

TEST_F(X11WindowsTest, tellOfALaunchAndOfItsEnd) {
    auto* const listener = connection_.server(halfASecondFromNow());
    ASSERT_TRUE(listener);
    constexpr std::uint32_t listens = XCB_EVENT_MASK_PROPERTY_CHANGE;
    xcb_change_window_attributes(listener->get(), listener->root(), XCB_CW_EVENT_MASK, &listens);
    ASSERT_TRUE(listener->finish(halfASecondFromNow()));
    const auto heard = [&] {
        std::string message;
        while (const auto event = listener->event(halfASecondFromNow())) {
            if ((event->response_type & 0x7F) != XCB_CLIENT_MESSAGE) continue;
            const auto& part = reinterpret_cast<xcb_client_message_event_t&>(*event);
            const bool begins = part.type == listener->atoms().netStartupInfoBegin;
            if (begins != message.empty()) return std::string("out of order");
            const std::string letters(reinterpret_cast<const char*>(part.data.data8), 20);
            message += letters.substr(0, letters.find('\0'));
            if (letters.find('\0') != std::string::npos) return message;
        }
        return "unfinished: " + message;
    };
    std::set<std::string> tokens;
    // One of them as long as a whole number of pieces.
    for (std::size_t length = 0; length < 20; ++length) {
        const auto name = "A \"\\ " + std::string(length, 'x');
        const auto token = system_.beginLaunch({name, "test.eyes.desktop"}, halfASecondFromNow());
        EXPECT_NE(token.find("_TIME"), std::string::npos);
        tokens.insert(token);
        EXPECT_EQ(heard(), "new: ID=\"" + token + "\" NAME=\"A \\\"\\\\ " +
                               std::string(length, 'x') +
                               "\" SCREEN=0 APPLICATION_ID=\"test.eyes.desktop\"");
        system_.endLaunch(token, halfASecondFromNow());
        EXPECT_EQ(heard(), "remove: ID=\"" + token + "\"");
    }
    EXPECT_EQ(tokens.size(), 20u);
}

struct X11ClientsTest : X11Test {
    void SetUp() override { start(windowManager()); }
    std::optional<RunningApplication> listed(pid_t process) {
        const auto all = running_.list();
        const auto found = std::ranges::find(all, process, &RunningApplication::processIdentifier);
        return found == all.end() ? std::nullopt : std::optional(*found);
    }
};

TEST_F(X11ClientsTest, misleadNobodyByWhatTheySay) {
    Program victim({TEST_CLIENT, "close"});
    const auto dock = probe_->make();
    probe_->set(dock, "_NET_WM_WINDOW_TYPE", probe_->atom("_NET_WM_WINDOW_TYPE_DOCK"));
    probe_->set(dock, "WM_CLASS", std::string("dock\0Do\377ck", 10));
    probe_->set(dock, "_NET_WM_PID", static_cast<std::uint32_t>(victim.id()));
    char machine[256] = {};
    gethostname(machine, sizeof machine - 1);
    probe_->set(dock, "WM_CLIENT_MACHINE", machine);
    probe_->set(dock, "_NET_WM_STATE", "nonsense");
    probe_->show(dock);
    ASSERT_TRUE(windowsBecome(3));
    ASSERT_TRUE(comesTrue([&] { return listed(getpid()) && listed(victim.id()); }));
    const auto own = *listed(getpid());
    EXPECT_EQ(own.activationPolicy, 1);
    EXPECT_EQ(own.localizedName, "Do\uFFFDck");
    EXPECT_EQ(own.bundleURL, own.executableURL);
    EXPECT_EQ(own.bundleIdentifier, "app.corvane.Corvane");

    const auto window = probe_->make();
    probe_->set(window, "WM_CLASS", "");
    probe_->set(window, "WM_TRANSIENT_FOR", window);
    probe_->set(window, "_NET_WM_WINDOW_TYPE", "text");
    probe_->show(window);
    ASSERT_TRUE(windowsBecome(4));
    EXPECT_EQ(listed(getpid())->activationPolicy, 1) << "a panel stays one with a dialog";
    EXPECT_TRUE(quitting_.terminate(*listed(victim.id())) && victim.ends() && windowsBecome(2));
    probe_->close(dock);
    EXPECT_TRUE(comesTrue([&] { return listed(getpid())->activationPolicy == 0; }));
}

TEST_F(X11ClientsTest, areAskedThemselvesWhereNoWindowManagerIs) {
    Program process({TEST_CLIENT, "close"});
    ASSERT_TRUE(windowsBecome(2));
    ASSERT_TRUE(comesTrue([&] { return listed(process.id()).has_value(); }));
    const auto application = *listed(process.id());
    manager_.reset();
    EXPECT_TRUE(quitting_.terminate(application) && process.ends());
}

/// A window manager can have windows like anyone's, and one that has gone leaves its word behind.
TEST_F(X11ClientsTest, areNoApplicationsAsTheWindowManager) {
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

struct DisplaysTest : X11Test {
    /// "x,y wxh" from the top left of the root window.
    void setMonitor(const std::string& name, const x11::Frame& frame) {
        std::ostringstream geometry;
        geometry << frame.width << "/1x" << frame.height << "/1+" << frame.x << "+" << frame.y;
        ASSERT_TRUE(runs("xrandr --setmonitor '" + name + "' " + geometry.str() +
                         (name.find("first") == std::string::npos ? " none" : " screen")));
    }
    std::string frames(Rect Display::* kind = &Display::frame) {
        std::vector<std::string> texts;
        for (const auto& screen : displays_.screens()) {
            const auto& [x, y, width, height] = screen.*kind;
            texts.push_back(frameText(x, y, width, height));
        }
        return text::joined(texts, "; ");
    }
    xcb_window_t panel(const x11::Frame& frame, const std::vector<std::uint32_t>& strut,
                       const std::string& property = "_NET_WM_STRUT_PARTIAL") {
        const auto window = probe_->make(frame);
        probe_->setAtom(window, "_NET_WM_WINDOW_TYPE", "_NET_WM_WINDOW_TYPE_DOCK");
        probe_->setList(window, property, strut);
        show(window);
        return window;
    }
    void visibleFramesBecome(const std::string& expected) {
        comesToShow(expected, [this] { return frames(&Display::visibleFrame); });
    }
};

TEST_F(DisplaysTest, countUpwardFromThePrimaryOne) {
    EXPECT_EQ(frames(), "0,0 1440x900");
    setMonitor("left", {0, 300, 640, 600});
    setMonitor("*first", {640, 400, 800, 500});
    setMonitor("above", {640, 0, 800, 400});
    setMonitor("mirror", {640, 0, 800, 400});
    const std::string all = "0,0 800x500; -640,0 640x600; 0,500 800x400";
    EXPECT_TRUE(comesTrue([&] { return frames() == all; })) << frames();
}

TEST_F(DisplaysTest, leaveOutWhatPanelsTake) {
    EXPECT_EQ(frames(&Display::visibleFrame), "0,0 1440x900");
    const auto top = panel({0, 0, 1440, 24}, {0, 0, 24, 0, 0, 0, 0, 0, 0, 1439, 0, 0});
    const auto old = panel({1400, 0, 40, 900}, {0, 40, 0, 0}, "_NET_WM_STRUT");
    visibleFramesBecome("0,0 1400x876");
    ASSERT_TRUE(runs("xdotool windowminimize " + std::to_string(old) + " windowunmap " +
                     std::to_string(old)));
    visibleFramesBecome("0,0 1440x876");

    setMonitor("*first", {0, 0, 720, 900});
    setMonitor("right", {720, 100, 720, 800});
    // One at the bottom of the right monitor, and one at its left, which counts from the screen's.
    const auto bottom = panel({720, 870, 720, 30}, {0, 0, 0, 30, 0, 0, 0, 0, 0, 0, 720, 1439});
    panel({720, 100, 50, 800}, {770, 0, 0, 0, 100, 899, 0, 0, 0, 0, 0, 0});
    visibleFramesBecome("0,0 720x876; 770,30 670x770");
    probe_->close(bottom);
    probe_->close(top);
    visibleFramesBecome("0,0 720x900; 770,0 670x800");

    // The window manager's word for each monitor counts more; that for the whole screen doesn't.
    probe_->setList(probe_->root(), "_NET_WORKAREA", {100, 100, 100, 100});
    visibleFramesBecome("0,0 720x900; 770,0 670x800");
    probe_->setList(probe_->root(), "_GTK_WORKAREAS_D0", {800, 150, 600, 740, 0, 30, 720, 870});
    visibleFramesBecome("0,0 720x870; 800,10 600x740");
}

TEST_F(DisplaysTest, comeFromTheWindowManagerWhereNoPanelSays) {
    manager_.reset();
    probe_->setList(probe_->root(), "_NET_WORKAREA", {1, 2, 3, 4, 10, 20, 1400, 850});
    probe_->setList(probe_->root(), "_NET_CURRENT_DESKTOP", {1});
    visibleFramesBecome("10,30 1400x850");
    probe_->setList(probe_->root(), "_NET_WORKAREA", {0, 0, 0, 0, 9, 9, 9999, 9});
    visibleFramesBecome("0,0 1440x900");
    server_.reset();
    EXPECT_TRUE(comesTrue([&] { return displays_.screens().empty(); }));
    EXPECT_FALSE(displays_.mainScreen());
}

} // namespace
